#include "config/MacGlobalSetting.h"

#include "config/GlobalConfigFile.h"
#include "config/Locations_p.h"
#include "config/MacConfigPath_p.h"
#include "config/MacGlobalConfig.h"
#include "config/MacReg.h"
#include "paths/RegularFile_p.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <identity.h>
#include <optional>

namespace {

constexpr char kRegistryKey[] = "common";
constexpr char kChoiceName[] = "language/current_language";
constexpr char kNoChoice[] = "none";
constexpr int kLargestList = 1 << 20; // bytes

QByteArray contentOfList()
{
    return readRegularFile(locations::inApplication("cfgdata\\language.json").toStdString(), kLargestList).bytes;
}

QJsonArray languages()
{
    return QJsonDocument::fromJson(contentOfList()).object().value(QLatin1String("languages")).toArray();
}

std::optional<std::string> textOf(const QJsonValue &language, const std::string &key)
{
    const QJsonValue text = language.toObject().value(QString::fromStdString(key));
    return text.isString() ? std::optional(text.toString().toStdString()) : std::nullopt;
}

/// The code of the first language whose text `key` is `value`.
std::optional<std::string> codeOf(const std::string &key, const std::string &value)
{
    std::string code;
    return MacGlobalSetting::GetParticularLanguageInfo(key, value, "code", code) ? std::optional(code) : std::nullopt;
}

} // namespace

std::string MacGlobalSetting::GetCurrentLanguage()
{
    if (!MacGlobalConfig::isInternationalApp())
        return "zh";
    MacReg registry;
    registry.open(kRegistryKey, true);
    const QString choice = registry.value(kChoiceName, kNoChoice).toString();
    if (choice != QLatin1String(kNoChoice))
        return choice.toStdString();
    return codeOf("english_name", QLocale::languageToString(QLocale().language()).toStdString()).value_or("en");
}

void MacGlobalSetting::SetCurrentLanguage(const std::string &showName)
{
    const std::optional<std::string> code = codeOf("show_name", showName);
    if (!code)
        return;
    MacReg registry;
    registry.open(kRegistryKey, false);
    registry.setValue(kChoiceName, QString::fromStdString(*code));
}

std::vector<std::string> MacGlobalSetting::GetSupportLanguageList()
{
    std::vector<std::string> names;
    const QJsonArray all = languages();
    for (const QJsonValue &language : all) {
        if (std::optional<std::string> name = textOf(language, "show_name"))
            names.push_back(std::move(*name));
    }
    return names;
}

bool MacGlobalSetting::GetParticularLanguageInfo(const std::string &key, const std::string &value,
                                                 const std::string &wantedKey, std::string &result)
{
    const QJsonArray all = languages();
    for (const QJsonValue &language : all) {
        if (textOf(language, key) == value) {
            result = textOf(language, wantedKey).value_or("");
            return true;
        }
    }
    return false;
}

bool MacGlobalSetting::IsEnableDebug()
{
    const MacConfigPath *paths = configPathOrNull();
    return paths && isPathExist(paths->GetUserDataPath(product::kDebugMarker.str()));
}
