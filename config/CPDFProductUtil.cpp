#include "config/CPDFProductUtil.h"

#include "config/CPDFEdition.h"

// clang-format off
CPDFProductUtil::CPDFProductUtil() = default;
CPDFProductUtil::CPDFProductUtil(PDFEdition::EDITION) { }

void CPDFProductUtil::EnableRightMenuItem(OndPDF::IPDFToolUtil::RIGHT_MENU_ITEM, bool) { }
bool CPDFProductUtil::IsRightMenuItemEnable(OndPDF::IPDFToolUtil::RIGHT_MENU_ITEM) const { return false; }
void CPDFProductUtil::EnableProfessionalPdf(bool) { }
bool CPDFProductUtil::IsEnableProfessionalPdf() const { return false; }

bool CPDFProductUtil::IsTopProductInstall() const { return false; }
bool CPDFProductUtil::IsSelfOfficePlugin() const { return false; }
bool CPDFProductUtil::IsPDFIndependentInstall() const { return false; }
bool CPDFProductUtil::IsHarboInstall() const { return false; }
bool CPDFProductUtil::IsWfInstall() const { return false; }

bool CPDFProductUtil::TranferIndependentReader() const { return false; }
// clang-format on

bool CPDFProductUtil::IsNeedTranferIndependentReader() const
{
    // Asked, and the answer ignored on purpose: the transfer never applies on this platform.
    static_cast<void>(CPDFEdition::GetInstance()->IsIndependentEdition());
    return false;
}
