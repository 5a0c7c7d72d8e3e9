#pragma once

#include "config/Export.h"
#include "config/PDFEdition.h"
#include "config/ProductCfgParser.h"
#include "config/SingleTon.h"

#include <QString>
#include <QStringList>
#include <memory>

/// Branding and installation settings of the product: names and titles, file-association texts, web addresses, ids and
/// switches. Reached through SingleTon<ProductCfgUtil>::GetInstance().
///
/// The values are those of the component configuration ("cfgdata/componentConfig.ini" in the bundle's resources), an
/// INI file as QSettings reads it, in UTF-8; quotes are needed only around texts with a semicolon or a backslash. Every
/// key has a default. It is the answer when the key is absent or QSettings would have to unpack its value
/// ("@Variant(...)"), and for every key when the file is missing, unreadable or larger than 16 MiB. Where an integer is
/// asked for, a text that is not one reads as 0. The file is read when the instance is made and never written. The
/// getters may be called from any thread.
class ONDPDFTOOLUTILS_EXPORT ProductCfgUtil
{
public:
    ///@{

    /// The value of a key, as one text even if it has commas; `defaultValue` when it is absent.
    QString getStringValue(const QString &section, const QString &key, const QString &defaultValue) const;
    int getIntValue(const QString &section, const QString &key, int defaultValue) const;
    ///@}

    /// Number of the product edition (PDFEdition::EDITION, or another): "Common/Edition" of the updater's server file
    /// ("ressrc/chs/upnest.svr"), else "product/product_edition", else 3.
    int getProductEdition() const;

    /// @name What the user reads
    ///@{

    /// "product/product_name", "title/top_left_title" and "title/window_title".
    QString getProductName() const;
    QString getTopLeftTitle() const;
    QString getWindowTitle() const;
    ///@}

    /// @name File associations
    ///@{

    /// File name of the program that opens associated files.
    QString getAssociateExe() const;
    /// What the system says of associated files.
    QString getAssociateDesc() const;
    /// What it says while another program has them.
    QString getAssociateBackDesc() const;
    /// Programs whose associations are left alone: the parts of the text between "|", without empty ones.
    QStringList getAssociateAvoid() const;
    /// The name that the dialog about associations begins with.
    QString getAssociateDlgPrefix() const;
    ///@}

    /// @name About the product
    ///@{

    /// Addresses and the copyright line, of the section "about".
    QString getOfficalUrl() const;
    QString getLicenceUrl() const;
    QString getPrivacy() const;
    QString getCopyRight() const;
    ///@}

    /// Application id for the text recognition service; the tolva account (CPDFVipSdkAdapter::getCurrentVipSdkId()) has
    /// an id of its own.
    int getServiceAppId() const;
    /// Whether "product/is_tv_product" is not 0; false by default.
    bool isTolvaProduct() const;
    /// Whether "product/is_help_enable" is not 0; true by default.
    bool getHelpEnable() const;
    /// Product id for the membership service.
    int getVipId() const;

    /// Name of the product's background service.
    QString getServiceName() const;
    /// The default service host: "product/host" if it is configured, otherwise MacGlobalUrl::GetDefSvrHost(). If the
    /// latter is the test host, it always wins.
    QString getProductHost() const;
    /// The product's GUID in braces, upper case.
    QString getProductGUID() const;
    /// What getProductGUID() answers when none is configured. The independent edition has a GUID of its own, unless it
    /// is a tolva product.
    QString getDefProductGUID() const;
    /// The name that the installation is registered under.
    QString getInstallRegName() const;
    /// getInstallRegName() unless configured.
    QString getUninstallRegName() const;

    /// File name of the reader's executable.
    QString getReaderExeName() const;
    /// Name of the folder for what can be made again.
    QString getCacheDirName() const;

    ///@{

    /// Id and prefix of the international edition's telemetry.
    QString getInternationReportId() const;
    QString getInternationReportPrefix() const;
    ///@}

    /// In debug builds, stops the program when it sees two editions in one process. Nothing in release builds.
    void checkAssertEdition(PDFEdition::EDITION edition) const;

private:
    friend class SingleTon<ProductCfgUtil>;

    struct Component;

    ProductCfgUtil();
    ~ProductCfgUtil();

    void initEdition();
    void initSpecialEditionCfg();

    std::unique_ptr<Component> m_component;
    ProductCfgParser m_parser;
    int m_edition = PDFEdition::Independent;
};

extern template class ONDPDFTOOLUTILS_EXPORT SingleTon<ProductCfgUtil>;
