#include "config/ProductCfgParser.h"

#include "config/ProductInfoForCooperation.h"

ProductCfgParser::ProductCfgParser(CfgType type) : m_type(type) { }

int ProductCfgParser::Init(PDFEdition::EDITION, const QString &, const QString &)
{
    return 0;
}

void ProductCfgParser::ParseProductCfg(TiXmlElement *) { }

QString ProductCfgParser::GetStringValue(const QString &section, const QString &key, const QString &defaultValue) const
{
    if (section.isEmpty() || key.isEmpty())
        return defaultValue;
    const auto found = m_settings.find(section);
    return found == m_settings.end() ? defaultValue : found->value(key, defaultValue);
}

int ProductCfgParser::GetIntValue(const QString &section, const QString &key, int defaultValue) const
{
    const QString text = GetStringValue(section, key, QString());
    return text.isEmpty() ? defaultValue : text.toInt();
}

bool ProductCfgParser::GetBoolValue(const QString &section, const QString &key, bool defaultValue) const
{
    return GetIntValue(section, key, defaultValue ? 1 : 0) != 0;
}

std::string ProductCfgParser::GetTypeNode(CfgType type) const
{
    return type == Converter ? "converter" : "reader";
}

std::string ProductCfgParser::GetEditionNode(PDFEdition::EDITION edition, const QString &) const
{
    return edition == PDFEdition::Cooperation ? GetCooperationNode() : std::string();
}

std::string ProductCfgParser::GetCooperationNode() const
{
    const ProductInfoForCooperation info;
    return QStringLiteral("product_%1").arg(info.GetChanName(QString())).toStdString();
}

std::string ProductCfgParser::GetDefaultEditionNode(const QString &) const
{
    return {};
}
