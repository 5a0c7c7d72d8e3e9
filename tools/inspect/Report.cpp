#include "tools/inspect/Report.h"

#include "tools/inspect/Terminal.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr char kBold[] = "\033[1m";
constexpr char kDim[] = "\033[2m";
constexpr char kPlain[] = "\033[0m";

std::string dumped(const Json &value, int indent)
{
    return escapedJson(value.dump(indent, ' ', false, Json::error_handler_t::replace));
}

std::string textOf(const Json &value)
{
    if (value.is_string())
        return escaped(value.get_ref<const std::string &>());
    if (!value.is_object())
        return dumped(value, -1);
    std::string text;
    for (const auto &member : value.items())
        text += (text.empty() ? "" : ", ") + escaped(member.key()) + ' ' + textOf(member.value());
    return text;
}

std::size_t widestKey(const Json &answers)
{
    std::size_t width = 0;
    for (const auto &answer : answers.items())
        width = std::max(width, widthOf(escaped(answer.key())));
    return width;
}

} // namespace

void Report::printJson(std::ostream &out, bool onOneLine) const
{
    out << dumped(m_parts, onOneLine ? -1 : 2) << '\n';
}

void Report::printText(std::ostream &out, bool coloured) const
{
    const auto styled = [coloured](const char *style) { return coloured ? style : ""; };
    bool first = true;
    for (const auto &part : m_parts.items()) {
        out << (first ? "" : "\n") << styled(kBold) << part.key() << styled(kPlain) << '\n';
        first = false;
        const std::size_t width = widestKey(part.value());
        if (part.value().empty())
            out << "  none\n";
        for (const auto &answer : part.value().items()) {
            const std::string name = escaped(answer.key());
            const std::string gap(width - widthOf(name) + 2, ' ');
            Json values = answer.value().is_array() ? answer.value() : Json::array({answer.value()});
            if (values.empty())
                values.push_back("none");
            for (const Json &value : values)
                out << "  " << styled(kDim) << name << styled(kPlain) << gap << textOf(value) << '\n';
        }
    }
}

} // namespace inspect
