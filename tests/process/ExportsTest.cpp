#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

TEST(Exports, OnlyTheMarkedInterfaceIsVisible)
{
#ifdef __APPLE__ // whose libraries have one table of symbols
    const char *symbols = "nm -gU \"$0\" | c++filt";
#else
    const char *symbols = "nm -DC --defined-only \"$0\"";
#endif
    const QString commands = QString(R"sh(cd
        find "$2/config" "$2/paths" "$2/runtime" "$2/account" -name '*.h' -exec sed -nE '
            s/.*class ONDPDFTOOLUTILS_EXPORT ([A-Za-z0-9_]+).*/\1/p
            s/^ *ONDPDFTOOLUTILS_EXPORT [^(]*[ *]([A-Za-z0-9_]+)\(.*/\1/p' {} + | sort -u >marked
        sed 's/.*://' "$1" | sort -u | diff - marked
        %1 | sed -E 's/^[^ ]* . ((vtable|VTT|typeinfo|typeinfo name|guard variable) for |(non-)?virtual thunk to )?//' >names
        grep -vE "^($(paste -sd'|' "$1"))([:(<[]|\$)" names
        while read -r name; do grep -qE "^$name([:(<[]|\$)" names || echo "none of $name"; done <"$1")sh")
                                 .arg(symbols);
    const test::TempDir home;
    const auto odd = test::runProcess("/bin/sh",
                                      {"-c", commands, OND_TEST_LIBRARY,
                                       OND_TEST_SOURCE_DIR "/cmake/exports/ondpdftoolutils.txt", OND_TEST_SOURCE_DIR},
                                      home.path().string());
    EXPECT_EQ(odd.output, "") << "listed and not marked, or marked and not listed, or not what is visible";
    EXPECT_EQ(odd.errors, "");
}
