#pragma once

#include "config/Export.h"

#include <string>

namespace vip_sdk {
class IVipSdkCoreInterface;
}

/// The membership SDK as the account adapters use it. For threads see VipSdkInterfaceMgr.
class ONDPDFTOOLUTILS_EXPORT CPDFNewVipSdkWrap
{
public:
    /// The process's only instance, which holds nothing. Callable from any thread.
    static CPDFNewVipSdkWrap *GetInstance();

    ///@{

    /// Both start the SDK. Always true.
    static bool InitInstance();
    static bool _Init(); // NOLINT(bugprone-reserved-identifier): callers know it by this name
    ///@}

    ///@{

    /// Both stop the SDK. Always true.
    static bool UnInitInstance();
    static bool _Uninit(); // NOLINT(bugprone-reserved-identifier): callers know it by this name
    ///@}

    /// The account service; null while the SDK is not started. Not owned by the caller.
    static vip_sdk::IVipSdkCoreInterface *GetVipCore();

    /// Logs in through the account service, which blocks until it has answered and writes both outputs; on failure
    /// `errorCode` is a vip_sdk::LoginError. False, with the outputs left alone, while the SDK is not started.
    static bool Login(const std::wstring &user, const std::wstring &password, int &errorCode, bool &flag);
};
