#pragma once

#include "account/IPDFVipSdkAdapter.h"

#include <QString>

/// Loads a translation file and has the application ask it before those installed already. False, with nothing
/// installed, if there is no application, the path is empty or the file cannot be loaded.
ONDPDFTOOLUTILS_EXPORT bool installTranslatorImpl(const QString &path);

/// The account's own window and what it needs. Call in this order, all on the user-interface thread: instance(),
/// Initial(), showOndVipLoginUI() as often as wanted, NotifyStop(), Unitial().
class ONDPDFTOOLUTILS_EXPORT OndVipInternationFactory
{
public:
    /// The process's only instance. The first call installs the dialog's translations, Chinese and then English, which
    /// wins. They belong to the application object: if there is none yet, they are never installed.
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
    /// QApplication. Not to be called again before it returns. Always false; ask CPDFVipSdkAdapter::IsLogin() for the
    /// outcome, or register a callback there.
    bool showOndVipLoginUI(IPDFVipSdkAdapter::VIP_GUI_PAGE page, int from, int fid, bool logoutForever,
                           IPDFVipSdkAdapter::VIP_PRIVILEGE privilege);

private:
    OndVipInternationFactory();
    ~OndVipInternationFactory() = default;
};
