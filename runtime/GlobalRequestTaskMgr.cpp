#include "runtime/GlobalRequestTaskMgr.h"

#include "account/OndVipGeneratorUtil.h"
#include "runtime/AutoLocker.h"

#include <QMutex>
#include <unordered_set>

namespace {

constexpr int kThreads = 1;
constexpr int kPatienceMs = 1000;

} // namespace

void IRequestTaskCallBack::onLoginFinish(bool /*success*/, int /*code*/, bool /*flag*/) { }

/// Logins, and who is told how they end.
class GlobalRequestTaskMgr::Logins
{
public:
    void setCallBack(IRequestTaskCallBack *callback)
    {
        const AutoLocker locker(m_mutex);
        m_callback = callback;
    }
    void login(QString user, QString password)
    {
        int code = 0;
        bool flag = false;
        const bool success = OndVipGeneratorUtil::Login(user, password, code, flag);
        const AutoLocker locker(m_mutex);
        if (m_callback)
            m_callback->onLoginFinish(success, code, flag);
    }

private:
    QMutex m_mutex;
    IRequestTaskCallBack *m_callback = nullptr;
};

/// The requests of one pool. The pool deletes those that it ran; those that it dropped are left to us.
class GlobalRequestTaskMgr::Requests
{
public:
    void add(Request *request)
    {
        const AutoLocker locker(m_mutex);
        m_waiting.insert(request);
    }
    void remove(Request *request)
    {
        const AutoLocker locker(m_mutex);
        m_waiting.erase(request);
    }
    void start(Request *request)
    {
        const AutoLocker locker(m_mutex);
        m_waiting.erase(request);
        m_isRunning = true;
    }
    void finish()
    {
        const AutoLocker locker(m_mutex);
        m_isRunning = false;
    }
    bool isRunning()
    {
        const AutoLocker locker(m_mutex);
        return m_isRunning;
    }
    void deleteWaiting();

private:
    QMutex m_mutex;
    std::unordered_set<Request *> m_waiting;
    bool m_isRunning = false;
};

class GlobalRequestTaskMgr::Request : public ondeasy::IFunc
{
public:
    Request(std::shared_ptr<Requests> requests, std::shared_ptr<Logins> target, std::unique_ptr<ondeasy::IFunc> call)
        : m_requests(std::move(requests)), m_target(std::move(target)), m_call(std::move(call))
    {
    }
    void run() override
    {
        m_requests->start(this);
        m_call->run();
        m_requests->finish();
    }

private:
    std::shared_ptr<Requests> m_requests;
    std::shared_ptr<Logins> m_target;
    std::unique_ptr<ondeasy::IFunc> m_call;
};

void GlobalRequestTaskMgr::Requests::deleteWaiting()
{
    std::unordered_set<Request *> dropped;
    {
        const AutoLocker locker(m_mutex);
        dropped.swap(m_waiting);
    }
    for (Request *request : dropped)
        delete request;
}

GlobalRequestTaskMgr *GlobalRequestTaskMgr::getInstance()
{
    static GlobalRequestTaskMgr instance;
    instance.init();
    return &instance;
}

GlobalRequestTaskMgr::GlobalRequestTaskMgr()
    : m_logins(std::make_shared<Logins>()), m_requests(std::make_shared<Requests>())
{
}

GlobalRequestTaskMgr::~GlobalRequestTaskMgr()
{
    unInit();
    setLoginCallBack(nullptr); // whom a request that runs on would still tell
}

bool GlobalRequestTaskMgr::init()
{
    return m_tasks.init(false, kThreads);
}

bool GlobalRequestTaskMgr::stop()
{
    return dropWaiting();
}

bool GlobalRequestTaskMgr::unInit()
{
    m_tasks.waitAllTask(kPatienceMs);
    dropWaiting();
    m_requests = std::make_shared<Requests>();
    return m_tasks.unInit();
}

void GlobalRequestTaskMgr::setLoginCallBack(IRequestTaskCallBack *callback)
{
    m_logins->setCallBack(callback);
}

bool GlobalRequestTaskMgr::requestLogin(QString user, QString password)
{
    std::unique_ptr<ondeasy::IFunc> call(
        ondeasy::FuncFactory::create_class_func(m_logins.get(), &Logins::login, std::move(user), std::move(password)));
    auto request = std::make_unique<Request>(m_requests, m_logins, std::move(call));
    m_requests->add(request.get());
    if (!m_tasks.addFuncTask(request.get())) {
        m_requests->remove(request.get());
        return false;
    }
    static_cast<void>(request.release()); // the pool's, or ours when it is dropped
    return true;
}

void GlobalRequestTaskMgr::login(QString user, QString password)
{
    m_logins->login(std::move(user), std::move(password));
}

bool GlobalRequestTaskMgr::dropWaiting()
{
    if (!m_tasks.stopAllTask())
        return false;
    // The thread may just have taken up a request; until that says so, it looks like a dropped one.
    while (!m_requests->isRunning() && !m_tasks.waitAllTask(1)) { }
    m_requests->deleteWaiting();
    return true;
}
