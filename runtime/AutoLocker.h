#pragma once

#include <QMutex>

/// Holds a mutex for the lifetime of a scope.
class AutoLocker
{
public:
    /// Waits for the mutex, which must live as long as this.
    explicit AutoLocker(QMutex &mutex) : m_mutex(mutex) { m_mutex.lock(); }
    ~AutoLocker() { m_mutex.unlock(); }

    AutoLocker(const AutoLocker &) = delete;
    AutoLocker &operator=(const AutoLocker &) = delete;

private:
    QMutex &m_mutex;
};
