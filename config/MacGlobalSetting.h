#pragma once

#include "config/Export.h"

#include <string>
#include <vector>

/// The language of the user interface, and a switch for debugging.
///
/// The product's languages are listed in "cfgdata/language.json" of the bundle's resources, in the order of the menu:
/// an object whose member "languages" is an array of objects with the texts "code" (for example "en"), "english_name"
/// and "show_name". In the international edition the user chooses one of them; the choice is a value of the emulated
/// registry (MacReg). The domestic edition is always in Chinese.
///
/// Static and without state, callable from any thread; nothing throws. All texts are UTF-8. The list is read anew on
/// every call. A list that is missing, malformed or larger than 1 MiB counts as empty; entries that are no objects and
/// members that are no texts are skipped.
class ONDPDFTOOLUTILS_EXPORT MacGlobalSetting
{
public:
    /// The code of the language in use: the user's choice; without one, that of the listed language whose
    /// "english_name" is the system language's; otherwise "en". In the domestic edition "zh", with nothing read.
    /// Creates the registry's folder but stores nothing.
    static std::string GetCurrentLanguage();
    /// Makes the first language whose "show_name" is `showName` the user's choice; one without a code as the empty
    /// text. Changes nothing if there is none.
    static void SetCurrentLanguage(const std::string &showName);
    /// Every "show_name" in the order of the list.
    static std::vector<std::string> GetSupportLanguageList();
    /// The text `wantedKey` of the first language whose text `key` is `value`, byte for byte; empty when that language
    /// has no such text. False, with `result` left alone, when there is no such language.
    static bool GetParticularLanguageInfo(const std::string &key, const std::string &value,
                                          const std::string &wantedKey, std::string &result);

    /// Whether the marker file for debugging, whose name is a constant of the product build, lies in the user's data
    /// folder now.
    static bool IsEnableDebug();
};
