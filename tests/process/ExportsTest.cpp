#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>

TEST(Exports, OnlyTheMarkedInterfaceIsVisible)
{
    const char *list = OND_TEST_SOURCE_DIR "/cmake/exports/ondpdftoolutils.txt";
    std::istringstream lines(test::readFile(list));
    std::set<std::string> listed, marked;
    for (std::string name; lines >> name;)
        listed.insert(name.substr(name.rfind(':') + 1));
    const std::regex mark(R"((class ONDPDFTOOLUTILS_EXPORT (\w+))|(ONDPDFTOOLUTILS_EXPORT [^({;]*?(\w+)\())");
    for (const std::string folder : {"config", "paths", "runtime", "account"})
        for (const auto &entry : std::filesystem::recursive_directory_iterator(OND_TEST_SOURCE_DIR "/" + folder)) {
            const std::string text = entry.path().extension() == ".h" ? test::readFile(entry.path()) : "";
            for (std::sregex_iterator match(text.begin(), text.end(), mark), end; match != end; ++match)
                marked.insert((*match)[2].matched ? (*match)[2] : (*match)[4]);
        }
    EXPECT_EQ(listed, marked);

#ifdef __APPLE__ // whose libraries have one table of symbols
    const char *symbols = "nm -gU \"$0\" | c++filt";
#else
    const char *symbols = "nm -DC --defined-only \"$0\"";
#endif
    const QString commands = QString(R"sh(cd
        %1 | sed -E 's/^[^ ]* . ((vtable|VTT|typeinfo|typeinfo name|guard variable) for |(non-)?virtual thunk to )?//' >names
        grep -vE "^($(paste -sd'|' "$1"))([:(<[]|\$)" names
        while read -r name; do grep -qE "^$name([:(<[]|\$)" names || echo "none of $name"; done <"$1")sh")
                                 .arg(symbols);
    const test::TempDir home;
    const auto odd = test::runProcess("/bin/sh", {"-c", commands, OND_TEST_LIBRARY, list}, home.path().string());
    EXPECT_EQ(odd.output, "") << "visible, but not listed, or listed without a symbol";
    EXPECT_EQ(odd.errors, "");
}
