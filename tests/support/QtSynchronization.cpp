// Tells the thread sanitizer of Qt's synchronisation, which it cannot see in a Qt that was built without it. The linker
// directs the calls of what is tested to the functions below (tests/CMakeLists.txt names them).

#include <QDeadlineTimer>
#include <QMutex>
#include <QReadWriteLock>
#include <QThread>
#include <QThreadPool>
#include <QWaitCondition>
#include <memory>
#include <sanitizer/tsan_interface.h>

#define REAL(symbol) __real_##symbol // NOLINT(bugprone-reserved-identifier): the linker's names
/// Declares the real function, and begins the definition of the one that is called in its place.
#define WRAPPED(result, symbol, ...)                                                                                   \
    extern "C" result REAL(symbol)(__VA_ARGS__);                                                                       \
    extern "C" result __wrap_##symbol(__VA_ARGS__) // NOLINT(bugprone-reserved-identifier)

static void unlocking(void *lock)
{
    __tsan_release(lock);
    // What a thread did before it last unlocked anything is seen by who waits for its end.
    __tsan_release(QThread::currentThread());
}

static bool acquiredIf(bool succeeded, void *object)
{
    if (succeeded)
        __tsan_acquire(object);
    return succeeded;
}

/// Runs a task, which it owns as the pool would, on a thread that has seen what the pushing thread did.
struct SeenRunnable : QRunnable
{
    SeenRunnable(QThreadPool *pool, QRunnable *task) : m_pool(pool), m_task(task) { __tsan_release(this); }
    ~SeenRunnable() override
    {
        m_task.reset();
        __tsan_release(m_pool);
    }
    void run() override
    {
        __tsan_acquire(this);
        m_task->run();
    }

    QThreadPool *m_pool;
    std::unique_ptr<QRunnable> m_task;
};

WRAPPED(void, _ZN6QMutex4lockEv, QMutex *mutex)
{
    REAL(_ZN6QMutex4lockEv)(mutex);
    __tsan_acquire(mutex);
}

WRAPPED(void, _ZN6QMutex6unlockEv, QMutex *mutex)
{
    unlocking(mutex);
    REAL(_ZN6QMutex6unlockEv)(mutex);
}

WRAPPED(void, _ZN14QReadWriteLock12lockForWriteEv, QReadWriteLock *lock)
{
    REAL(_ZN14QReadWriteLock12lockForWriteEv)(lock);
    __tsan_acquire(lock);
}

WRAPPED(void, _ZN14QReadWriteLock6unlockEv, QReadWriteLock *lock)
{
    unlocking(lock);
    REAL(_ZN14QReadWriteLock6unlockEv)(lock);
}

WRAPPED(bool, _ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer, QWaitCondition *condition, QMutex *mutex,
        QDeadlineTimer deadline)
{
    unlocking(mutex);
    const bool woken = REAL(_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer)(condition, mutex, deadline);
    __tsan_acquire(mutex);
    return woken;
}

WRAPPED(bool, _ZN7QThread4waitE14QDeadlineTimer, QThread *thread, QDeadlineTimer deadline)
{
    return acquiredIf(REAL(_ZN7QThread4waitE14QDeadlineTimer)(thread, deadline), thread);
}

WRAPPED(void, _ZN11QThreadPool5startEP9QRunnablei, QThreadPool *pool, QRunnable *task, int priority)
{
    REAL(_ZN11QThreadPool5startEP9QRunnablei)(pool, new SeenRunnable(pool, task), priority);
}

WRAPPED(bool, _ZN11QThreadPool11waitForDoneEi, QThreadPool *pool, int milliseconds)
{
    return acquiredIf(REAL(_ZN11QThreadPool11waitForDoneEi)(pool, milliseconds), pool);
}
