#include "tools/inspect/Languages.h"

#include "config/MacGlobalConfig.h"
#include "config/MacGlobalSetting.h"
#include "tools/inspect/Actions.h"
#include "tools/inspect/Registry.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace inspect {

namespace {

/// Whether there is a language of this name in the menu; `code` receives its code then.
bool find(const std::string &showName, std::string &code)
{
    return MacGlobalSetting::GetParticularLanguageInfo("show_name", showName, "code", code);
}

void choose(const std::string &showName)
{
    std::string code;
    if (!find(showName, code))
        throw WrongUse("no language called " + showName + " in the menu; the action without a name lists them");
    MacGlobalSetting::SetCurrentLanguage(showName);
    requireSaved(QStringLiteral("common"), QStringLiteral("language/current_language"), QString::fromStdString(code));
}

} // namespace

Json languages()
{
    Json codes = Json::array();
    const std::vector<std::string> names = MacGlobalSetting::GetSupportLanguageList();
    for (const std::string &name : names) {
        std::string code;
        static_cast<void>(find(name, code));
        codes.push_back(code);
    }
    Json result = {{"GetSupportLanguageList", names}, {"codes", codes}};
    Json notAsked = Json::array();
    if (hasRegistry() || !MacGlobalConfig::isInternationalApp())
        result["GetCurrentLanguage"] = MacGlobalSetting::GetCurrentLanguage();
    else
        notAsked.push_back("GetCurrentLanguage");
    result["IsEnableDebug"] = MacGlobalSetting::IsEnableDebug();
    result["notAsked"] = notAsked;
    return result;
}

Run language(CLI::App &command)
{
    auto name = std::make_shared<std::string>();
    CLI::Option *given = command.add_option("NAME", *name, "Choose the language of this name in the menu");
    given->option_text(" ");
    return [name, given](const Print &print) {
        if (!given->empty())
            choose(*name);
        Json answer = {{"GetCurrentLanguage", MacGlobalSetting::GetCurrentLanguage()}};
        answer["GetSupportLanguageList"] = MacGlobalSetting::GetSupportLanguageList();
        print(answer);
        return true;
    };
}

} // namespace inspect
