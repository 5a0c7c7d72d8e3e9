#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

namespace {

// "$0" is the library, "$1" the folder of the product's headers. Without its zeros a library has wide texts as narrow
// ones. The login dialog's title names the product to everyone, in both languages. Of an address its third piece of
// eight is looked for, as a compiler that sees through the mask stores it into a string; the second one may be a file's
// name: "help.pdf". What is shorter may occur by chance.
constexpr char kScript[] = R"sh(cd
export LC_ALL=C
tr -d '\0' <"$0" | sed -E 's|/ .{2,8} PDF Orvell||g' >library
grep -qa MacConfigPath::GetUserDataPath library || echo "what is not masked is not found"
find "$1" -name '*.h' -exec sed -E '/^ *(#include|\/\/)/d' {} + | grep -oE '"[^"]*"' | tr -d '"' | grep -E '.{8}' >texts
[ "$(wc -l <texts)" -gt 50 ] || echo "the headers were not understood"
sed -E 's|^https://.{8}(.{8}).*|\1|' texts >needles
grep -aoFf needles library
)sh";

} // namespace

TEST(MaskedText, NoTextOfTheProductBuildIsReadableInTheLibrary)
{
    const test::TempDir home;
    const auto result = test::runProcess("/bin/sh", {"-c", kScript, OND_TEST_LIBRARY, OND_PRODUCT_DIR}, home / "");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
}
