#include "tools/inspect/Actions.h"

#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "runtime/CCmdLineParser.h"
#include "runtime/CommonFileLog.h"
#include "runtime/OndEasyMd5.h"
#include "tools/inspect/Account.h"
#include "tools/inspect/Languages.h"
#include "tools/inspect/Paths.h"
#include "tools/inspect/Registry.h"

#include <filesystem>

namespace inspect {

namespace {

bool isLogEnabled()
{
    try {
        return CommonFileLog::IsLogEnable();
    } catch (const std::filesystem::filesystem_error &) {
        return false; // a log whose existence cannot be told is not written either
    }
}

Json log(const std::vector<std::string> &arguments)
{
    if (arguments.size() != 1)
        throw WrongUse("log takes one message");
    if (arguments[0] == "--config")
        MacGlobalConfig::OutputConfigLog();
    else
        CommonFileLog::WriteLog(arguments[0]);
    return {{"IsLogEnable", isLogEnabled()}, {"GetLogPath", MacConfigPath::GetInstance()->GetLogPath()}};
}

Json digest(const std::vector<std::string> &arguments)
{
    if (arguments.empty())
        throw WrongUse("digest takes at least one file");
    Json digests = Json::object();
    for (const std::string &path : arguments) {
        const OndEasyMd5 md5(QString::fromStdString(path).toStdWString().c_str());
        digests[path] = md5.ToString().toStdString();
    }
    return digests;
}

Json parse(const std::vector<std::string> &arguments)
{
    if (arguments.size() != 1)
        throw WrongUse("parse takes one command line; quote it");
    const CCmdLineParser parser(QString::fromStdString(arguments[0]).toStdWString().c_str());
    Json switches = Json::object();
    QString key;
    QString value;
    for (auto it = parser.getFirst(); !parser.isLast(it);) {
        parser.getNext(it, key, value);
        switches[key.toStdString()] = value.toStdString();
    }
    return switches;
}

} // namespace

const std::vector<Action> &actions()
{
    static const std::vector<Action> all = {
        {"create-paths", "", "the section paths, with the folders made that its getters make", createPaths},
        {"digest", "FILE...", "MD5 of files, in the library's text form; empty for one that cannot be opened", digest},
        {"language", "[NAME]",
         "the language in use, or choose it by the name in the menu (creates the registry's folder)", language},
        {"log", "MESSAGE|--config", "write a message, or the configuration, to the diagnostic log", log},
        {"login", "EMAIL|--dialog", "log in, with the password from standard input or in the product's dialog", login},
        {"logout", "", "end the session in all processes", logout},
        {"page", "PAGE [FROM [FID]]", "open an account page through the account helper", openPage},
        {"parse", "COMMAND-LINE", "the switches and values of a command line", parse},
        {"registry", "KEY [NAME [VALUE]]", "all values of a key, one of them, or write one", registry},
        {"watch", "", "print every change of the account until interrupted", nullptr, watch},
    };
    return all;
}

} // namespace inspect
