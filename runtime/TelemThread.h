#pragma once

#include "config/Export.h"

#include <QMutex>
#include <QThread>
#include <QWaitCondition>
#include <vector>

namespace vip_sdk {
class IVipTelemData;
}

/// A queue of telemetry records and the thread that reports them.
///
/// Producers never wait for a report. The thread takes the records in batches, in the order in which they were added,
/// gives each the product's public information and has the membership SDK report it. The owner starts it with
/// QThread::start(); once stopped it cannot be started again.
class ONDPDFTOOLUTILS_EXPORT TelemThread : public QThread
{
public:
    TelemThread();
    /// Stops the thread as stopThread() does. Records that are still pending are deleted without being reported.
    ~TelemThread() override;

    /// Appends a record and takes ownership of it; null and records other than VipTelemData are passed over: neither
    /// reported nor ever deleted. Callable from any thread.
    void add(vip_sdk::IVipTelemData *record);

    /// Whether no record is pending. Callable from any thread.
    [[nodiscard]] bool isListEmpty();

    /// Has the thread end after the batch that it has taken, and waits for that as long as it takes; at once when it
    /// was never started. Callable from any thread but this one.
    void stopThread();

protected:
    /// Reports records until stopThread().
    void run() override;

private:
    [[nodiscard]] bool isStopped();
    [[nodiscard]] std::vector<vip_sdk::IVipTelemData *> waitForBatch();
    static void processData(vip_sdk::IVipTelemData *record);

    QMutex m_mutex; // guards the list and the flag
    std::vector<vip_sdk::IVipTelemData *> m_list;
    QWaitCondition m_condition;
    bool m_stop = false;
};
