#include "runtime/GlobalRequestTaskMgr.h"

#include "account/OndVipGeneratorUtil.h"
#include "runtime/AutoLocker.h"
#include "runtime/ProcessEnd_p.h"

#include <memory>

namespace {

constexpr int kThreads = 1;
constexpr int kPatienceMs = 1000;

/// Belongs to the pool, with its call, whether it runs or is dropped: the call holds a password.
class Request : public IQTTask
{
public:
    explicit Request(ondeasy::IFunc *call) : m_call(call) { }
    void run() override { m_call->run(); }

private:
    const std::unique_ptr<ondeasy::IFunc> m_call;
};

} // namespace

void IRequestTaskCallBack::onLoginFinish(bool /*success*/, int /*code*/, bool /*flag*/) { }

GlobalRequestTaskMgr &GlobalRequestTaskMgr::instance()
{
    static GlobalRequestTaskMgr &instance = *new GlobalRequestTaskMgr; // a request may run on when the process exits
    return instance;
}

GlobalRequestTaskMgr *GlobalRequestTaskMgr::getInstance()
{
    instance().init();
    return &instance();
}

GlobalRequestTaskMgr::GlobalRequestTaskMgr()
{
    atProcessEnd(ProcessEnd::requests, [] { instance().end(); });
}

bool GlobalRequestTaskMgr::init()
{
    const AutoLocker locker(m_poolMutex);
    return !m_ended && m_tasks.init(false, kThreads);
}

bool GlobalRequestTaskMgr::stop()
{
    const AutoLocker locker(m_poolMutex);
    return m_tasks.stopAllTask();
}

bool GlobalRequestTaskMgr::unInit()
{
    const AutoLocker turn(m_unInitMutex); // nobody else gives up the pool while this waits for it
    waitForRequests();
    const AutoLocker locker(m_poolMutex);
    return m_tasks.unInit();
}

void GlobalRequestTaskMgr::setLoginCallBack(IRequestTaskCallBack *callback)
{
    const AutoLocker locker(m_mutex);
    m_loginCallBack = callback;
}

void GlobalRequestTaskMgr::clearLoginCallBack(const IRequestTaskCallBack *callback)
{
    const AutoLocker locker(m_mutex);
    if (m_loginCallBack == callback)
        m_loginCallBack = nullptr;
}

bool GlobalRequestTaskMgr::requestLogin(QString user, QString password)
{
    auto request = std::make_unique<Request>(ondeasy::FuncFactory::create_class_func(
        this, &GlobalRequestTaskMgr::login, std::move(user), std::move(password)));
    const AutoLocker locker(m_poolMutex);
    if (!m_tasks.addTask(request.get()))
        return false;
    static_cast<void>(request.release()); // the pool's
    return true;
}

void GlobalRequestTaskMgr::login(QString user, QString password)
{
    int code = 0;
    bool flag = false;
    const bool success = OndVipGeneratorUtil::Login(user, password, code, flag);
    const AutoLocker locker(m_mutex);
    if (m_loginCallBack)
        m_loginCallBack->onLoginFinish(success, code, flag);
}

void GlobalRequestTaskMgr::waitForRequests()
{
    // Without the lock: the requests that it waits for may need it.
    m_poolMutex.lock();
    QTTaskManager tasks = m_tasks;
    m_poolMutex.unlock();
    tasks.waitAllTask(kPatienceMs);
}

void GlobalRequestTaskMgr::end()
{
    {
        const AutoLocker locker(m_poolMutex);
        m_ended = true;
    }
    unInit();
    setLoginCallBack(nullptr);
}
