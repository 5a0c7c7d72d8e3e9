#include "account/CPDFVipUserInfoChangeListenerSet.h"

#include "runtime/AutoLocker.h"

CPDFVipUserInfoChangeListenerSet::CPDFVipUserInfoChangeListenerSet() = default;

CPDFVipUserInfoChangeListenerSet::~CPDFVipUserInfoChangeListenerSet()
{
    const AutoLocker locker(m_mutex);
    m_callbacks.clear();
}

void CPDFVipUserInfoChangeListenerSet::Add(CallBack *callback)
{
    if (!callback)
        return;
    const AutoLocker locker(m_mutex);
    m_callbacks.insert(callback);
}

void CPDFVipUserInfoChangeListenerSet::Remove(CallBack *callback)
{
    if (!callback)
        return;
    const AutoLocker locker(m_mutex);
    m_callbacks.erase(callback);
}

void CPDFVipUserInfoChangeListenerSet::Notify(Notice notice, const IPDFVipSdkAdapter::LocalUserInfo &info)
{
    const AutoLocker locker(m_mutex);
    for (CallBack *callback : m_callbacks)
        (callback->*notice)(info);
}
