#include "tools/inspect/Report.h"

#include "tools/inspect/Terminal.h"

#include <algorithm>
#include <sstream>

namespace inspect {

namespace {

constexpr char kBold[] = "\033[1m";
constexpr char kDim[] = "\033[2m";
constexpr char kRed[] = "\033[31m";
constexpr char kGreen[] = "\033[32m";
constexpr char kYellow[] = "\033[33m";
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

constexpr std::size_t kColumns = 80;

std::size_t widestKey(const Json &answers)
{
    std::size_t width = 0;
    for (const auto &answer : answers.items())
        width = std::max(width, widthOf(escaped(answer.key())));
    return std::min(width, kColumns); // one long name moves no other's value
}

/// The sign of a state; in ASCII where the locale, or the terminal, may not have the others.
const char *signOf(const std::string &state)
{
    static const bool isUtf8 = showsUtf8();
    if (state == "ok")
        return isUtf8 ? "✓" : "[ok]";
    if (state == "note")
        return isUtf8 ? "!" : "[!!]";
    return isUtf8 ? "✗" : "[no]";
}

/// Text in lines of at most 80 columns, broken at blanks, behind a margin.
void printWrapped(std::ostream &out, const std::string &text)
{
    const std::string margin = "      ";
    std::istringstream words(escaped(text));
    std::size_t column = 0;
    for (std::string word; words >> word;) {
        const std::size_t width = widthOf(word);
        if (column == 0 || column + 1 + width > kColumns) {
            out << (column == 0 ? "" : "\n") << margin << word;
            column = margin.size() + width;
        } else {
            out << ' ' << word;
            column += 1 + width;
        }
    }
    out << '\n';
}

void printChecks(std::ostream &out, const Json &rows, bool coloured)
{
    const auto styled = [coloured](const char *style) { return coloured ? style : ""; };
    int problems = 0;
    std::string before;
    for (const Json &row : rows) {
        const std::string state = row.at("state");
        const char *colour = state == "ok" ? kGreen : state == "note" ? kYellow : kRed;
        problems += state == "problem" ? 1 : 0;
        out << "  " << styled(colour) << signOf(state) << styled(kPlain) << ' '
            << row.at("name").get_ref<const std::string &>() << '\n';
        if (state == "ok")
            continue;
        const int line = row.at("line");
        printWrapped(out, row.at("text"));
        out << styled(kDim) << "      " << escaped(row.at("path")) << (line > 0 ? ":" + std::to_string(line) : "")
            << styled(kPlain) << '\n';
        printWrapped(out, row.at("effect"));
        printWrapped(out, "To mend it: " + row.at("remedy").get<std::string>());
    }
    out << (problems == 0 ? "\nNothing is wrong.\n" : "\nProblems: " + std::to_string(problems) + ".\n");
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
        if (part.value().contains("checks")) {
            printChecks(out, part.value().at("checks"), coloured);
            continue;
        }
        for (const auto &answer : part.value().items()) {
            const std::string name = escaped(answer.key());
            const std::string gap(std::max(width, widthOf(name)) - widthOf(name) + 2, ' ');
            Json values = answer.value().is_array() ? answer.value() : Json::array({answer.value()});
            if (values.empty())
                values.push_back("none");
            for (const Json &value : values)
                out << "  " << styled(kDim) << name << styled(kPlain) << gap << textOf(value) << '\n';
        }
    }
}

} // namespace inspect
