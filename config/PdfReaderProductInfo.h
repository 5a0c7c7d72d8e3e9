#pragma once

#include "config/Export.h"
#include "config/PDFEdition.h"

#include <QString>
#include <string>

/// Who an installation is. Texts that are not known are empty, numbers 0.
struct ProductInfo
{
    ///@{

    /// Where the installation came from: the numbers of its distribution.
    int tid1 = 0;
    int tid2 = 0;
    int tod1 = 0;
    int tod2 = 0;
    int iid = 0;
    int tryNo = 0;
    ///@}
    qint64 installTime = 0; ///< Seconds since the Unix epoch.
    int pid = 0; ///< Number of the product.
    int fileVersion = 0; ///< The build field of the main application's version.
    QString uuid; ///< The installation's id.
    QString svrid; ///< The id that the server gave it.
    QString applicationDir; ///< Of the running executable, ends in "/".
    QString parentAppDir; ///< Of the product's executables, ends in "/".
    QString bundleVersion; ///< The main application's version.
    QString productVersion; ///< The product's version date.
};

/// Loads the record of one edition: from the emulated registry ("common", "product/..."), the bundle and its version
/// file. The cooperation edition's numbers are those of the updater's server file where that has them, and its ids what
/// ProductInfoForCooperation::GetUUID() makes of them, mostly empty. An edition number that is none of PDFEdition loads
/// like the independent edition.
class ONDPDFTOOLUTILS_EXPORT ProductInfoHelper
{
public:
    /// Reads the files. Creates the registry's folder (MacReg), but writes nothing.
    explicit ProductInfoHelper(PDFEdition::EDITION edition);

    /// The record, as it was read when this was made.
    ProductInfo GetProductInfo() const;

private:
    void InitIndependentEdition();
    void InitHarboEdition();
    void InitWrenfixEdition();
    void InitCooperationEdition();

    ProductInfo m_info;
};

/// The process's record of who this installation is: channel numbers, install time, machine identifier, versions; and
/// what follows from its edition.
///
/// The record is loaded by the first GetInstance() and does not change while the process runs, whatever is written
/// meanwhile. The getters may be called from any thread.
class ONDPDFTOOLUTILS_EXPORT PdfReaderProductInfo
{
public:
    /// The process's only instance. Callable from any thread.
    static PdfReaderProductInfo *GetInstance();

    PdfReaderProductInfo(const PdfReaderProductInfo &) = delete;
    PdfReaderProductInfo &operator=(const PdfReaderProductInfo &) = delete;

    /// @name The record
    ///@{

    /// As ProductInfo explains it.
    int GetTid1() const;
    int GetTid2() const;
    int GetTod1() const;
    int GetTod2() const;
    int GetIid() const;
    int GetPid() const;
    int GetTryNo() const;
    qint64 GetInstallTime() const;
    /// The build field of the main application's version.
    int GetFileVersion() const;
    /// The main application's version as one number (MacUtils::GetBundleVersionInt).
    int GetTotalFileVersion() const;
    QString GetUUID() const;
    QString GetSvrid() const;
    /// GetTod2() in decimal.
    std::wstring GetWTod2() const;
    /// The folder that holds the product's executables, in the main application's bundle where there is one. Ends in
    /// "/".
    QString GetParentAppDir() const;
    ///@}

    /// Calendar days, local time, since the installation; the day of installation is day 1. 0 for an installation on a
    /// later day.
    int GetInstallDays() const;
    /// Whole days.
    static unsigned int SecondToDays(unsigned int seconds);
    /// Writes "Common/TryNo" of the updater's server file ("ressrc/chs/upnest.svr" in the bundle's resources) and
    /// leaves the rest of the file as it stands, and the record too; only the cooperation edition's next record has it.
    /// Creates a missing file; does nothing when it cannot be written, or outside a bundle. User-interface thread.
    void SetTryNo(int value);

    /// @name The edition
    ///@{

    /// ProductCfgUtil::getProductEdition(), and whether it is that number of PDFEdition.
    int GetProductEdition() const;
    bool IsIndependentEdition() const;
    bool IsHarboEdition() const;
    bool IsWrenfixEdition() const;
    bool IsCooperationEdition() const;
    /// The international switch of MacGlobalConfig, whatever the edition's number.
    bool IsInternationEdition() const;
    ///@}

    /// @name Texts of ProductCfgUtil
    ///@{

    /// getProductName().
    QString GetProductEditionName() const;
    /// The name as the window shows it, getWindowTitle().
    QString GetProductEditionFullName() const;
    /// getTopLeftTitle().
    QString GetTopLeftTitle() const;
    /// getWindowTitle().
    QString GetWindowTitle() const;
    /// getAssociateExe().
    QString GetAssociateExecutor() const;
    /// getAssociateDesc().
    QString GetAssociateDescription() const;
    ///@}

    /// @name Other products
    ///@{

    /// Whether that PDF or office product is installed on this machine. Asked anew on every call.
    bool IsHasHarbo() const;
    bool IsHasLumo() const;
    bool IsHasLumopdf() const;
    bool IsHasXunjie() const;
    bool IsHasFoxit() const;
    bool IsHasXundu() const;
    bool IsHasCloudPdf() const;
    ///@}

private:
    PdfReaderProductInfo();

    void InitProductInfo();

    ProductInfo m_info;
    int m_totalFileVersion = 0;
};
