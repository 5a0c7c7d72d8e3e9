#pragma once

#include "config/Export.h"
#include "config/PDFEdition.h"

namespace OndPDF {

/// The part of the tools' interface that names entries of the file manager's context menu. There are none on this
/// platform.
class IPDFToolUtil
{
public:
    /// An entry; none has a name here.
    enum RIGHT_MENU_ITEM : int {};
};

} // namespace OndPDF

/// Switches of the installed products, for code that was written for a platform that has them. Here every switch is off
/// and cannot be turned on. May be called from any thread.
class ONDPDFTOOLUTILS_EXPORT CPDFProductUtil
{
public:
    ///@{

    /// The edition makes no difference.
    CPDFProductUtil();
    explicit CPDFProductUtil(PDFEdition::EDITION edition);
    ///@}

    /// @name Switches
    ///@{

    /// Setting one does nothing, and asking for one gives false.
    void EnableRightMenuItem(OndPDF::IPDFToolUtil::RIGHT_MENU_ITEM item, bool enable);
    bool IsRightMenuItemEnable(OndPDF::IPDFToolUtil::RIGHT_MENU_ITEM item) const;
    void EnableProfessionalPdf(bool enable);
    bool IsEnableProfessionalPdf() const;
    ///@}

    /// @name What is installed
    ///@{

    /// False.
    bool IsTopProductInstall() const;
    bool IsSelfOfficePlugin() const;
    bool IsPDFIndependentInstall() const;
    bool IsHarboInstall() const;
    bool IsWfInstall() const;
    ///@}

    /// Moves nothing: false.
    bool TranferIndependentReader() const;
    /// Asks CPDFEdition for the edition, and answers false whatever it is.
    bool IsNeedTranferIndependentReader() const;
};
