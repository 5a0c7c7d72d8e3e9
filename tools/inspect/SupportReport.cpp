#include "tools/inspect/SupportReport.h"

#include "config/MacConfigPath.h"
#include "tools/inspect/Mask.h"
#include "tools/inspect/Sections.h"

#include <CLI/CLI.hpp>
#include <QDateTime>
#include <QSysInfo>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

namespace fs = std::filesystem;

namespace inspect {

namespace {

constexpr std::size_t kLogLines = 200;
constexpr std::streamoff kLogBytes = 262'144;

/// The last lines of the diagnostic log, as far as they lie in its last bytes.
Json endOfLog()
{
    const std::string path = MacConfigPath::GetInstance()->GetLogPath();
    std::error_code error;
    std::ifstream file;
    if (fs::is_regular_file(path, error)) // a pipe would be waited for
        file.open(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file ? std::streamoff(file.tellg()) : 0;
    file.seekg(std::max<std::streamoff>(0, size - kLogBytes));
    std::vector<std::string> lines;
    std::string line;
    if (size > kLogBytes)
        std::getline(file, line); // the rest of one
    while (std::getline(file, line))
        lines.push_back(line);
    if (lines.size() > kLogLines)
        lines.erase(lines.begin(), lines.end() - kLogLines);
    return lines;
}

Json all()
{
    Json answers = {
        {"schema", 1},
        {"time", QDateTime::currentDateTime().toString(Qt::ISODate).toStdString()},
        {"versions",
         {{"library", OND_VERSION},
          {"Qt", qVersion()},
          {"system", QSysInfo::prettyProductName().toStdString()},
          {"kernel", (QSysInfo::kernelType() + ' ' + QSysInfo::kernelVersion()).toStdString()},
          {"processor", QSysInfo::currentCpuArchitecture().toStdString()}}},
    };
    for (const Section &section : sections())
        answers["sections"][section.name] = section.answers();
    answers["log"] = endOfLog();
    Mask mask;
    Json result = mask.masked(answers);
    result["masked"] = mask.counts();
    return result;
}

std::string html(const std::string &text)
{
    return QString::fromStdString(escaped(text)).toHtmlEscaped().toStdString();
}

std::string html(const Json &value)
{
    if (value.is_string())
        return html(value.get_ref<const std::string &>());
    if (!value.is_array() && !value.is_object())
        return html(value.dump(-1, ' ', false, Json::error_handler_t::replace));
    std::string list;
    for (const auto &member : value.items())
        list +=
            "<li>" + (value.is_object() ? "<b>" + html(member.key()) + "</b> " : "") + html(member.value()) + "</li>";
    return list.empty() ? "none" : "<ul>" + list + "</ul>";
}

std::string table(const Json &answers)
{
    std::string rows;
    for (const auto &answer : answers.items())
        rows += "<tr><th>" + html(answer.key()) + "</th><td>" + html(answer.value()) + "</td></tr>\n";
    return "<table>\n" + rows + "</table>\n";
}

constexpr char kHead[] = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>PDF Orvell: report for support</title>
<style>
:root { color-scheme: light dark; --line: #d5d9de; --soft: #f4f6f8; --good: #1a7f37; --note: #8a5a00; --bad: #c0202b; }
@media (prefers-color-scheme: dark) {
  :root { --line: #3c434b; --soft: #1e2329; --good: #57c771; --note: #e0b04c; --bad: #ff8080; }
}
body { font: 15px/1.5 system-ui, sans-serif; max-width: 62rem; margin: 2rem auto; padding: 0 1rem; }
h1 { font-size: 1.5rem; } h2 { font-size: 1.15rem; margin: 2rem 0 .5rem; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: top; padding: .3rem .6rem; border-bottom: 1px solid var(--line);
  overflow-wrap: anywhere; }
th { font-weight: 500; width: 18rem; } td, pre { font-family: ui-monospace, monospace; font-size: .85rem; }
ul { margin: 0; padding-left: 1.1rem; }
pre { background: var(--soft); padding: .8rem; overflow-x: auto; border-radius: 6px; }
.checks { list-style: none; padding: 0; } .checks li { margin: .4rem 0; padding: .5rem .8rem; background: var(--soft);
  border-left: 4px solid var(--good); border-radius: 4px; overflow-wrap: anywhere; }
.checks .note { border-color: var(--note); } .checks .problem { border-color: var(--bad); }
.checks b { margin-right: .4rem; } .good b { color: var(--good); } .note b { color: var(--note); }
.problem b { color: var(--bad); } .masked { background: var(--soft); padding: .8rem; border-radius: 6px; }
</style>
</head>
<body>
)";

std::string checks(const Json &doctor)
{
    std::string items;
    for (const Json &check : doctor.at("checks")) {
        const std::string state = check.at("state");
        const char *sign = state == "ok" ? "✓" : state == "note" ? "!" : "✗";
        items += "<li class=\"" + (state == "ok" ? "good" : state) + "\"><b>" + sign + "</b>" + html(check.at("name"));
        if (state != "ok") {
            const int line = check.at("line");
            items += "<br>" + html(check.at("text")) + "<br><code>" + html(check.at("path"))
                + (line > 0 ? ":" + std::to_string(line) : "") + "</code><br>" + html(check.at("effect"))
                + "<br>To mend it: " + html(check.at("remedy"));
        }
        items += "</li>\n";
    }
    return "<ul class=\"checks\">\n" + items + "</ul>\n";
}

std::string page(const Json &report)
{
    std::string body = kHead;
    body += "<h1>PDF Orvell: report for support</h1>\n<p>Made on " + html(report.at("time")) + ".</p>\n";
    body += "<div class=\"masked\"><b>Taken out before this was written:</b> ";
    std::string kinds;
    for (const auto &kind : report.at("masked").items())
        kinds += (kinds.empty() ? "" : ", ") + html(kind.key()) + " (" + html(kind.value()) + ")";
    body += (kinds.empty() ? "nothing" : kinds) + ". Look through the rest before you send it.</div>\n";
    body += "<h2>versions</h2>\n" + table(report.at("versions"));
    body += "<h2>doctor</h2>\n" + checks(report.at("sections").at("doctor"));
    for (const auto &section : report.at("sections").items())
        if (section.key() != "doctor")
            body += "<h2>" + html(section.key()) + "</h2>\n" + table(section.value());
    std::string log;
    for (const Json &line : report.at("log"))
        log += html(line) + '\n';
    body += "<h2>end of the diagnostic log</h2>\n<pre>" + (log.empty() ? "empty, or off" : log) + "</pre>\n";
    return body + "</body>\n</html>\n";
}

} // namespace

Run report(CLI::App &command)
{
    auto path = std::make_shared<std::string>();
    command.add_option("FILE", *path, "Where to write it; standard output when there is none")->option_text(" ");
    return [&command, path](const Print &print) {
        const Json answers = all();
        const bool isJson = command.count("--json") + command.get_parent()->count("--json") > 0;
        if (path->empty() && isJson) {
            print(answers);
            return true;
        }
        const std::string text =
            isJson ? answers.dump(2, ' ', false, Json::error_handler_t::replace) + '\n' : page(answers);
        if (path->empty()) {
            std::cout << text;
            return true;
        }
        std::ofstream file(*path, std::ios::binary);
        if (!(file << text).flush())
            throw std::runtime_error(*path + " cannot be written");
        std::cerr << "Written to " << escaped(*path) << ". Look through it before you send it.\n";
        return true;
    };
}

} // namespace inspect
