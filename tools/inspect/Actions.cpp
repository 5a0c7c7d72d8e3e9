#include "tools/inspect/Actions.h"

#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "runtime/CommonFileLog.h"
#include "tools/inspect/Paths.h"

namespace inspect {

namespace {

Json log(const std::vector<std::string> &arguments)
{
    if (arguments.size() != 1)
        throw WrongUse("log takes one message");
    if (arguments[0] == "--config")
        MacGlobalConfig::OutputConfigLog();
    else
        CommonFileLog::WriteLog(arguments[0]);
    return {{"IsLogEnable", CommonFileLog::IsLogEnable()}, {"GetLogPath", MacConfigPath::GetInstance()->GetLogPath()}};
}

} // namespace

const std::vector<Action> &actions()
{
    static const std::vector<Action> all = {
        {"create-paths", "", "the section paths, with the folders made that its getters make", createPaths},
        {"log", "MESSAGE|--config", "write a message, or the configuration, to the diagnostic log", log},
    };
    return all;
}

} // namespace inspect
