#pragma once

#include "config/Export.h"
#include "config/PDFEdition.h"

namespace OndPDF {

/// The part of the tools' interface that names entries of the file manager's context menu. There are none on this
/// platform.
class IPDFToolUtil
{
public:
    enum RIGHT_MENU_ITEM : int {};
};

} // namespace OndPDF

/// Switches of the installed products, for code that was written for a platform that has them. Here every switch is off
/// and cannot be turned on. May be called from any thread.
class ONDPDFTOOLUTILS_EXPORT CPDFProductUtil
{
public:
    CPDFProductUtil();
    explicit CPDFProductUtil(PDFEdition::EDITION edition);

    void EnableRightMenuItem(OndPDF::IPDFToolUtil::RIGHT_MENU_ITEM item, bool enable);
    bool IsRightMenuItemEnable(OndPDF::IPDFToolUtil::RIGHT_MENU_ITEM item) const;
    void EnableProfessionalPdf(bool enable);
    bool IsEnableProfessionalPdf() const;

    bool IsTopProductInstall() const;
    bool IsSelfOfficePlugin() const;
    bool IsPDFIndependentInstall() const;
    bool IsHarboInstall() const;
    bool IsWfInstall() const;

    bool TranferIndependentReader() const;
    /// Asks CPDFEdition for the edition, and answers false whatever it is.
    bool IsNeedTranferIndependentReader() const;
};
