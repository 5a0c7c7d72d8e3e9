#include "config/ConfigFileUtil.h"

#include "config/Locations_p.h"
#include "config/ini/IniStore_p.h"
#include "vipsdk/include/OndIniWrapper.h"

#include <QFile>
#include <QFileInfo>
#include <filesystem>

namespace {

int valueIn(const ini::Content &file, const QString &key, int defaultValue)
{
    return key.isEmpty() ? defaultValue : ini::number(file.value(key, defaultValue));
}

int valueIn(const QString &path, const QString &key, int defaultValue)
{
    return valueIn(ini::load(path), key, defaultValue);
}

void setValuesIn(const QString &path, const std::vector<QString> &keys, const std::vector<int> &values,
                 mode_t whenNew = ini::kForOwner)
{
    ini::Changes changes;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (const QString key = ini::normalized(keys[i]); !key.isEmpty())
            changes[key] = QByteArray::number(values[i]);
    }
    ini::change(path, changes, whenNew);
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
        setValuesIn(locations::appConfig(true), {key}, {value});
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
        setValuesIn(userOverlay(), {key}, {value}, ini::kForAll);
}

void ConfigFileUtil::GetLocalAppCfgForCountValueInt(std::vector<QString> &keys, std::vector<int> &values, int count,
                                                    int defaultValue)
{
    if (!isBatch(keys, values, count))
        return;
    const ini::Content file = ini::load(counterStore());
    for (std::size_t i = 0; i < keys.size(); ++i)
        values[i] = valueIn(file, keys[i], defaultValue);
}

void ConfigFileUtil::SetLocalAppCfgForCountValueInt(const std::vector<QString> &keys, const std::vector<int> &values,
                                                    int count)
{
    if (isBatch(keys, values, count))
        setValuesIn(counterStore(), keys, values);
}

void ConfigFileUtil::ClearLocalAppCfgForCount()
{
    const QString path = counterStore();
    if (!QFile::exists(path))
        return;
    const ini::Turn turn(path); // one that does not come leaves the store to be deleted all the same
    if (!QFileInfo(path).isSymLink())
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
    return ini::isSound(path);
}

void ConfigFileUtil::ForEachLine(
    const QString &path, const std::function<void(int, const QString &, const std::optional<QVariant> &)> &visit)
{
    ini::load(path).forEach([&visit](const ini::Entry &entry) { visit(entry.line, entry.key, entry.value); });
}
