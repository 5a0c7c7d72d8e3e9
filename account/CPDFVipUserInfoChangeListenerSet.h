#pragma once

#include "account/IPDFVipSdkAdapter.h"

#include <QMutex>
#include <set>

/// Who is told of changes to the user. Callable from any thread, but not from inside a notice: notices are given while
/// the set's mutex is held, so that no callback is called any more once Remove() has returned.
class ONDPDFTOOLUTILS_EXPORT CPDFVipUserInfoChangeListenerSet
{
public:
    /// Who is told. Not owned.
    using CallBack = IPDFVipSdkAdapter::IUserInfoChangeCallBack;
    /// What they are told: one of the two functions of CallBack.
    using Notice = void (CallBack::*)(const IPDFVipSdkAdapter::LocalUserInfo &);

    CPDFVipUserInfoChangeListenerSet();
    ~CPDFVipUserInfoChangeListenerSet();
    CPDFVipUserInfoChangeListenerSet(const CPDFVipUserInfoChangeListenerSet &) = delete;
    CPDFVipUserInfoChangeListenerSet &operator=(const CPDFVipUserInfoChangeListenerSet &) = delete;

    /// Adds a callback that is not in the set; null is ignored.
    void Add(CallBack *callback);
    /// Removes a callback; null is ignored.
    void Remove(CallBack *callback);
    /// Gives every callback that notice, in ascending order of address.
    void Notify(Notice notice, const IPDFVipSdkAdapter::LocalUserInfo &info);

private:
    QMutex m_mutex;
    std::set<CallBack *, std::less<>> m_callbacks;
};
