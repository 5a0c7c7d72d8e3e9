#include "tests/process/RealBundle.h"

#include <QRegularExpression>
#include <algorithm>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

const fs::path kSource = OND_TEST_SOURCE_DIR;

static QString read(const fs::path &path)
{
    return QString::fromStdString(test::readFile(path));
}

/// What a program printed, with names for the folders of this test as the pages have them.
static QString asPrinted(const std::string &output, const test::RealBundle &bundle, const char *data)
{
    return QString::fromStdString(output)
        .replace(QString::fromStdString(bundle.supportDir()), data)
        .replace(QString::fromStdString(bundle.path().string()), QStringLiteral("…"));
}

TEST(Guide, ProgramsAreThoseOfThePageAndPrintWhatItSays)
{
    qputenv("QT_PLUGIN_PATH", OND_TEST_PLUGINS);
    qputenv("QT_QPA_GENERIC_PLUGINS", "typist");
    qputenv("OND_TEST_KEYS", "me@example.org\tsecret\r");
    const QRegularExpression form("`examples/(\\w+)\\.cpp`\n\n```cpp\n(.*?)```\n\n```\n(.*?)```\n",
                                  QRegularExpression::DotMatchesEverythingOption);
    std::ptrdiff_t count = 0;
    for (auto it = form.globalMatch(read(kSource / "docs/guide.md")); it.hasNext(); ++count) {
        const auto match = it.next();
        const std::string name = match.captured(1).toStdString();
        EXPECT_EQ(test::readFile(kSource / "examples" / (name + ".cpp")), match.captured(2).toStdString());
        const test::RealBundle bundle;
        fs::copy_file(fs::path(OND_TEST_BUILD_DIR "/examples") / name, bundle.contents("MacOS/" + name));
        // No browser: the helper that opens pages is tested elsewhere.
        test::writeFile(bundle.contents("MacOS/orvell-account"), "#!/bin/sh\n");
        const auto result = test::runProcess(bundle.contents("MacOS/" + name).string(), {}, bundle.home());
        EXPECT_EQ(asPrinted(result.output, bundle, "~/Library/Application Support").toStdString(),
                  match.captured(3).toStdString())
            << result.errors;
        EXPECT_EQ(result.exitStatus, 0);
    }
    const auto isProgram = [](const fs::directory_entry &entry) { return entry.path().extension() == ".cpp"; };
    EXPECT_EQ(count, std::count_if(fs::directory_iterator(kSource / "examples"), {}, isProgram));
}

TEST(Guide, CommandsRunAProgramInTheBundleWhichIsNothingOutsideOne)
{
    const QRegularExpression form("```sh\n(.*?)```\n", QRegularExpression::DotMatchesEverythingOption);
    QString commands = form.match(read(kSource / "docs/guide.md")).captured(1);
    const test::RealBundle bundle;
    commands.replace("build/release/PDF Orvell.app", QString::fromStdString(bundle.contents("..").string()));
    const auto inside = bundle.sh(commands.replace("build/release", OND_TEST_BUILD_DIR));
    EXPECT_NE(inside.output.find("PDF Orvell.app/Contents/Resources/\n"), std::string::npos) << inside.errors;
    const auto outside = test::runProcess(OND_TEST_BUILD_DIR "/examples/where", {}, bundle.home());
    EXPECT_EQ(outside.output.rfind("bundle     \nresources  \n", 0), 0U) << outside.output;
}

TEST(Guide, ReadmeShowsWhatTheInspectorPrints)
{
    const test::RealBundle bundle;
    const QString shown = read(kSource / "README.md").section("```\n", 2, 2); // the first block that is no shell
    const auto result = bundle.inspect({"locations", "switches", "doctor"});
    const QString printed = asPrinted(result.output, bundle, "~/.local/share").replace("…", "…/build/release");
    EXPECT_GE(shown.count('\n'), 20);
    for (const QString &line : shown.split('\n', Qt::SkipEmptyParts)) {
        const QString words = line.trimmed() == "…" ? QString() : line.simplified();
        EXPECT_TRUE(printed.simplified().contains(words)) << qPrintable(line);
    }
    EXPECT_EQ(result.exitStatus, 0) << printed.toStdString();
}

TEST(Guide, InspectorUnderstandsTheCommandsOfEveryPage)
{
    const test::RealBundle bundle;
    const auto result = bundle.sh(R"sh(source=")sh" OND_TEST_SOURCE_DIR R"sh("
        # All but the one that watches for ever, which is tested elsewhere.
        commands=$(grep -rohE --include=*.md '\./dev run( [^`]*|`|$)' "$source/README.md" "$source/docs" |
            grep -v '^\./dev run watch' | tr -d '`')
        [ "$(echo "$commands" | wc -l)" -ge 6 ] || echo "the pages were not understood"
        echo "$commands" | while read -r _ _ arguments; do
            echo secret | eval "\"$0\" $arguments" >&2 || [ $? = 1 ] || echo "$arguments"
        done)sh");
    EXPECT_EQ(result.output, "") << result.errors;
}
