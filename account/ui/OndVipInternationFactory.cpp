#include "account/ui/OndVipInternationFactory.h"

#include "account/CPDFVipSdkAdapter.h"
#include "account/ui/OndVipLoginUI.h"
#include "runtime/GlobalRequestTaskMgr.h"

#include <QCoreApplication>
#include <QTranslator>
#include <memory>

bool installTranslatorImpl(const QString &path)
{
    if (!QCoreApplication::instance() || path.isEmpty())
        return false;
    auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
    if (!translator->load(path))
        return false;
    return QCoreApplication::installTranslator(translator.release()); // the application's
}

OndVipInternationFactory *OndVipInternationFactory::instance()
{
    static OndVipInternationFactory instance;
    return &instance;
}

OndVipInternationFactory::OndVipInternationFactory()
{
    Q_CLEANUP_RESOURCE(resource);
    Q_INIT_RESOURCE(resource);
    // Qt consults the last one first.
    installTranslatorImpl(QStringLiteral(":/res/language/pdftoolutils_zh.qm"));
    installTranslatorImpl(QStringLiteral(":/res/language/pdftoolutils_en.qm"));
}

void OndVipInternationFactory::Initial()
{
    CPDFVipSdkAdapter::GetInstance()->Initialize(true);
    GlobalRequestTaskMgr::getInstance()->init();
}

void OndVipInternationFactory::Unitial()
{
    CPDFVipSdkAdapter::GetInstance()->Uninitialize();
    GlobalRequestTaskMgr::getInstance()->unInit();
}

void OndVipInternationFactory::NotifyStop()
{
    GlobalRequestTaskMgr::getInstance()->stop();
}

bool OndVipInternationFactory::showOndVipLoginUI(IPDFVipSdkAdapter::VIP_GUI_PAGE page, int from, int fid,
                                                 bool logoutForever, IPDFVipSdkAdapter::VIP_PRIVILEGE privilege)
{
    auto *dialog = new OndVipLoginUI(page, from, fid, logoutForever, privilege); // deletes itself
    return dialog->exec() != 0;
}
