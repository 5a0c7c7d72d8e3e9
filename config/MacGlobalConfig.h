#pragma once

#include "config/Export.h"

#include <string>
#include <vector>

/// The build switches of this installation ("mk.dat", section "common") and the constants of this product build.
///
/// All static; callable from any thread; nothing throws. A switch is true only when its value is exactly 1. Each is
/// read at most once per process, so that changing the file has no effect on a running one. A missing, unreadable or
/// malformed file leaves every switch off. Narrow texts are UTF-8, wide ones UTF-32.
class ONDPDFTOOLUTILS_EXPORT MacGlobalConfig
{
public:
    /// "enable_log": the diagnostic log is on.
    static bool IsEnableFileLog();
    /// "enable_sbx": the application runs in the macOS app sandbox.
    static bool IsEnableSandBox();
    /// "app_store": this is the app-store package.
    static bool IsAppleStorePKG();
    /// "app_international": this is the international edition; off means the domestic one.
    static bool isInternationalApp();

    /// "group_name": the application group shared by the main application and its sub-applications; the build's default
    /// group when the file gives none.
    static std::string GetShareGroupName();

    /// The main application's bundle identifier in this edition.
    static std::string GetMainAppIdentifier();
    /// GetMainAppIdentifier() + "." + `sub`.
    static std::string GetSubAppIdentifier(const std::string &sub);

    ///@{

    /// The product's display name. International edition: the plain name for true, the name with its platform for
    /// false. The domestic edition has one name for both.
    static std::string GetProductName(bool plain);
    static std::wstring GetProductNameW(bool plain);
    ///@}

    ///@{

    /// The product's short name, for prefixes.
    static std::string GetProductNamePrefix();
    static std::wstring GetProductNamePrefixW();
    ///@}

    ///@{

    /// "502" for the international edition, "44" for the domestic one.
    static std::string GetProductId();
    static std::wstring GetProductIdW();
    ///@}

    /// Always empty.
    static std::vector<std::string> GetReporterWhiteList();

    /// The key that signs the application's requests in this edition, at most 47 characters. Never log it.
    static std::string GetAppAppSignKey();

    /// Writes the configuration to the diagnostic log, seven lines: "sbx:", "app_store:", "group_name:", "func_host:",
    /// "vip_host:", then the compile-time settings "intl_app:1" and "sandbox:0", which do not follow "mk.dat".
    static void OutputConfigLog();
};
