#include "tools/inspect/Languages.h"

#include "config/MacGlobalConfig.h"
#include "config/MacGlobalSetting.h"
#include "tools/inspect/Actions.h"
#include "tools/inspect/Registry.h"

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
        throw WrongUse("no language called " + escaped(showName) + " in the menu");
    MacGlobalSetting::SetCurrentLanguage(showName);
    requireSaved(QStringLiteral("common"));
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

Json language(const std::vector<std::string> &arguments)
{
    if (arguments.size() > 1)
        throw WrongUse("language takes at most one name; quote it");
    if (!arguments.empty())
        choose(arguments[0]);
    return {{"GetCurrentLanguage", MacGlobalSetting::GetCurrentLanguage()}};
}

} // namespace inspect
