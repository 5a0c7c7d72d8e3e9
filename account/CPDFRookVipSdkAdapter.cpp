#include "account/CPDFRookVipSdkAdapter.h"

#include "config/CPDFEdition.h"
#include "runtime/MacGlobalUrl.h"
#include "vipsdk/include/IVipSdkCoreInterface.h"

#include <endpoints.h>
#include <identity.h>

namespace {

using namespace product::endpoints;

/// What a page shows depends on the channel that the installation came through.
struct WebPage
{
    int page;
    bool hasFid; // whether the helper is told the feature
    masked::View path;
    masked::View channelPath; // for try numbers 3070 and 5
};

constexpr WebPage kWebPages[] = {
    {3, false, kVipPage3Path, kVipPage3ChannelPath},   {4, false, kVipPage4Path, kVipPage4ChannelPath},
    {5, false, kVipPage5Path, kVipPage5ChannelPath},   {10, true, kVipPage10Path, kVipPage10ChannelPath},
    {11, true, kVipPage11Path, kVipPage11ChannelPath},
};
constexpr WebPage kPage10OfFid233 = {10, true, kVipPage10Fid233Path, kVipPage10Fid233ChannelPath};

constexpr int kFidWithPageOfItsOwn = 233;
constexpr int kCustomLoginFrom = 6031;

const WebPage *webPage(int page, int fid)
{
    if (page == kPage10OfFid233.page && fid == kFidWithPageOfItsOwn)
        return &kPage10OfFid233;
    for (const WebPage &row : kWebPages) {
        if (row.page == page)
            return &row;
    }
    return nullptr;
}

QString address(const WebPage &page, int tryNo)
{
    const bool isChannel = tryNo == 3070 || tryNo == 5;
    const std::string path = (isChannel ? page.channelPath : page.path).str();
    return QString::fromStdString(MacGlobalUrl::GetVipSvrHost()) + QString::fromStdString(path).arg(tryNo);
}

} // namespace

CPDFRookVipSdkAdapter::CPDFRookVipSdkAdapter(vip_sdk::PRODUCT_ID productId) : CPDFNewVipSdkAdapter(productId)
{
    // Without the blank at its end that the others have: the account helper gets no empty argument for this page.
    setPageCommand(VIP_GUI_PAGE_MAIN, QStringLiteral("--open_web=main --pid=%1"));
}

CPDFRookVipSdkAdapter::~CPDFRookVipSdkAdapter()
{
    endNotices();
}

bool CPDFRookVipSdkAdapter::OpenVipGUIPage(VIP_GUI_PAGE page, int from, int fid, bool logoutForever,
                                           VIP_PRIVILEGE /*privilege*/)
{
    const QString commandLine = GetOpenVipCommandLine(page, from, fid, logoutForever);
    return !commandLine.isEmpty() && runHelper(commandLine);
}

// clang-format off
bool CPDFRookVipSdkAdapter::IsLocalUserInfoHasKeyByCache(const std::wstring & /*key*/) { return false; }
bool CPDFRookVipSdkAdapter::RefreshLocalUserInfoCache() { return true; }
bool CPDFRookVipSdkAdapter::StartFrontTask() { return core() && core()->StartFrontTask(); }
// clang-format on

QString CPDFRookVipSdkAdapter::GetOpenVipCommandLine(VIP_GUI_PAGE page, int from, int fid, bool logoutForever)
{
    const auto command = pageCommands().find(page);
    if (command == pageCommands().end())
        return {};
    const int tryNo = CPDFEdition::GetInstance()->GetTryNo();
    if (const WebPage *web = webPage(page, fid)) {
        QString line = QStringLiteral("--open_web=main --pid=%1 --vipfrom=%2 -url=")
                           .arg(static_cast<unsigned>(productId()))
                           .arg(from);
        line += address(*web, tryNo);
        return web->hasFid ? line + QStringLiteral(" --fid=%1").arg(fid) : line;
    }
    QString line = command->second;
    if (!line.endsWith(QLatin1Char(' ')))
        line += QLatin1Char(' ');
    line += QStringLiteral("--vipfrom=%1 --subpid=1 --fid=%2").arg(from).arg(fid);
    return logoutForever ? line + QLatin1String(" --logoutforever=1") : line;
}

bool CPDFRookVipSdkAdapter::IsNeedCustomLoginPage(VIP_GUI_PAGE page, int from, int /*fid*/)
{
    return page == VIP_GUI_PAGE_LOGIN && from == kCustomLoginFrom;
}
