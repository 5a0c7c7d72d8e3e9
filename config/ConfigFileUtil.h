#pragma once

#include "config/Export.h"

#include <QString>
#include <vector>

/// Single integer settings in the product's INI files, and the product's version date.
///
/// Keys have the form "section/name"; a key without "/" lies in the general section. All static; nothing is kept
/// between calls: each opens its file, reads or writes, and closes it, so that the functions may be called from any
/// thread. Writers of the same file at the same moment, in other processes too, do not lose each other's keys.
///
/// Nothing fails outward. An empty key is refused before a file is opened: a getter answers its default, a setter does
/// nothing. A file that is missing or unreadable, is no regular one, has more than 16 MiB or a serialized value
/// ("@Variant(...)") reads as if it had no key; of these only a missing one is written, and created with its folders. A
/// stored text that is no integer reads as 0, of one that exceeds an int the lower 32 bits. Writing keeps all keys of a
/// file, but not its comments.
class ONDPDFTOOLUTILS_EXPORT ConfigFileUtil
{
public:
    /// The local application configuration, "config.ini" in the user's data folder.
    static int GetLocalAppCfgValueInt(const QString &key, int defaultValue);
    static void SetLocalAppCfgValueInt(const QString &key, int value);

    /// The configuration data of the bundle, "cfgdata/cfgdata.ini" in its resources.
    static int GetCfgdataFileValueInt(const QString &key, int defaultValue);
    /// The user's overlay of it, the same path + ".user"; outside a bundle that is ".user" in the current folder. The
    /// bundle's own file is not asked.
    static int GetCfgdataFileValueIntUser(const QString &key, int defaultValue);
    static void SetCfgdataFileValueIntUser(const QString &key, int value);

    /// The counter store, "config_count.ini" in the user's data folder. Reads or writes `count` keys with one opening
    /// of the file; values[i] belongs to keys[i]. Does nothing at all unless `count` is the size of both and not 0.
    /// Reading, too, creates the folder.
    static void GetLocalAppCfgForCountValueInt(std::vector<QString> &keys, std::vector<int> &values, int count,
                                               int defaultValue);
    static void SetLocalAppCfgForCountValueInt(const std::vector<QString> &keys, const std::vector<int> &values,
                                               int count);
    /// Deletes the counter store, even when it is read-only. What cannot be deleted is renamed to the same name +
    /// ".tmp", over what may be there.
    static void ClearLocalAppCfgForCount();

    /// The product's version date: "date" in section "version" of "data/mainversion.ini" in the bundle's resources, as
    /// it stands there; empty when there is none.
    static QString GetProductVersion();

    /// Whether the stores of this library read and write an INI file at all: a regular file of at most 16 MiB in which
    /// no value is a serialized one ("@Variant(..."), since unpacking what such a value claims to hold may end the
    /// process. What is not sound counts as empty and is left as it is.
    static bool IsSound(const QString &path);
};
