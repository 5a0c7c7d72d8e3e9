#pragma once

#include "config/MaskedText_p.h"

/// What names this product build. Data only: a product build replaces this file (OND_PRODUCT_DIR).
namespace product {

inline constexpr auto kDefaultAppName = masked::text("PDF Orvell");
inline constexpr auto kDefaultLogName = masked::text("pdforvell");

inline constexpr auto kIdentifierDomestic = masked::text("com.vantpdf.reader");
inline constexpr auto kIdentifierInternational = masked::text("com.pdforvell.reader");

inline constexpr auto kProductNameDomestic = masked::text("Vant PDF");
inline constexpr auto kProductNameInternational = masked::text("PDF Orvell");
inline constexpr auto kProductNameInternationalForMac = masked::text("PDF Orvell for Mac");

inline constexpr auto kNamePrefixDomestic = masked::text("VantPDF");
inline constexpr auto kNamePrefixInternational = masked::text("PDFOrvell");

/// One group for both editions.
inline constexpr auto kDefaultGroupName = masked::text("group.com.vantpdf.shared");

/// What the component configuration answers for keys that it lacks.
inline constexpr auto kAssociateExe = masked::text("vantpdf.exe");
inline constexpr auto kAssociateBackup = masked::text("vantpdf_backup");
inline constexpr auto kServiceName = masked::text("VantPDFSvc");
inline constexpr auto kRegName = masked::text("vantpdf");
inline constexpr auto kReaderExe = masked::text("vantpdf.exe");
inline constexpr auto kCacheDir = masked::text("vantpdf");
inline constexpr auto kReportId = masked::text("9c4e27b1a05f4d3e8a6b12f0c7d93e58");
inline constexpr auto kReportPrefix = masked::text("pdforvell");
inline constexpr auto kGuidIndependent = masked::text("{2014D836-42D5-410E-B5EA-BF0714DAFACB}");
inline constexpr auto kGuid = masked::text("{9567A644-0B88-4A00-B45E-B1D8F8F67710}");

/// Data folders of editions that have one of their own.
inline constexpr auto kHarboDataDirName = masked::text("vantpdf_hb");
inline constexpr auto kWrenfixDataDirName = masked::text("vantpdf_wf");

inline constexpr auto kWelcomeFile = masked::text("Welcome_zh.pdf");
inline constexpr auto kWelcomeFileTolva = masked::text("Welcome_tolva.pdf");
/// Programs beside the reader.
inline constexpr auto kAccountHelper = masked::text("orvell-account");
inline constexpr auto kTranslateTool = masked::text("vanttranslate.exe");
inline constexpr auto kScreenshotTool = masked::text("vantscreenshot.exe");

inline constexpr auto kEditionNamePrefix = masked::text("vantpdf");
inline constexpr auto kConstCfgName = masked::text("pdfconstcfg.dat");

/// Other PDF and office products, by the bundle identifier that they are installed under.
inline constexpr auto kHarboApp = masked::text("com.harbo.reader");
inline constexpr auto kLumoApp = masked::text("com.lumo.reader");
inline constexpr auto kLumopdfApp = masked::text("com.lumopdf.reader");
inline constexpr auto kXunjieApp = masked::text("com.xunjie.reader");
inline constexpr auto kFoxitApp = masked::text("com.foxit.reader");
inline constexpr auto kXunduApp = masked::text("com.xundu.reader");
inline constexpr auto kCloudPdfApp = masked::text("com.cloudpdf.reader");

/// Development keys; a product build supplies its own, of at most 47 characters.
inline constexpr auto kSignKeyDomestic = masked::text("dev0d7c1f4a92b3e8650c7d9e1f3a5b4");
inline constexpr auto kSignKeyInternational = masked::text("dev1b85e2c6f0a9d4731e8f2b6c0d5a7");

/// Files that switch something on while they exist in the user's data folder.
inline constexpr auto kDebugMarker = masked::text("enable_debug");
inline constexpr auto kTestServerMarker = masked::text("use_test_server");

} // namespace product
