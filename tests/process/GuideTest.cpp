#include "tests/process/RealBundle.h"

#include <QFile>
#include <QRegularExpression>
#include <QRegularExpressionMatchIterator>
#include <gtest/gtest.h>

namespace {

QString read(const std::filesystem::path &path)
{
    QFile file(QString::fromStdString(path.string()));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return file.readAll();
}

/// A program of the page, and what it prints.
struct Task
{
    QString name, program, output;
};

std::vector<Task> tasksOf(const QString &page)
{
    static const QRegularExpression form("`examples/(\\w+)\\.cpp`\n\n```cpp\n(.*?)```\n\n```\n(.*?)```\n",
                                         QRegularExpression::DotMatchesEverythingOption);
    std::vector<Task> tasks;
    for (auto it = form.globalMatch(page); it.hasNext();) {
        const auto match = it.next();
        tasks.push_back({match.captured(1), match.captured(2), match.captured(3)});
    }
    return tasks;
}

const std::filesystem::path kSource = OND_TEST_SOURCE_DIR;
const std::filesystem::path kExamples = std::filesystem::path(OND_TEST_BUILD_DIR) / "examples";

} // namespace

TEST(Guide, ProgramsAreThoseOfThePageAndPrintWhatItSays)
{
    qputenv("QT_PLUGIN_PATH", OND_TEST_PLUGINS);
    qputenv("QT_QPA_GENERIC_PLUGINS", "typist");
    qputenv("OND_TEST_KEYS", "me@example.org\tsecret\r");
    const auto tasks = tasksOf(read(kSource / "docs/guide.md"));
    EXPECT_EQ(tasks.size(), 10U);
    std::size_t sources = 0;
    for (const auto &entry : std::filesystem::directory_iterator(kSource / "examples"))
        sources += entry.path().extension() == ".cpp" ? 1 : 0;
    EXPECT_EQ(sources, tasks.size());
    for (const auto &[name, program, output] : tasks) {
        EXPECT_EQ(read(kSource / "examples" / (name.toStdString() + ".cpp")), program);
        EXPECT_LE(program.count('\n'), 30) << name.toStdString();
        const test::RealBundle bundle;
        const std::string run = bundle.contents("MacOS/" + name.toStdString()).string();
        std::filesystem::copy_file(kExamples / name.toStdString(), run);
        // No browser: the helper that opens pages is tested elsewhere.
        test::writeFile(bundle.contents("MacOS/orvell-account"), "#!/bin/sh\n");
        const test::ProcessResult result = test::runProcess(run, {}, bundle.home());
        QString printed = QString::fromStdString(result.output);
        printed.replace(QString::fromStdString(bundle.supportDir()), "~/Library/Application Support");
        printed.replace(QString::fromStdString(bundle.dir().path().string()), QStringLiteral("…"));
        EXPECT_EQ(printed.toStdString(), output.toStdString()) << result.errors;
        EXPECT_EQ(result.exitStatus, 0);
    }
}

TEST(Guide, CommandsRunAProgramInTheBundleWhichIsNothingOutsideOne)
{
    static const QRegularExpression form("```sh\n(.*?)```\n", QRegularExpression::DotMatchesEverythingOption);
    QString commands = form.match(read(kSource / "docs/guide.md")).captured(1);
    ASSERT_EQ(commands.count('\n'), 2);
    const test::RealBundle bundle;
    commands.replace("build/release/PDF Orvell.app", QString::fromStdString(bundle.contents("..").string()));
    commands.replace("build/release", OND_TEST_BUILD_DIR);
    const auto inside = test::runProcess("/bin/sh", {"-ec", commands}, bundle.home());
    const auto outside = test::runProcess((kExamples / "where").string(), {}, bundle.home());
    EXPECT_NE(inside.output.find("PDF Orvell.app/Contents/Resources/\n"), std::string::npos) << inside.errors;
    EXPECT_EQ(outside.output.rfind("bundle     \nresources  \n", 0), 0U) << outside.output;
}

TEST(Guide, PagesNameWhatThereIs)
{
    const test::TempDir home;
    const auto result = test::runProcess((kSource / "tools/lint/pages").string(), {}, home.path().string());
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
}

TEST(Guide, ReadmeShowsWhatTheInspectorPrints)
{
    const test::RealBundle bundle;
    const QString page = read(kSource / "README.md");
    const QString shown = page.section("```\n", 2, 2); // the first block that is no shell
    const auto result = bundle.inspect({"locations", "switches", "doctor"});
    QString printed = QString::fromStdString(result.output);
    printed.replace(QString::fromStdString(bundle.supportDir()), QStringLiteral("~/.local/share"));
    printed.replace(QString::fromStdString(bundle.dir().path().string()), QStringLiteral("…/build/release"));
    EXPECT_GE(shown.count('\n'), 20);
    for (const QString &line : shown.split('\n', Qt::SkipEmptyParts)) {
        const bool left = line.trimmed() == QStringLiteral("…");
        EXPECT_TRUE(left || printed.simplified().contains(line.simplified())) << qPrintable(line);
    }
    EXPECT_EQ(result.exitStatus, 0) << printed.toStdString();
}

TEST(Guide, InspectorUnderstandsTheCommandsOfEveryPage)
{
    static const QRegularExpression form("\\./dev run( [^`\n]*|`|\n)");
    const test::RealBundle bundle;
    std::vector<std::filesystem::path> pages = {kSource / "README.md"};
    for (const auto &entry : std::filesystem::directory_iterator(kSource / "docs")) {
        if (entry.path().extension() == ".md")
            pages.push_back(entry.path());
    }
    int commands = 0;
    for (const auto &page : pages) {
        const QString text = read(page);
        for (auto it = form.globalMatch(text); it.hasNext();) {
            const QString arguments = it.next().captured(1).remove('`');
            if (arguments.startsWith(" watch")) // for ever; tested elsewhere
                continue;
            const QString command = '"' + QString::fromStdString(bundle.inspector()) + '"' + arguments;
            const auto result = test::runProcess("/bin/sh", {"-c", command}, bundle.home(), "secret\n");
            EXPECT_LE(static_cast<unsigned>(result.exitStatus), 1U) << page << qPrintable(arguments) << result.errors;
            ++commands;
        }
    }
    EXPECT_GE(commands, 6);
}
