#pragma once

#include "vipsdk/include/IUserInfoChangeListener.h"
#include "vipsdk/include/ProductInfoMgr.h"

#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace test {

/// The membership SDK that the tests link in place of a real one: what it answers is set here, what it is asked is
/// found here. One thread at a time, but for reports.
struct ScriptedSdk
{
    /// Starts and stops of the services, and preparations of the product information, in their order.
    std::string calls;
    std::function<void()> stopping = [] {}; ///< called when the account service is stopped

    bool loggedIn = false;
    bool succeeds = true; ///< what Logout(), StartFrontTask(), SetUserInfo() and LogoutForever() answer
    std::optional<std::wstring> userInfoJson;
    std::optional<std::wstring> certificate;
    int stringsGiven = 0; ///< less those released by FreeString()
    std::function<bool(const std::wstring &user, const std::wstring &password, int &errorCode, bool &flag)> login;
    std::vector<std::wstring> setUserInfo; ///< the arguments of the last call
    std::list<vip_sdk::IUserInfoChangeListener *> listeners;
    std::recursive_mutex listenerMutex; ///< held while one of them is called from another thread than the test's

    ProductInfoMgr::PublicInfo publicInfo;
    /// Called for each report, on the thread that makes it, with the record's event and what SetPublicInfo() was given.
    std::function<void(const std::wstring &event, const ProductInfoMgr::PublicInfo &info)> report;
};

ScriptedSdk &scriptedSdk();

} // namespace test
