#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>

namespace fs = std::filesystem;

namespace {

std::set<std::string> namesMarkedForExport()
{
    const std::regex mark(R"((class ONDPDFTOOLUTILS_EXPORT (\w+))|(ONDPDFTOOLUTILS_EXPORT [^({;]*?(\w+)\())");
    std::set<std::string> names;
    for (const std::string folder : {"config", "paths", "runtime", "account"})
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(OND_TEST_SOURCE_DIR "/" + folder)) {
            const std::string text = entry.path().extension() == ".h" ? test::readFile(entry.path()) : "";
            for (std::sregex_iterator match(text.begin(), text.end(), mark), end; match != end; ++match)
                names.insert((*match)[2].matched ? (*match)[2] : (*match)[4]);
        }
    return names;
}

/// "Class" of "vtable for Class", "Class::member(...)" and "function(...)".
std::string outermostName(const std::string &symbol)
{
    static const std::regex special("^(vtable|typeinfo name|typeinfo|VTT|guard variable|non-virtual thunk to|"
                                    "virtual thunk to)( for)? |(ondeasy|vip_sdk)::");
    const std::string name = std::regex_replace(symbol, special, "");
    return name.substr(0, name.find_first_of(":([<"));
}

} // namespace

TEST(Exports, OnlyTheMarkedInterfaceIsVisible)
{
    const test::TempDir home;
#ifdef __APPLE__ // whose libraries have one table of symbols
    const char *command = "nm -gU \"$0\" | c++filt";
#else
    const char *command = "nm -DC --defined-only \"$0\"";
#endif
    const test::ProcessResult nm = test::runProcess("/bin/sh", {"-c", command, OND_TEST_LIBRARY}, home.path().string());
    ASSERT_EQ(nm.exitStatus, 0) << nm.errors;
    const std::set<std::string> marked = namesMarkedForExport();

    std::istringstream lines(nm.output);
    std::set<std::string> visible;
    for (std::string address, type, symbol; lines >> address >> type && std::getline(lines >> std::ws, symbol);) {
        EXPECT_EQ(marked.count(outermostName(symbol)), 1U) << symbol;
        visible.insert(outermostName(symbol));
    }
    EXPECT_EQ(visible, marked) << "marked, but not in the library";
}
