#pragma once

#include "config/Export.h"

#include <QString>
#include <memory>

namespace cf_ini {
class OndIniWrapper;
}

/// The distribution numbers of a build that a partner ships, from the section "Common" of the updater's server file
/// ("ressrc/chs/upnest.svr" in the bundle's resources).
///
/// The file is read once, by the constructor, and never written. A key that is absent, like all of them when the file
/// is missing or unreadable, answers the default; an integer key whose text is no decimal integer answers 0. Texts come
/// back as they stand in the file. An object may be read from several threads.
class ONDPDFTOOLUTILS_EXPORT ProductInfoForCooperation
{
public:
    ProductInfoForCooperation();
    ~ProductInfoForCooperation();
    ProductInfoForCooperation(const ProductInfoForCooperation &) = delete;
    ProductInfoForCooperation &operator=(const ProductInfoForCooperation &) = delete;

    /// "product_id".
    int GetPid(int defaultValue) const;
    ///@{

    /// The key of that name, in lower case but "TryNo".
    int GetTid1(int defaultValue) const;
    int GetTid2(int defaultValue) const;
    int GetTod1(int defaultValue) const;
    int GetTod2(int defaultValue) const;
    int GetTryNo(int defaultValue) const;
    ///@}
    /// "switch_generate_uuid".
    int IsGenerateUUIdSwitchEnable(int defaultValue) const;
    /// "chan_name": the partner's channel.
    QString GetChanName(const QString &defaultValue) const;

    /// "uuid_reg": the registry key that holds the installation id on platforms with a registry; a fixed class id when
    /// absent.
    QString GetUUIDReg() const;
    /// "uuid_reg_key": the value's name there; "uuid" when absent.
    QString GetUUIDKey() const;
    /// Empty, since no registry is read here, unless the file has an empty "uuid_reg"; then `defaultValue`.
    QString GetUUID(const QString &defaultValue) const;
    /// As GetUUID().
    QString GetSvrid(const QString &defaultValue) const;
    /// 0: there is no root key here.
    int GetUUIDRootKety() const;

    /// False: ids are not generated on demand here, whatever "switch_generate_uuid" says.
    bool GenerateUUID(void *rootKey, const QString &name) const;

    /// A new installation id, 32 lower-case hexadecimal digits: the MD5 of a text of random, time and machine data.
    /// Seeds std::rand(). Asks for the free space of the volume that holds the application.
    static QString AssmbleUUID();

private:
    int number(const wchar_t *key, int defaultValue) const;
    QString text(const wchar_t *key, const QString &defaultValue) const;

    std::unique_ptr<cf_ini::OndIniWrapper> m_file;
};
