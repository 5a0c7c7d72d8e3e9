#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

TEST(Exports, OnlyTheMarkedInterfaceIsVisible)
{
#ifdef __APPLE__ // whose libraries have one table of symbols
    const char *symbols = "nm -gU \"$1\" | c++filt";
#else
    const char *symbols = "nm -DC --defined-only \"$1\"";
#endif
    const QString commands = QString(R"sh(
        find "$3/config" "$3/paths" "$3/runtime" "$3/account" -name '*.h' -exec sed -nE '
            s/.*class ONDPDFTOOLUTILS_EXPORT ([A-Za-z0-9_]+).*/\1/p
            s/^ *ONDPDFTOOLUTILS_EXPORT [^(]*[ *]([A-Za-z0-9_]+)\(.*/\1/p' {} + | sort -u >marked
        sed 's/.*://' "$2" | sort -u | diff - marked
        %1 | sed -E 's/^[^ ]* . ((vtable|VTT|typeinfo|typeinfo name|guard variable) for |(non-)?virtual thunk to )?//' >names
        grep -vE "^($(paste -sd'|' "$2"))([:(<[]|\$)" names
        while read -r name; do grep -qE "^$name([:(<[]|\$)" names || echo "none of $name"; done <"$2")sh")
                                 .arg(symbols);
    const char *list = OND_TEST_SOURCE_DIR "/cmake/exports/ondpdftoolutils.txt";
    const auto odd = test::runScript(commands, {OND_TEST_LIBRARY, list, OND_TEST_SOURCE_DIR});
    EXPECT_EQ(odd.output + odd.errors, "") << "listed and not marked, or marked and not listed, or not what is visible";
}
