#pragma once

#include "account/CPDFNewVipSdkAdapter.h"

/// The account adapter in use: its account pages have richer command lines, some with a web address.
class ONDPDFTOOLUTILS_EXPORT CPDFRookVipSdkAdapter : public CPDFNewVipSdkAdapter
{
public:
    /// As CPDFNewVipSdkAdapter.
    explicit CPDFRookVipSdkAdapter(vip_sdk::PRODUCT_ID productId);
    ~CPDFRookVipSdkAdapter() override;

    /// Starts the account helper with the page's command line. False when the page has none or the helper does not
    /// start.
    bool OpenVipGUIPage(VIP_GUI_PAGE page, int from, int fid, bool logoutForever, VIP_PRIVILEGE privilege) override;
    /// Always false.
    bool IsLocalUserInfoHasKeyByCache(const std::wstring &key) override;
    /// Always true.
    bool RefreshLocalUserInfoCache() override;
    bool StartFrontTask() override;

    /// The account helper's command line for a page, which asks for the installation's try number; empty for other
    /// pages than 1 to 5, 10 and 11. `logoutForever` counts for pages 1 and 2 only.
    QString GetOpenVipCommandLine(VIP_GUI_PAGE page, int from, int fid, bool logoutForever);
    /// Whether the entry point wants the host's own login page.
    bool IsNeedCustomLoginPage(VIP_GUI_PAGE page, int from, int fid);
};
