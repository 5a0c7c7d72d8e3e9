#pragma once

#include "config/Export.h"

#include <QMutex>
#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>
#include <string>

/// A registry of keys and named values per user, for code that was written for one: every key is an INI file in "reg/"
/// of the user's data folder (MacConfigPath), its values are the entries of that file.
///
/// An object has one key open at a time and may be shared by any number of threads. Value names may contain "/": what
/// stands before it is the section; no value has an empty name. Values come back as QSettings reads them, mostly as
/// texts.
///
/// Changes stay in memory until sync(), or until the key is closed; other objects of this process see them at once,
/// other processes when they open or sync() the key after that. Processes that change different values of one key at
/// the same moment lose neither's; of two changes to one value the later one stays. A file that cannot be read, is
/// larger than 16 MiB or holds a serialized value has nothing; one that cannot be written keeps what it held. No
/// operation reports that.
class ONDPDFTOOLUTILS_EXPORT MacReg
{
public:
    MacReg();
    /// Closes the key: writes what was changed.
    ~MacReg();
    MacReg(const MacReg &) = delete;
    MacReg &operator=(const MacReg &) = delete;

    /// Closes the open key, if any, and opens `key`, creating the folder "reg/" but not the key's file, which appears
    /// with the first value written. A key may name a sub-folder ("software/x").
    ///
    /// False, with no key open, when `mustExist` is set and the key has no file; when the file would lie outside
    /// "reg/", be it through "..", an absolute path or a symbolic link; and when what is there is a device or a pipe.
    bool open(const QString &key, bool mustExist);

    /// The stored value; `defaultValue` when there is none, or no key is open.
    [[nodiscard]] QVariant value(const QString &name, const QVariant &defaultValue = {}) const;
    /// Stores a value in the open key: texts, numbers and lists of them as they are, most other types as a text. A
    /// value of a type that has no text form (a map) is not stored.
    void setValue(const QString &name, const QVariant &value);
    /// Whether the open key holds a value of this name.
    [[nodiscard]] bool hasKey(const QString &name) const;
    /// The names of all values in the open key; none when no key is open.
    [[nodiscard]] QStringList names() const;
    /// Writes what was changed and takes over what other processes have changed. False when no key is open.
    bool sync();

private:
    void openStore();
    bool prepareChange();
    void flush();
    void close();

    std::optional<QSettings> m_settings;
    mutable QMutex m_mutex;
    std::string m_path;
    bool m_isChanged = false;
};
