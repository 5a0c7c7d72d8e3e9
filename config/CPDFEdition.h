#pragma once

#include "config/Export.h"
#include "config/PDFEdition.h"

#include <string>

/// Which edition of the product this is, and where its executables and constant configuration lie, for code that was
/// written for another platform's installation layout.
///
/// One instance, made on first use. Not locked: initialize it on the user-interface thread at start-up; afterwards the
/// const functions may be called from any thread. Wide texts are UTF-32.
class ONDPDFTOOLUTILS_EXPORT CPDFEdition
{
public:
    /// The process's only instance. Callable from any thread.
    static CPDFEdition *GetInstance();

    CPDFEdition(const CPDFEdition &) = delete;
    CPDFEdition &operator=(const CPDFEdition &) = delete;

    /// Fills the folders and paths below, which are empty until then; nothing if that was done already. Always true.
    /// The argument is not used: the edition is always that of ProductCfgUtil.
    bool Initialize(PDFEdition::EDITION edition);
    /// Lets the next Initialize() fill them anew; until then they keep their values.
    void Uninitialize();

    /// ProductCfgUtil::getProductEdition(), which may be a number that PDFEdition does not name.
    PDFEdition::EDITION GetEdition() const;
    ///@{

    /// Whether GetEdition() is that number of PDFEdition.
    bool IsHarboEdition() const;
    bool IsWrenfixEdition() const;
    bool IsIndependentEdition() const;
    ///@}
    /// Edition number 8, which has nothing to do with MacGlobalConfig::isInternationalApp().
    bool IsInternationEdition() const;

    /// The installation's try number, read anew on every call: unlike PdfReaderProductInfo::GetTryNo() it follows what
    /// was written since the process began.
    int GetTryNo() const;

    /// The folder of the running executable. Ends in "/".
    const std::wstring &GetPDFDir() const;
    /// The folder that holds the product's executables: of the main application's bundle where there is one. Ends in
    /// "/".
    const std::wstring &GetParentAppDir() const;
    /// What names of the edition begin with, a constant of the product build.
    const std::wstring &GetEditionNamePrefix() const;
    /// Path of the constant configuration file in GetPDFDir(), which need not exist.
    const std::wstring &GetPdfConstCfgPath() const;

    /// @name Not on this platform
    ///@{

    /// Nothing is started, no installation is registered: false and empty.
    bool RunPDFConvertor(const wchar_t *arguments) const;
    bool RunPDFReader(const wchar_t *arguments) const;
    std::wstring GetPDFConverterPath() const;
    std::wstring GetPDFReaderFullPath() const;
    std::wstring GetPDFIndependentInstallPathFromReg() const;
    std::wstring GetHarboInstallPathFromReg() const;
    std::wstring GetWfInstallPathFromReg() const;
    ///@}

private:
    CPDFEdition() = default;

    void InitWorkDir();

    bool m_isInitialized = false;
    std::wstring m_pdfDir;
    std::wstring m_parentAppDir;
    std::wstring m_editionNamePrefix;
    std::wstring m_pdfConstCfgPath;
};
