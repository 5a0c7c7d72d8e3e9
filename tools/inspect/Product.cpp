#include "tools/inspect/Product.h"

#include "config/CPDFEdition.h"
#include "config/ConfigFileUtil.h"
#include "config/PdfReaderProductInfo.h"
#include "config/ProductCfgUtil.h"
#include "config/ProductInfoForCooperation.h"
#include "tools/inspect/Registry.h"

namespace inspect {

namespace {

Json jsonOf(const QString &text)
{
    return text.toStdString();
}

Json jsonOf(const std::wstring &text)
{
    return QString::fromStdWString(text).toStdString();
}

Json jsonOf(const QStringList &texts)
{
    Json list = Json::array();
    for (const QString &text : texts)
        list.push_back(text.toStdString());
    return list;
}

template <typename Value> Json jsonOf(Value value)
{
    return value;
}

/// A getter and its name.
template <typename Class> struct Row
{
    const char *name;
    Json (*answer)(const Class &object);
};

template <auto getter, typename Class> Json answerOf(const Class &object)
{
    return jsonOf((object.*getter)());
}

template <typename Class, std::size_t Size> Json answersOf(const Class &object, const Row<Class> (&rows)[Size])
{
    Json answers = Json::object();
    for (const Row<Class> &row : rows)
        answers[row.name] = row.answer(object);
    return answers;
}

// clang-format off
using C = ProductCfgUtil;
constexpr Row<C> kProduct[] = {
    {"getProductEdition", answerOf<&C::getProductEdition>},
    {"getProductName", answerOf<&C::getProductName>},
    {"getTopLeftTitle", answerOf<&C::getTopLeftTitle>},
    {"getWindowTitle", answerOf<&C::getWindowTitle>},
    {"getAssociateExe", answerOf<&C::getAssociateExe>},
    {"getAssociateDesc", answerOf<&C::getAssociateDesc>},
    {"getAssociateBackDesc", answerOf<&C::getAssociateBackDesc>},
    {"getAssociateAvoid", answerOf<&C::getAssociateAvoid>},
    {"getAssociateDlgPrefix", answerOf<&C::getAssociateDlgPrefix>},
    {"getOfficalUrl", answerOf<&C::getOfficalUrl>},
    {"getLicenceUrl", answerOf<&C::getLicenceUrl>},
    {"getPrivacy", answerOf<&C::getPrivacy>},
    {"getCopyRight", answerOf<&C::getCopyRight>},
    {"getServiceAppId", answerOf<&C::getServiceAppId>},
    {"isTolvaProduct", answerOf<&C::isTolvaProduct>},
    {"getHelpEnable", answerOf<&C::getHelpEnable>},
    {"getVipId", answerOf<&C::getVipId>},
    {"getServiceName", answerOf<&C::getServiceName>},
    {"getProductHost", answerOf<&C::getProductHost>},
    {"getProductGUID", answerOf<&C::getProductGUID>},
    {"getInstallRegName", answerOf<&C::getInstallRegName>},
    {"getUninstallRegName", answerOf<&C::getUninstallRegName>},
    {"getReaderExeName", answerOf<&C::getReaderExeName>},
    {"getCacheDirName", answerOf<&C::getCacheDirName>},
    {"getInternationReportId", answerOf<&C::getInternationReportId>},
    {"getInternationReportPrefix", answerOf<&C::getInternationReportPrefix>},
};

using P = PdfReaderProductInfo;
constexpr Row<P> kIdentity[] = {
    {"GetProductEdition", answerOf<&P::GetProductEdition>},
    {"IsInternationEdition", answerOf<&P::IsInternationEdition>},
    {"GetTid1", answerOf<&P::GetTid1>},
    {"GetTid2", answerOf<&P::GetTid2>},
    {"GetTod1", answerOf<&P::GetTod1>},
    {"GetTod2", answerOf<&P::GetTod2>},
    {"GetIid", answerOf<&P::GetIid>},
    {"GetPid", answerOf<&P::GetPid>},
    {"GetTryNo", answerOf<&P::GetTryNo>},
    {"GetInstallTime", answerOf<&P::GetInstallTime>},
    {"GetInstallDays", answerOf<&P::GetInstallDays>},
    {"GetUUID", answerOf<&P::GetUUID>},
    {"GetSvrid", answerOf<&P::GetSvrid>},
    {"GetFileVersion", answerOf<&P::GetFileVersion>},
    {"GetTotalFileVersion", answerOf<&P::GetTotalFileVersion>},
    {"GetParentAppDir", answerOf<&P::GetParentAppDir>},
    {"IsHasHarbo", answerOf<&P::IsHasHarbo>},
    {"IsHasLumo", answerOf<&P::IsHasLumo>},
    {"IsHasLumopdf", answerOf<&P::IsHasLumopdf>},
    {"IsHasXunjie", answerOf<&P::IsHasXunjie>},
    {"IsHasFoxit", answerOf<&P::IsHasFoxit>},
    {"IsHasXundu", answerOf<&P::IsHasXundu>},
    {"IsHasCloudPdf", answerOf<&P::IsHasCloudPdf>},
};

using E = CPDFEdition;
constexpr Row<E> kEdition[] = {
    {"GetPDFDir", answerOf<&E::GetPDFDir>},
    {"GetEditionNamePrefix", answerOf<&E::GetEditionNamePrefix>},
    {"GetPdfConstCfgPath", answerOf<&E::GetPdfConstCfgPath>},
};
// clang-format on

} // namespace

Json product()
{
    return answersOf(*SingleTon<ProductCfgUtil>::GetInstance(), kProduct);
}

Json identity()
{
    CPDFEdition *edition = CPDFEdition::GetInstance();
    edition->Initialize(PDFEdition::Independent);
    Json answers = answersOf(*edition, kEdition);
    Json notAsked = Json::array();
    if (hasRegistry()) {
        answers.update(answersOf(*PdfReaderProductInfo::GetInstance(), kIdentity));
    } else {
        for (const auto &row : kIdentity)
            notAsked.push_back(row.name);
    }
    answers["notAsked"] = notAsked;
    answers["GetProductVersion"] = jsonOf(ConfigFileUtil::GetProductVersion());
    answers["GetChanName"] = jsonOf(ProductInfoForCooperation().GetChanName(QString()));
    return answers;
}

} // namespace inspect
