#pragma once

#include "config/Export.h"

#include <QString>
#include <QVariant>
#include <functional>
#include <optional>
#include <vector>

/// Single integer settings in the product's INI files, and the product's version date.
///
/// Keys have the form "section/name"; a key without "/" lies in the general section. All static; each call answers what
/// its file says now, and has written when it returns. The functions may be called from any thread. Writers of the same
/// file at the same moment, in other processes too, do not lose each other's keys.
///
/// Nothing fails outward. An empty key is refused before a file is opened: a getter answers its default, a setter does
/// nothing. A file that is missing, unreadable, not a regular file or larger than 16 MiB reads as if it had no key. A
/// setter creates a missing file, with its folders; it leaves the other kinds alone. A stored text that is not an
/// integer reads as 0. An integer that exceeds an int reads as its lower 32 bits. A value that QSettings would have to
/// unpack ("@Variant(...)") reads as absent.
///
/// Writing changes the key and leaves the rest of the file as it stands. A new file takes the place of the old one,
/// under a lock file beside it (its name + ".lock"), for which a writer waits at most five seconds: the folder must be
/// writable. A file that was missing is then for the user alone (0600), the overlay for all to read (0644).
class ONDPDFTOOLUTILS_EXPORT ConfigFileUtil
{
public:
    ///@{

    /// The local application configuration, "config.ini" in the user's data folder.
    static int GetLocalAppCfgValueInt(const QString &key, int defaultValue);
    static void SetLocalAppCfgValueInt(const QString &key, int value);
    ///@}

    /// The configuration data of the bundle, "cfgdata/cfgdata.ini" in its resources.
    static int GetCfgdataFileValueInt(const QString &key, int defaultValue);
    ///@{

    /// The user's overlay of it, the same path + ".user"; outside a bundle that is ".user" in the current folder. The
    /// bundle's own file is not asked.
    static int GetCfgdataFileValueIntUser(const QString &key, int defaultValue);
    static void SetCfgdataFileValueIntUser(const QString &key, int value);
    ///@}

    ///@{

    /// The counter store, "config_count.ini" in the user's data folder. Reads or writes `count` keys with one opening
    /// of the file; values[i] belongs to keys[i]. Does nothing at all unless `count` is the size of both and not 0.
    /// Reading, too, creates the folder.
    static void GetLocalAppCfgForCountValueInt(std::vector<QString> &keys, std::vector<int> &values, int count,
                                               int defaultValue);
    static void SetLocalAppCfgForCountValueInt(const std::vector<QString> &keys, const std::vector<int> &values,
                                               int count);
    ///@}
    /// Deletes the counter store, even when it is read-only. What cannot be deleted is renamed to the same name +
    /// ".tmp", over what may be there.
    static void ClearLocalAppCfgForCount();

    /// The product's version date: "date" in section "version" of "data/mainversion.ini" in the bundle's resources, as
    /// it stands there; empty when there is none.
    static QString GetProductVersion();

    /// Whether the stores of this library read and write an INI file at all: a regular one of at most 16 MiB. What is
    /// not sound counts as empty and is left as it is. False for a missing one, too.
    static bool IsSound(const QString &path);
    /// Visits what the stores read in an INI file, in its order, for tools that look for mistakes: the number of the
    /// line, the key and the value. The key is null for a line that the stores skip because it is neither [section],
    /// KEY=VALUE nor ;comment, or because a key of no section has a "/". The value is absent where it would have to be
    /// unpacked. Visits nothing in a file that is not sound.
    static void ForEachLine(const QString &path,
                            const std::function<void(int, const QString &, const std::optional<QVariant> &)> &visit);
};
