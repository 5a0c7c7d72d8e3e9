#include "runtime/QTTaskManager.h"

IQTTask::~IQTTask() = default;

IFuncTask::IFuncTask(ondeasy::IFunc *func) : m_func(func) { }

// A call that was never made is left alone: callers that drop queued tasks still hold it.
IFuncTask::~IFuncTask() = default;

void IFuncTask::run()
{
    if (!m_func)
        return;
    m_func->run();
    delete m_func;
    m_func = nullptr;
}

bool QTTaskManager::init(bool useGlobalPool, int maxThreads)
{
    if (m_initialized)
        return true;
    QThreadPool *pool = useGlobalPool ? QThreadPool::globalInstance() : new QThreadPool;
    if (!pool)
        return false;
    pool->setMaxThreadCount(maxThreads);
    m_pool = pool;
    m_usesGlobalPool = useGlobalPool;
    m_maxThreads = maxThreads;
    m_initialized = true;
    return true;
}

bool QTTaskManager::addTask(IQTTask *task)
{
    if (!task || !isReady())
        return false;
    m_pool->start(task, 0);
    return true;
}

bool QTTaskManager::addFuncTask(ondeasy::IFunc *func)
{
    return func && isReady() && addTask(new IFuncTask(func));
}

bool QTTaskManager::stopAllTask()
{
    if (!isReady())
        return false;
    m_pool->clear();
    return true;
}

bool QTTaskManager::waitAllTask(int milliseconds)
{
    return isReady() && m_pool->waitForDone(milliseconds);
}

bool QTTaskManager::unInit()
{
    if (!isReady())
        return false;
    m_pool->clear();
    m_pool->deleteLater();
    m_pool = nullptr;
    m_initialized = false;
    return true;
}
