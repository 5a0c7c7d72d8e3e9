#include "config/GlobalConfigFile.h"
#include "paths/RegularFile_p.h"
#include "tools/inspect/Checks.h"

#include <INIReader.h>
#include <cctype>
#include <sstream>

namespace inspect {

namespace {

constexpr char kSection[] = "common";
constexpr char kAllOff[] = "Every switch is off: no log, no sandbox, the domestic edition.";
constexpr char kTooLong[] = "a line of more than 199 bytes, which is not read as one";
constexpr std::size_t kLongestLine = 199; // bytes, as the reader takes them

const std::vector<std::string> &switches()
{
    static const std::vector<std::string> all = {"enable_log", "enable_sbx", "app_store", "app_international"};
    return all;
}

std::string trimmed(const std::string &text)
{
    const std::size_t begin = text.find_first_not_of(" \t\r");
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(" \t\r") + 1 - begin);
}

std::string lowered(std::string text)
{
    for (char &letter : text)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return text;
}

struct Line
{
    int number;
    std::size_t size;
    std::string section;
    std::string key; // empty for a line that sets nothing
    bool isIndented;
};

std::vector<Line> linesOf(const std::string &content)
{
    std::vector<Line> lines;
    std::string section;
    std::istringstream stream(content.rfind("\xEF\xBB\xBF", 0) == 0 ? content.substr(3) : content);
    int number = 0;
    for (std::string raw; std::getline(stream, raw);) {
        ++number;
        const std::string line = trimmed(raw);
        if (line.empty() || line[0] == ';' || line[0] == '#')
            continue;
        const bool isIndented = raw[0] == ' ' || raw[0] == '\t';
        if (line[0] == '[') {
            section = lowered(line.substr(1, line.find(']') - 1));
            lines.push_back({number, raw.size(), section, {}, isIndented});
        } else {
            lines.push_back(
                {number, raw.size(), section, lowered(trimmed(line.substr(0, line.find_first_of("=:")))), isIndented});
        }
    }
    return lines;
}

/// The line that the reader's n-th line lies in, and whether that is one that it took in pieces, as it does with long
/// ones, of comments too.
std::pair<int, bool> lineOf(const std::string &content, int readersLine)
{
    std::istringstream stream(content);
    int number = 0;
    int pieces = 0;
    for (std::string line; std::getline(stream, line);) {
        ++number;
        pieces += 1 + static_cast<int>(line.size() / kLongestLine);
        if (pieces >= readersLine)
            return {number, line.size() > kLongestLine};
    }
    return {readersLine, false};
}

void checkSwitch(const INIReader &file, const std::string &path, const std::string &key, int line, Checklist &list)
{
    const std::string text = file.Get(kSection, key, "");
    const std::string first = trimmed(text.substr(0, text.find('\n')));
    if (first.empty() || first == "0" || first == "1")
        return;
    const bool isOn = file.GetInteger(kSection, key, 0) == 1;
    list.problem({key + " is neither 0 nor 1", "It counts as " + std::string(isOn ? "on." : "off."),
                  "Set " + key + " to 1 for on, to 0 for off.", path, line});
}

void checkLines(const INIReader &file, const std::string &path, const std::string &content, Checklist &list)
{
    std::vector<std::string> known = switches();
    known.emplace_back("group_name");
    std::map<std::string, int> seen;
    bool hasSection = false;
    std::string before;
    for (const auto &[number, size, section, key, isIndented] : linesOf(content)) {
        if (size > kLongestLine)
            list.problem({kTooLong, "Its value is cut off, or another one.", "Shorten the line.", path, number});
        hasSection = hasSection || section == kSection;
        if (key.empty()) {
            if (section != kSection)
                list.note({"the section [" + section + "] is not one that is read", "What it sets has no effect.",
                           "Move its lines to [common], or take it out.", path, number});
            continue;
        }
        if (section != kSection)
            continue;
        if (isIndented && !before.empty()) {
            list.problem({before + " takes in the indented line below it", "Its text has two lines.",
                          "Begin the line in the first column.", path, number});
            continue;
        }
        before = key;
        const std::string meant = nearest(key, known);
        if (std::find(known.begin(), known.end(), key) == known.end())
            list.note({key + " is not a key that is read", "It has no effect.",
                       meant.empty() ? "Take it out." : "Write " + meant + ", if that is what is meant.", path,
                       number});
        else if (!seen.emplace(key, number).second)
            list.problem({key + " is set more than once", "As a switch the first value counts, as a text both.",
                          "Keep one of the lines.", path, number});
    }
    if (!hasSection)
        list.problem({"there is no section [common]", kAllOff, "Put the line [common] above the switches.", path});
    for (const std::string &key : switches())
        checkSwitch(file, path, key, seen[key], list);
}

} // namespace

void checkGlobalFile(Checklist &list)
{
    list.begin("switches", "Build switches (mk.dat)");
    const std::string path = GetDatPath();
    const FileContent file = readRegularFile(path, kMaxGlobalFileSize);
    const std::string restore =
        "Install the product again, or copy the file from another installation of this version.";
    switch (file.state) {
    case FileContent::State::missing:
        return list.problem({"missing", kAllOff, restore, path});
    case FileContent::State::irregular:
        return list.problem({"no regular file", kAllOff, restore, path});
    case FileContent::State::tooLarge:
        return list.problem({"larger than a megabyte, and not read", kAllOff, restore, path});
    case FileContent::State::unreadable:
        return list.problem({"cannot be read", kAllOff, "Give the user permission to read it.", path});
    case FileContent::State::read:
        break;
    }
    const std::string content = file.bytes.toStdString();
    const INIReader reader(path);
    if (reader.ParseError() > 0) {
        const auto [line, isTooLong] = lineOf(content, reader.ParseError());
        return list.problem({isTooLong ? kTooLong : "a line that is neither [section], key=value nor ;comment", kAllOff,
                             isTooLong ? "Shorten the line." : "Mend the line, or put a ; in front of it.", path,
                             line});
    }
    checkLines(reader, path, content, list);
}

} // namespace inspect
