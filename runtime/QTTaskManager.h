#pragma once

#include "config/Export.h"
#include "runtime/OndEasyFunc.h"

#include <QRunnable>
#include <QThreadPool>

/// A task of a QTTaskManager. The application derives its own.
class ONDPDFTOOLUTILS_EXPORT IQTTask : public QRunnable
{
public:
    ~IQTTask() override;
};

/// A task that makes a call once.
class ONDPDFTOOLUTILS_EXPORT IFuncTask : public IQTTask
{
public:
    /// Takes ownership of `func`, which may be null.
    explicit IFuncTask(ondeasy::IFunc *func);
    ~IFuncTask() override;

    /// Makes the call and deletes it; nothing when it was made already.
    void run() override;

private:
    ondeasy::IFunc *m_func;
};

/// Runs tasks concurrently on a thread pool, its own or the process's.
///
/// Has no lock: every operation is for one controlling thread, but for stopAllTask(), which tasks may call too. The
/// destructor does not stop the pool.
class ONDPDFTOOLUTILS_EXPORT QTTaskManager
{
public:
    /// Chooses the process's pool or makes one of its own, and gives it `maxThreads` threads. Changes nothing when the
    /// manager is initialised already. False when the process's pool is gone.
    bool init(bool useGlobalPool, int maxThreads);

    /// Queues a task; the pool deletes it after it ran, unless its automatic deletion is off. False, with nothing taken
    /// over, for a null task or before init().
    bool addTask(IQTTask *task);
    /// Queues a call, which is deleted after it was made. False, with nothing taken over, for a null call or before
    /// init().
    bool addFuncTask(ondeasy::IFunc *func);

    /// Drops the tasks that have not started; running ones go on. Calls among them are not deleted: they stay with who
    /// made them. False before init().
    bool stopAllTask();
    /// Waits until nothing runs and nothing is queued, at most `milliseconds` (-1 for ever); whether that came about.
    /// False before init().
    bool waitAllTask(int milliseconds);

    /// Drops the tasks that have not started and gives up the pool: the event loop of the thread that called init()
    /// deletes it, which waits for the running ones. The manager may be initialised again. Not for a manager on the
    /// process's pool, which would be deleted too. False before init().
    bool unInit();

private:
    [[nodiscard]] bool isReady() const { return m_initialized && m_pool; }

    bool m_initialized = false;
    bool m_usesGlobalPool = false;
    int m_maxThreads = 4;
    QThreadPool *m_pool = nullptr;
};
