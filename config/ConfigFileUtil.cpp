#include "config/ConfigFileUtil.h"

#include "config/IniFile_p.h"
#include "config/Locations_p.h"
#include "config/WriteTurn_p.h"
#include "vipsdk/include/OndIniWrapper.h"

#include <QFile>
#include <filesystem>

namespace {

int valueIn(const QString &path, const QString &key, int defaultValue)
{
    const QSettings settings(ini::readable(path), QSettings::IniFormat);
    return settings.value(key, defaultValue).toInt();
}

void setValueIn(const QString &path, const QString &key, int value)
{
    ini::change(path, [&](QSettings &settings) { settings.setValue(key, value); });
}

QString userOverlay()
{
    return locations::configData() + QStringLiteral(".user");
}

QString counterStore()
{
    return locations::inUserData("config_count.ini");
}

bool isBatch(const std::vector<QString> &keys, const std::vector<int> &values, int count)
{
    return count > 0 && keys.size() == static_cast<std::size_t>(count) && values.size() == keys.size();
}

} // namespace

int ConfigFileUtil::GetLocalAppCfgValueInt(const QString &key, int defaultValue)
{
    return key.isEmpty() ? defaultValue : valueIn(locations::appConfig(false), key, defaultValue);
}

void ConfigFileUtil::SetLocalAppCfgValueInt(const QString &key, int value)
{
    if (!key.isEmpty())
        setValueIn(locations::appConfig(true), key, value);
}

int ConfigFileUtil::GetCfgdataFileValueInt(const QString &key, int defaultValue)
{
    return key.isEmpty() ? defaultValue : valueIn(locations::configData(), key, defaultValue);
}

int ConfigFileUtil::GetCfgdataFileValueIntUser(const QString &key, int defaultValue)
{
    return key.isEmpty() ? defaultValue : valueIn(userOverlay(), key, defaultValue);
}

void ConfigFileUtil::SetCfgdataFileValueIntUser(const QString &key, int value)
{
    if (!key.isEmpty())
        setValueIn(userOverlay(), key, value);
}

void ConfigFileUtil::GetLocalAppCfgForCountValueInt(std::vector<QString> &keys, std::vector<int> &values, int count,
                                                    int defaultValue)
{
    if (!isBatch(keys, values, count))
        return;
    const QSettings settings(ini::readable(counterStore()), QSettings::IniFormat);
    for (std::size_t i = 0; i < keys.size(); ++i)
        values[i] = keys[i].isEmpty() ? defaultValue : settings.value(keys[i], defaultValue).toInt();
}

void ConfigFileUtil::SetLocalAppCfgForCountValueInt(const std::vector<QString> &keys, const std::vector<int> &values,
                                                    int count)
{
    if (!isBatch(keys, values, count))
        return;
    ini::change(counterStore(), [&](QSettings &settings) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (!keys[i].isEmpty())
                settings.setValue(keys[i], values[i]);
        }
    });
}

void ConfigFileUtil::ClearLocalAppCfgForCount()
{
    const QString path = counterStore();
    const WriteTurn turn(path.toStdString());
    if (!QFile::exists(path))
        return;
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (QFile::remove(path))
        return;
    std::error_code error;
    std::filesystem::rename(path.toStdString(), path.toStdString() + ".tmp", error);
}

QString ConfigFileUtil::GetProductVersion()
{
    cf_ini::OndIniWrapper file;
    if (file.LoadFile(locations::versionConfig().toStdWString().c_str(), 2, 0) == 0)
        return {};
    return QString::fromStdWString(file.Read(L"version", L"date", L""));
}

bool ConfigFileUtil::IsSound(const QString &path)
{
    return ini::readable(path) == path;
}
