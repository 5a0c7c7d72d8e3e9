#pragma once

#include "config/Export.h"
#include "config/PDFEdition.h"

#include <QMap>
#include <QString>
#include <string>

class TiXmlElement;

/// A table of product settings in sections, whose entries go before those of the component configuration.
///
/// On this platform nothing fills the table, so that every getter answers its default. May be read from any thread.
class ONDPDFTOOLUTILS_EXPORT ProductCfgParser
{
public:
    /// Which program the settings are for. Any other number counts as the reader.
    enum CfgType : int { Reader = 1, Converter = 2 };

    /// An empty table.
    explicit ProductCfgParser(CfgType type);

    /// Would load the settings of an edition from `dataFile` and from the registry path `registryPath`. Loads nothing
    /// and returns 0, which is success.
    int Init(PDFEdition::EDITION edition, const QString &dataFile, const QString &registryPath);
    /// Does nothing.
    void ParseProductCfg(TiXmlElement *element);

    /// The text of a key; `defaultValue` when it is absent, or when section or key is empty. Names are matched exactly.
    QString GetStringValue(const QString &section, const QString &key, const QString &defaultValue) const;
    /// The text as a decimal integer, 0 when it is none; `defaultValue` when it is absent or empty.
    int GetIntValue(const QString &section, const QString &key, int defaultValue) const;
    /// Whether that integer is not 0; `defaultValue` when the text is absent or empty.
    bool GetBoolValue(const QString &section, const QString &key, bool defaultValue) const;

    /// Name of the node that a loader would select for a program: "converter" or "reader".
    std::string GetTypeNode(CfgType type) const;
    /// The same for an edition: GetCooperationNode() for the cooperation edition, otherwise empty.
    std::string GetEditionNode(PDFEdition::EDITION edition, const QString &name) const;
    /// "product_" + the channel name of ProductInfoForCooperation, UTF-8. Reads the updater's server file.
    std::string GetCooperationNode() const;
    /// Empty.
    std::string GetDefaultEditionNode(const QString &name) const;

protected:
    /// By section and key.
    QMap<QString, QMap<QString, QString>> m_settings;

private:
    [[maybe_unused]] CfgType m_type; // kept for the interface, nothing reads it
};
