#include "config/CPDFEdition.h"

#include "config/Locations_p.h"
#include "config/PdfReaderProductInfo.h"
#include "config/ProductCfgUtil.h"

#include <identity.h>

CPDFEdition *CPDFEdition::GetInstance()
{
    static CPDFEdition &instance = *new CPDFEdition;
    return &instance;
}

bool CPDFEdition::Initialize(PDFEdition::EDITION)
{
    if (m_isInitialized)
        return true;
    m_isInitialized = true;
    InitWorkDir();
    return true;
}

void CPDFEdition::Uninitialize()
{
    m_isInitialized = false;
}

void CPDFEdition::InitWorkDir()
{
    m_pdfDir = locations::applicationDir().toStdWString();
    m_parentAppDir = locations::parentAppDir().toStdWString();
    m_editionNamePrefix = product::kEditionNamePrefix.wstr();
    m_pdfConstCfgPath = m_pdfDir + product::kConstCfgName.wstr();
    // For the line that it leaves in the diagnostic log: support staff read there which server file is in force.
    static_cast<void>(locations::serverFile());
}

PDFEdition::EDITION CPDFEdition::GetEdition() const
{
    const ProductCfgUtil *config = SingleTon<ProductCfgUtil>::GetInstance();
    const auto edition = static_cast<PDFEdition::EDITION>(config->getProductEdition());
    config->checkAssertEdition(edition);
    return edition;
}

int CPDFEdition::GetTryNo() const
{
    // Loads the process's own record first, which then keeps the number of before any later change.
    static_cast<void>(PdfReaderProductInfo::GetInstance());
    return ProductInfoHelper(GetEdition()).GetProductInfo().tryNo;
}

// clang-format off
bool CPDFEdition::IsHarboEdition() const { return GetEdition() == PDFEdition::Harbo; }
bool CPDFEdition::IsWrenfixEdition() const { return GetEdition() == PDFEdition::Wrenfix; }
bool CPDFEdition::IsIndependentEdition() const { return GetEdition() == PDFEdition::Independent; }
bool CPDFEdition::IsInternationEdition() const { return GetEdition() == PDFEdition::International; }

const std::wstring &CPDFEdition::GetPDFDir() const { return m_pdfDir; }
const std::wstring &CPDFEdition::GetParentAppDir() const { return m_parentAppDir; }
const std::wstring &CPDFEdition::GetEditionNamePrefix() const { return m_editionNamePrefix; }
const std::wstring &CPDFEdition::GetPdfConstCfgPath() const { return m_pdfConstCfgPath; }

bool CPDFEdition::RunPDFConvertor(const wchar_t *) const { return false; }
bool CPDFEdition::RunPDFReader(const wchar_t *) const { return false; }
std::wstring CPDFEdition::GetPDFConverterPath() const { return {}; }
std::wstring CPDFEdition::GetPDFReaderFullPath() const { return {}; }
std::wstring CPDFEdition::GetPDFIndependentInstallPathFromReg() const { return {}; }
std::wstring CPDFEdition::GetHarboInstallPathFromReg() const { return {}; }
std::wstring CPDFEdition::GetWfInstallPathFromReg() const { return {}; }
// clang-format on
