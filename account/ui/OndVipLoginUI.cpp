#include "account/ui/OndVipLoginUI.h"

#include "account/OndVipGeneratorUtil.h"
#include "paths/platform/Announcement_p.h"
#include "ui_OndVipLoginUI.h"
#include "vipsdk/include/VipSdkDefine.h"

#include <QAccessibleWidget>
#include <QAction>
#include <QDesktopServices>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QPointer>
#include <QSvgRenderer>
#include <QTimer>
#include <QToolButton>
#include <QUrl>
#include <utility>

namespace {

constexpr QSize kDialogSize(450, 560);
constexpr QSize kLogoSize(72, 72);
constexpr int kLineEditPadding = 8; // right of the text; on the left there is the icon

constexpr char kBackgroundSheet[] = "QLabel {background: transparent; border: none; border-radius: 10px;}";
constexpr char kCloseSheet[] = "QAbstractButton {image: url(:img/res/dialog/close.svg);}";
constexpr char kLoginSheet[] =
    "QAbstractButton {background: rgba(58, 104, 195, 1); border: none; border-radius: 6px; color:white; font-size: "
    "14px; font-weight: 700;}\n"
    "QAbstractButton:hover {background: rgba(88, 127, 204, 1);}\n"
    "QAbstractButton:pressed {background: rgba(49, 88, 166, 1);}\n"
    "QAbstractButton:disabled {background: rgba(58, 104, 195, 0.4);}";
constexpr char kForgetPasswordSheet[] =
    "QAbstractButton {background: transparent; border: none; color: #666666; font-size: 14px;}\n"
    "QAbstractButton:hover {background: transparent; border: none; color: #587FCC;}\n"
    "QAbstractButton:pressed {background: transparent; border: none; color: #3158A6;}\n"
    "QAbstractButton:disabled {background: transparent; border: none; color: #BBBBBB;}";
constexpr char kTitleSheet[] = "color: #444444; background: transparent; font-size: 20px; font-weight: 700;";
constexpr char kHintSheet[] = "color: #8D8D8D; background: transparent; font-size: 12px;";
constexpr char kErrorSheet[] = "color: #E73F33; background: transparent; font-size: 14px;";
constexpr char kLineEditSheet[] = "QLineEdit {background: #FFFFFF; border: 1px solid #BBBBBB; border-radius: 2px; "
                                  "color: #444444; font-size: 14px;}";
// The product's sheet for round marks begins with its radio buttons; a check box looks like them.
constexpr char kRadioSheet[] = "QRadioButton {color: #666666;} QRadioButton:disabled {color: #e5e5e5;}"
                               "QCheckBox {color: #666666;} QCheckBox:disabled {color: #e5e5e5;}"
                               "QAbstractButton::indicator {width: 14px; height: 14px;}"
                               "QAbstractButton::indicator:unchecked {image: url(:img/res/dialog/radiouncheck.svg);}"
                               "QAbstractButton::indicator:checked {image: url(:img/res/dialog/radiocheck.svg);}";

constexpr std::pair<int, const char *> kErrors[] = {
    {vip_sdk::LOGIN_ERROR_ALREADY_REGISTERED, QT_TRANSLATE_NOOP("OndVipLoginUI", "this email has been registered")},
    {vip_sdk::LOGIN_ERROR_NAME_TOO_LONG, QT_TRANSLATE_NOOP("OndVipLoginUI", "name too long")},
    {vip_sdk::LOGIN_ERROR_MALFORMED_EMAIL, QT_TRANSLATE_NOOP("OndVipLoginUI", "email format wrong")},
    {vip_sdk::LOGIN_ERROR_NO_SUCH_ACCOUNT, QT_TRANSLATE_NOOP("OndVipLoginUI", "account don't exists")},
    {vip_sdk::LOGIN_ERROR_WRONG_PASSWORD, QT_TRANSLATE_NOOP("OndVipLoginUI", "password error")},
};

QString errorMessage(int code)
{
    for (const auto &[known, message] : kErrors) {
        if (known == code)
            return OndVipLoginUI::tr(message);
    }
    return OndVipLoginUI::tr("unknown error code %1").arg(code);
}

QString imagePath(const char *name)
{
    return QStringLiteral(":/img/res/dialog/") + QLatin1String(name);
}

/// What `draw` draws, or drew for an earlier dialog.
template <typename Draw> QPixmap drawnOnce(const QString &key, Draw draw)
{
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = draw();
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

/// An SVG image in the density of the densest screen.
QPixmap svgPixmap(const QString &path, QSize size)
{
    const double density = qApp->devicePixelRatio();
    return drawnOnce(QStringLiteral("%1 %2 %3 %4").arg(path).arg(size.width()).arg(size.height()).arg(density), [&] {
        QPixmap pixmap(size * density);
        pixmap.setDevicePixelRatio(density);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        QSvgRenderer(path).render(&painter, QRectF(QPointF(), size));
        return pixmap;
    });
}

/// An icon that is as dense as the screen also in hosts that do not ask Qt for dense icons.
class SvgIcon : public QIconEngine
{
public:
    explicit SvgIcon(QString path) : m_path(std::move(path)) { }

    QIconEngine *clone() const override { return new SvgIcon(m_path); }
    QPixmap pixmap(const QSize &size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return svgPixmap(m_path, size);
    }
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        QSvgRenderer(m_path).render(painter, rect);
    }

private:
    QString m_path;
};

class Decoration : public QAccessibleWidget
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = true;
        return state;
    }
};

