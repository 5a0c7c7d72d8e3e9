#include "tools/inspect/Registry.h"

#include "config/MacConfigPath.h"
#include "config/MacReg.h"
#include "paths/PathUtils.h"
#include "tools/inspect/Actions.h"

#include <CLI/CLI.hpp>
#include <QDir>
#include <array>
#include <memory>

namespace inspect {

namespace {

std::string named(const QString &text)
{
    return '"' + text.toStdString() + '"';
}

/// Opens a key whose folder exists, or may be created.
void open(MacReg &registry, const QString &key, bool mustExist)
{
    if (registry.open(key, mustExist))
        return;
    if (mustExist && registry.open(key, false))
        throw std::runtime_error("the registry has no key " + named(key));
    throw WrongUse("the key " + named(key) + " is refused: its file would lie outside " + registryFolder()
                   + ", or is a device or a pipe");
}

Json valueOf(const MacReg &registry, const QString &name)
{
    const QVariant value = registry.value(name);
    if (value.userType() != QMetaType::QStringList)
        return value.toString().toStdString();
    Json list = Json::array(); // put in by hand, with commas and no quotes
    for (const QString &text : value.toStringList())
        list.push_back(text.toStdString());
    return list;
}

void write(const QString &key, const QString &name, const QString &value)
{
    {
        MacReg registry;
        open(registry, key, false);
        registry.setValue(name, value);
    }
    requireSaved(key, name, value);
}

Json read(const QString &key, const QString *name)
{
    if (!hasRegistry())
        throw std::runtime_error("there is no registry: " + registryFolder() + " does not exist");
    MacReg registry;
    open(registry, key, true);
    if (name && !registry.hasKey(*name))
        throw std::runtime_error("the key " + named(key) + " has no value " + named(*name));
    Json values = Json::object();
    for (const QString &each : name ? QStringList(*name) : registry.names()) // no search for one that is there already
        values.get_ref<Json::object_t &>().push_back({each.toStdString(), valueOf(registry, each)});
    return values;
}

} // namespace

std::string registryFolder()
{
    return MacConfigPath::GetInstance()->GetUserDataPath("reg/");
}

bool hasRegistry()
{
    return PathUtils::isDirPathExist(QString::fromStdString(registryFolder()));
}

void requireSaved(const QString &key, const QString &name, const QString &value)
{
    MacReg registry;
    open(registry, key, false);
    if (registry.value(name).toString() == value)
        return;
    const QString path = QDir::cleanPath(QString::fromStdString(registryFolder()) + key + QStringLiteral(".ini"));
    throw std::runtime_error("the value cannot be written to " + path.toStdString());
}

Run registry(CLI::App &command)
{
    auto texts = std::make_shared<std::array<std::string, 3>>();
    command.add_option("KEY", (*texts)[0], "The key, \"common\" for example")->required()->option_text(" ");
    CLI::Option *name = command.add_option("NAME", (*texts)[1], "One value of it")->option_text(" ");
    CLI::Option *value = command.add_option("VALUE", (*texts)[2], "A new text for that value")->option_text(" ");
    return [texts, name, value](const Print &print) {
        const QString key = QString::fromStdString((*texts)[0]);
        const QString valueName = QString::fromStdString((*texts)[1]);
        if (!name->empty() && valueName.isEmpty())
            throw WrongUse("no value has an empty name");
        if (!value->empty())
            write(key, valueName, QString::fromStdString((*texts)[2]));
        print(read(key, name->empty() ? nullptr : &valueName));
        return true;
    };
}

} // namespace inspect
