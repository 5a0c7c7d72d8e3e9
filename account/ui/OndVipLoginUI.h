#pragma once

#include "account/IPDFVipSdkAdapter.h"
#include "account/ui/BaseDlg.h"
#include "runtime/GlobalRequestTaskMgr.h"

#include <memory>

class Ui_OndVipLoginUI;

/// The login dialog: asks for e-mail address and password, logs in on the thread of the requests (GlobalRequestTaskMgr)
/// and closes when that succeeded; an unknown address makes an account. Meanwhile a bar moves, and the fields can only
/// be read. Return logs in, Escape closes, a screen reader announces the login and errors. Application-modal. Make it
/// with new: it deletes itself when it is closed. Use it on the user-interface thread, after
/// OndVipInternationFactory::Initial().
///
/// It may be closed while a login is under way, which goes on; its result is for the dialog that is open by then, or
/// for nobody. It is the login callback of the requests from its making, and again from each login on; its end
/// leaves another dialog's registration alone. Of two dialogs that wait, the last one to log in gets both results.
class ONDPDFTOOLUTILS_EXPORT OndVipLoginUI : public BaseDlg, public IRequestTaskCallBack
{
    Q_OBJECT

public:
    ///@{

    /// The types of OpenVipGUIPage().
    using VIP_GUI_PAGE = IPDFVipSdkAdapter::VIP_GUI_PAGE;
    using VIP_PRIVILEGE = IPDFVipSdkAdapter::VIP_PRIVILEGE;
    ///@}

    /// Takes what account pages are opened with (OpenVipGUIPage()); the dialog is the same for all of them.
    OndVipLoginUI(VIP_GUI_PAGE page, int from, int fid, bool logoutForever, VIP_PRIVILEGE privilege,
                  QWidget *parent = nullptr);
    /// Waits for a result that is being delivered.
    ~OndVipLoginUI() override;

    /// Shows the result, on the dialog's thread, once that is back in its event loop. Callable from any thread while
    /// the dialog exists.
    void onLoginFinish(bool success, int code, bool flag) override;

    /// Keeps the labels of the fields up to date.
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The user logged in, or clicked the close button. Closes the dialog.
    void closeDlg();

private:
    void initUI();
    void initConnect();
    void on_loginButton_clicked();
    void on_forgetPassword_clicked();
    void setBusy(bool busy);
    void showResult(bool success, int code);
    void setError(const QString &text);
    void showError(const QString &text);

    std::unique_ptr<Ui_OndVipLoginUI> m_ui;
};
