#include "vipsdk/include/ProductInfoMgr.h"

#include "vipsdk/include/OndIniWrapper.h"
#include "vipsdk/local/DataDirectory.h"

#include <mutex>

namespace {

struct State
{
    std::mutex mutex;
    ProductInfoMgr::PublicInfo info;
};

State &state()
{
    // Never destroyed: telemetry threads that were not stopped ask until the process ends.
    static State &state = *new State;
    return state;
}

/// What the section "product" of "product.ini" in the SDK's folder says.
ProductInfoMgr::PublicInfo readInfo()
{
    const QString path = QString::fromStdString(local_sdk::dataDirectory() + "/product.ini");
    cf_ini::OndIniWrapper file;
    file.LoadFile(path.toStdWString().c_str(), 2, 0);
    const auto number = [&file](const wchar_t *key) { return file.ReadInt(L"product", key, 0); };
    const auto text = [&file](const wchar_t *key) { return QString::fromStdWString(file.Read(L"product", key, L"")); };
    return {number(L"tid1"), number(L"tid2"),  number(L"tod1"), number(L"tod2"),  number(L"iid"),
            number(L"pid"),  number(L"tryno"), text(L"uuid"),   text(L"version"), text(L"language")};
}

} // namespace

ProductInfoMgr *ProductInfoMgr::GetInstance()
{
    static ProductInfoMgr instance;
    return &instance;
}

void ProductInfoMgr::Initialize()
{
    PublicInfo info = readInfo();
    const std::lock_guard lock(state().mutex);
    state().info = std::move(info);
}

ProductInfoMgr::PublicInfo ProductInfoMgr::GetPublicInfo() const
{
    const std::lock_guard lock(state().mutex);
    return state().info;
}
