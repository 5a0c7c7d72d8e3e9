#pragma once

#include "config/Export.h"

#include <QMutex>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>

/// A registry of keys and named values per user, for code that was written for one: every key is an INI file in "reg/"
/// of the user's data folder (MacConfigPath), its values are the entries of that file.
///
/// An object has one key open at a time and may be shared by any number of threads. Value names may contain "/": what
/// stands before it is the section; no value has an empty name. Values come back as QSettings reads them, mostly as
/// texts. One that QSettings would have to unpack ("@Variant(...)", "@DateTime(...)") is there, but without a value.
///
/// Changes stay in the object until sync(), or until the key is closed; others see them when they open or sync() the
/// key after that. When two writers change different values of one key at the same moment, both changes stay, even if
/// one writer uses QSettings; of two changes to one value the later one stays. The rest of the file stays as it is,
/// comments and order included. A file that cannot be read or is larger than 16 MiB counts as empty; one that cannot be
/// written, or not within five seconds because others write, keeps what it held: the changes are dropped, and a
/// qWarning() says so. Writing is as ConfigFileUtil says.
class ONDPDFTOOLUTILS_EXPORT MacReg
{
public:
    MacReg();
    /// Closes the key: writes what was changed.
    ~MacReg();
    MacReg(const MacReg &) = delete;
    MacReg &operator=(const MacReg &) = delete;

    /// Closes the open key, if any, and opens `key`, creating the folder "reg/" but not the key's file, which appears
    /// with the first value written. A key may name a sub-folder ("software/x"). A qInfo() names the file.
    ///
    /// False, with no key open, when `mustExist` is set and the key has no file; when the file would lie outside
    /// "reg/", be it through "..", an absolute path or a symbolic link; and when what is there is a device or a pipe.
    bool open(const QString &key, bool mustExist);

    /// The stored value; `defaultValue` when there is none, or no key is open.
    [[nodiscard]] QVariant value(const QString &name, const QVariant &defaultValue = {}) const;
    /// Stores a value in the open key: texts, numbers and lists of them as they are, most other types (a date and time)
    /// as a text. A value of a type that has no text form (a map) is not stored.
    void setValue(const QString &name, const QVariant &value);
    /// Whether the open key holds a value of this name.
    [[nodiscard]] bool hasKey(const QString &name) const;
    /// The names of all values in the open key; none when no key is open. Those of a file end where they would take
    /// more than four million characters and four for each of its bytes, since the name of a section counts for each
    /// value.
    [[nodiscard]] QStringList names() const;
    /// Writes what was changed and takes over what others have changed. Whether a key is open.
    bool sync();

private:
    struct Store;

    void flush();

    std::unique_ptr<Store> m_store; // while a key is open
    mutable QMutex m_mutex;
};