/// Leaves a widget without a meaning out of what screen readers tell.
void passOver(QWidget *widget)
{
    QAccessible::registerAccessibleInterface(new Decoration(widget, QAccessible::Graphic));
}

void initLineEdit(QLineEdit *edit, const QString &placeholder, const char *icon)
{
    edit->setStyleSheet(kLineEditSheet);
    edit->setPlaceholderText(placeholder);
    edit->setTextMargins(0, 0, kLineEditPadding, 0);
    edit->setAttribute(Qt::WA_MacShowFocusRect, false); // the dialog's frame takes its place
    edit->addAction(QIcon(new SvgIcon(imagePath(icon))), QLineEdit::LeadingPosition);
    passOver(edit->findChild<QToolButton *>());
}

} // namespace

OndVipLoginUI::OndVipLoginUI(VIP_GUI_PAGE /*page*/, int /*from*/, int /*fid*/, bool /*logoutForever*/,
                             VIP_PRIVILEGE /*privilege*/, QWidget *parent)
    : BaseDlg(parent), m_ui(std::make_unique<Ui_OndVipLoginUI>())
{
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setFixedSize(kDialogSize);
    m_ui->setupUi(this);
    initUI();
    initConnect();
    GlobalRequestTaskMgr::getInstance()->setLoginCallBack(this);
}

OndVipLoginUI::~OndVipLoginUI()
{
    GlobalRequestTaskMgr::getInstance()->clearLoginCallBack(this); // not another dialog's
}

void OndVipLoginUI::initUI()
{
    m_ui->backgroundLabel->setStyleSheet(kBackgroundSheet);
    m_ui->backgroundLabel->setScaledContents(true);
    passOver(m_ui->backgroundLabel);
    // Of itself Qt looks for the dense image only where it loads icons.
    const bool isDense = qApp->devicePixelRatio() > 1;
    const QString background = imagePath(isDense ? "login_dlg_back_ground@2x.png" : "login_dlg_back_ground.png");
    m_ui->backgroundLabel->setPixmap(drawnOnce(background + QLatin1String(" rounded"), [&background] {
        return getRoundedPixmap(QPixmap(background), kCornerRadius);
    }));
    m_ui->logoLabel->setPixmap(svgPixmap(imagePath("logo_72x72.svg"), kLogoSize));
    m_ui->closeButton->setStyleSheet(kCloseSheet);
    m_ui->loginButton->setStyleSheet(kLoginSheet);
    m_ui->forgetPasswordButton->setStyleSheet(kForgetPasswordSheet);
    m_ui->titleLabel->setStyleSheet(kTitleSheet);
    m_ui->hintLabel->setStyleSheet(kHintSheet);
    m_ui->showPasswordCheckBox->setStyleSheet(kRadioSheet);
    initLineEdit(m_ui->emailLineEdit, tr("Email"), "email.svg");
    initLineEdit(m_ui->passwordLineEdit, tr("Password"), "lock.svg");
    m_ui->errorLabel->setStyleSheet(kErrorSheet);
    QSizePolicy errorPolicy = m_ui->errorLabel->sizePolicy();
    errorPolicy.setRetainSizeWhenHidden(true);
    m_ui->errorLabel->setSizePolicy(errorPolicy);
    setError({});
    m_ui->emailLineEdit->installEventFilter(this);
    m_ui->passwordLineEdit->installEventFilter(this);
}

