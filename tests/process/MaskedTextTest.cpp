#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

// "$1" is the library, "$2" the folder of the product's headers. Without its zeros a library has wide texts as narrow
// ones. The login dialog's title names the product to everyone, in both languages. Of an address its third piece of
// eight is looked for, as a compiler that sees through the mask stores it into a string; the second one may be a file's
// name: "help.pdf". What is shorter may occur by chance.
constexpr char kScript[] = R"sh(
export LC_ALL=C
tr -d '\0' <"$1" | sed -E 's|/ .{2,8} PDF Orvell||g' >library
grep -qa MacConfigPath::GetUserDataPath library || echo "what is not masked is not found"
find "$2" -name '*.h' -exec sed -E '/^ *(#include|\/\/)/d' {} + | grep -oE '"[^"]*"' | tr -d '"' | grep -E '.{8}' >texts
[ "$(wc -l <texts)" -gt 50 ] || echo "the headers were not understood"
sed -E 's|^https://.{8}(.{8}).*|\1|' texts >needles
grep -aoFf needles library
)sh";

TEST(MaskedText, NoTextOfTheProductBuildIsReadableInTheLibrary)
{
    const auto result = test::runScript(kScript, {OND_TEST_LIBRARY, OND_PRODUCT_DIR});
    EXPECT_EQ(result.output + result.errors, "");
}
