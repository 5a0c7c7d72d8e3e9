#include "runtime/TelemThread.h"

#include "runtime/AutoLocker.h"

#include "vipsdk/include/ProductInfoMgr.h"
#include "vipsdk/include/VipTelemData.h"
#include <memory>

using vip_sdk::IVipTelemData;

TelemThread::TelemThread() = default;

TelemThread::~TelemThread()
{
    stopThread();
    for (IVipTelemData *record : m_list)
        delete dynamic_cast<VipTelemData *>(record);
}

void TelemThread::add(IVipTelemData *record)
{
    {
        const AutoLocker locker(m_mutex);
        m_list.push_back(record);
    }
    m_condition.wakeOne();
}

bool TelemThread::isListEmpty()
{
    const AutoLocker locker(m_mutex);
    return m_list.empty();
}

void TelemThread::stopThread()
{
    {
        const AutoLocker locker(m_mutex);
        m_stop = true;
    }
    m_condition.wakeOne();
    wait(); // not at all for one that has finished, or was never started
}

void TelemThread::run()
{
    while (!isStopped())
        for (IVipTelemData *record : waitForBatch())
            processData(record);
}

bool TelemThread::isStopped()
{
    const AutoLocker locker(m_mutex);
    return m_stop;
}

std::vector<IVipTelemData *> TelemThread::waitForBatch()
{
    std::vector<IVipTelemData *> batch;
    const AutoLocker locker(m_mutex);
    if (m_list.empty() && !m_stop) // who stops wakes once, perhaps before this thread sleeps
        m_condition.wait(&m_mutex);
    batch.swap(m_list);
    return batch;
}

void TelemThread::processData(IVipTelemData *record)
{
    auto *data = dynamic_cast<VipTelemData *>(record);
    if (!data)
        return;
    const std::unique_ptr<VipTelemData> owned(data);
    const ProductInfoMgr::PublicInfo info = ProductInfoMgr::GetInstance()->GetPublicInfo();
    data->SetPublicInfo(info.tid1, info.tid2, info.tod1, info.tod2, info.iid, info.pid, info.tryNo,
                        info.uuid.toStdWString(), info.version.toStdWString(), info.language.toStdWString());
    data->Report();
}