void OndVipLoginUI::initConnect()
{
    connect(this, &OndVipLoginUI::closeDlg, this, &QWidget::close);
    connect(m_ui->closeButton, &QPushButton::clicked, this, &OndVipLoginUI::closeDlg);
    connect(m_ui->loginButton, &QPushButton::clicked, this, &OndVipLoginUI::on_loginButton_clicked);
    connect(m_ui->forgetPasswordButton, &QPushButton::clicked, this, &OndVipLoginUI::on_forgetPassword_clicked);
    // Screen readers tick it without a click.
    connect(m_ui->showPasswordCheckBox, &QCheckBox::toggled, this, [this](bool checked) {
        m_ui->passwordLineEdit->setEchoMode(checked ? QLineEdit::Normal : QLineEdit::Password);
    });
}

void OndVipLoginUI::on_loginButton_clicked()
{
    const QString email = m_ui->emailLineEdit->text();
    const QString password = m_ui->passwordLineEdit->text();
    if (email.isEmpty() || password.isEmpty()) {
        showError(tr("Please enter username and password"));
        return;
    }
    setError({});
    if (m_ui->loginButton->hasFocus())
        m_ui->passwordLineEdit->setFocus(); // where a failure is put right; disabled, it would pass the focus on
    setBusy(true);
    platform::announce(m_ui->loginButton, m_ui->loginButton->text());
    auto *requests = GlobalRequestTaskMgr::getInstance();
    requests->setLoginCallBack(this); // again, if another dialog was opened meanwhile
    requests->requestLogin(email, password);
}

void OndVipLoginUI::on_forgetPassword_clicked()
{
    QDesktopServices::openUrl(
        QUrl(OndVipGeneratorUtil::GetOpenUrl(IPDFVipSdkAdapter::VIP_GUI_PAGE_FORGOT_PASSWORD, 0, 0, 0)));
}

void OndVipLoginUI::onLoginFinish(bool success, int code, bool /*flag*/)
{
    QTimer::singleShot(0, this, [this, success, code] { showResult(success, code); });
}

void OndVipLoginUI::showResult(bool success, int code)
{
    if (success) {
        const QPointer<OndVipLoginUI> guard(this);
        emit closeDlg();
        if (!guard)
            return;
    } else {
        showError(tr("Login failed, %1").arg(errorMessage(code)));
    }
    setBusy(false);
}

void OndVipLoginUI::setBusy(bool busy)
{
    for (QLineEdit *edit : {m_ui->emailLineEdit, m_ui->passwordLineEdit}) {
        edit->setReadOnly(busy);
        edit->setAttribute(Qt::WA_MacShowFocusRect, false); // which setReadOnly() turns on again
    }
    m_ui->busyBar->setVisible(busy);
    m_ui->loginButton->setText(busy ? tr("Logging in...") : tr("Log in / Sign up"));
    m_ui->loginButton->setEnabled(!busy);
}

void OndVipLoginUI::setError(const QString &text)
{
    m_ui->errorLabel->setText(text);
    m_ui->errorLabel->setVisible(!text.isEmpty()); // else screen readers come by an element without a name
}

void OndVipLoginUI::showError(const QString &text)
{
    setError(text);
    platform::announce(m_ui->errorLabel, text);
}

bool OndVipLoginUI::eventFilter(QObject *watched, QEvent *event)
{
    // A style sheet derives the colour from that of the text whenever it sets the palette.
    if (event->type() == QEvent::Paint && (watched == m_ui->emailLineEdit || watched == m_ui->passwordLineEdit)) {
        auto *edit = static_cast<QLineEdit *>(watched);
        QPalette palette = edit->palette();
        palette.setColor(QPalette::PlaceholderText, QStringLiteral("#CCCCCC"));
        edit->setPalette(palette);
    }
    return BaseDlg::eventFilter(watched, event);
}
