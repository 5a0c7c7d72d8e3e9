#include "tools/common/Fatal.h"
#include "tools/inspect/CommandLine.h"
#include "tools/inspect/Doctor.h"
#include "tools/inspect/Generate.h"
#include "tools/inspect/Sections.h"

#include <QLoggingCategory>
#include <algorithm>
#include <iostream>

namespace {

using namespace inspect;

void print(const CommandLine &line, const std::string &name, const Json &answer, bool isStream)
{
    Report report;
    report.add(name, answer);
    if (line.isJson())
        report.printJson(std::cout, isStream);
    else
        report.printText(std::cout, line.isColoured());
    if (!std::cout.flush())
        throw std::runtime_error("the answers cannot be written");
}

/// Whether doctor, if it was asked, found nothing.
bool printSections(const CommandLine &line)
{
    Report report;
    bool isFine = true;
    const std::vector<std::string> &names = line.sections();
    for (const Section &section : sections()) {
        if (!names.empty() && std::find(names.begin(), names.end(), section.name) == names.end())
            continue;
        const Json answers = section.answers();
        isFine = isFine && !(section.isExamination && hasProblems(answers));
        report.add(section.name, answers);
    }
    if (line.isJson())
        report.printJson(std::cout);
    else
        report.printText(std::cout, line.isColoured());
    return isFine;
}

bool answer(const CommandLine &line)
{
    if (!line.generated().empty()) {
        std::cout << generated(line.app(), line.generated());
        return true;
    }
    const Action *action = line.action();
    if (!action)
        return printSections(line);
    return line.run()([&](const Json &answer) { print(line, action->name, answer, action->isStream); });
}

} // namespace

int main(int argc, char *argv[])
{
    // The answers say it; QT_LOGGING_RULES brings the library's lines for its developers back.
    QLoggingCategory::setFilterRules(QStringLiteral("default.info=false\ndefault.debug=false"));
    endInsteadOfAborting("pdforvell-inspect");
    const auto fail = [](const std::string &what, ExitStatus status) {
        std::cerr << "pdforvell-inspect: " << escaped(what) << (status == kWrongUse ? "; see --help" : "") << '\n';
        return status;
    };
    try {
        CommandLine line;
        bool isFine = true;
        try {
            line.parse(argc, argv);
            isFine = answer(line);
        } catch (const CLI::Success &request) {
            std::cout << line.text(request);
        }
        if (!std::cout.flush())
            return fail("the answers cannot be written", kSomethingIsWrong);
        return isFine ? kFine : kSomethingIsWrong;
    } catch (const WrongUse &error) {
        return fail(error.what(), kWrongUse);
    } catch (const CLI::ParseError &error) {
        return fail(error.what(), kWrongUse);
    } catch (const std::exception &error) {
        return fail(error.what(), kSomethingIsWrong);
    }
}
