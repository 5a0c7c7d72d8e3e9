#pragma once

#include "config/Export.h"

#include <string>

/// The addresses of the product's services, chosen by edition.
///
/// Static and without state; callable from any thread; the getters never fail. Hosts carry their scheme.
class ONDPDFTOOLUTILS_EXPORT MacGlobalUrl
{
public:
    /// The default service host. `usesTestServer`, which may be null, receives whether it is the test host.
    static std::string GetDefSvrHost(bool *usesTestServer);
    /// The account server host.
    static std::string GetVipSvrHost();
};
