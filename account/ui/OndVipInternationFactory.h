#pragma once

#include "account/IPDFVipSdkAdapter.h"

#include <QString>

/// Loads a translation file and has the application use it, before those that it uses already. False, with nothing
/// installed, without an application, for an empty path, and when the file cannot be loaded.
ONDPDFTOOLUTILS_EXPORT bool installTranslatorImpl(const QString &path);

/// The account's own window and what it needs. The order of calls, all on the thread of the user interface: instance(),
/// Initial(), showOndVipLoginUI() as often as wanted, NotifyStop(), Unitial().
class ONDPDFTOOLUTILS_EXPORT OndVipInternationFactory
{
public:
    /// The process's only instance. The first call installs the dialog's translations: Chinese, and English before it,
    /// which therefore wins. They are the application object's: without one they are left out, and later calls do not
    /// make up for it.
    static OndVipInternationFactory *instance();

    OndVipInternationFactory(const OndVipInternationFactory &) = delete;
    OndVipInternationFactory &operator=(const OndVipInternationFactory &) = delete;

    /// Starts the account (CPDFVipSdkAdapter) and the thread of its requests (GlobalRequestTaskMgr). Nothing else of
    /// the account may be used before.
    void Initial();
    /// Stops both, waiting up to a second for a login that is under way.
    void Unitial();
    /// Drops the requests that have not started. To be called before Unitial().
    void NotifyStop();

    /// Shows the login dialog and returns when it is closed; the arguments are those of OpenVipGUIPage(). Needs a
    /// QApplication; not to be called again before it returns. Whether the dialog's result is other than 0, which it
    /// never is: it closes itself after a login as the user closes it. Who wants to know asks
    /// CPDFVipSdkAdapter::IsLogin(), or is told by its callbacks.
    bool showOndVipLoginUI(IPDFVipSdkAdapter::VIP_GUI_PAGE page, int from, int fid, bool logoutForever,
                           IPDFVipSdkAdapter::VIP_PRIVILEGE privilege);

private:
    OndVipInternationFactory();
    ~OndVipInternationFactory() = default;
};
