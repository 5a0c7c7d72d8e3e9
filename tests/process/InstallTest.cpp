#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

// The README's own lines, in places of the test's.
constexpr char kScript[] = R"sh(
cmake=$1 build=$2 generator=$3 source=$4 compiler=$5 flags=$6 other_qt=$7
set -e
cp -R "$source/tests/process/consumer" .
block() { sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/{/^\`\`\`/d;p;}" "$source/README.md"; }
configure() { "$cmake" -G "$generator" "-DCMAKE_PREFIX_PATH=$PWD/prefix" "-DCMAKE_CXX_COMPILER=$compiler" "$@"; }
block cmake | sed 's/my_program/consumer/' >>consumer/CMakeLists.txt
{ block cpp | grep '^#include'; echo 'int main() {'; block cpp | grep -v '^#include'; echo '}'; } >consumer/main.cpp
{
    block sh | sed -n "/^cmake --install/{s|cmake|\"$cmake\"|;s|build/release|\"$build\"|;s|/opt/ondpdftoolutils|\"$PWD/prefix\"|p;}" | sh -e
    configure -S consumer -B build "-DCMAKE_CXX_FLAGS=$flags" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON
    "$cmake" --build build
    build/consumer
    # What an analyser makes of it, which reads with clang's defaults.
    sed -n 's|.*"command": "[^ ]* \(.*\) -o .* -c \(.*/main.cpp\)".*|clang++ -fsyntax-only \1 \2|p' build/compile_commands.json | sh -e
} >&2
export PKG_CONFIG_PATH=$(dirname "$(find "$PWD/prefix" -name ondpdftoolutils.pc)")${PKG_CONFIG_PATH:+:$PKG_CONFIG_PATH}
eval "options=\$($(grep -o 'pkg-config --cflags --libs ondpdftoolutils' "$source/README.md"))"
# pkg-config protects what the shell would split.
eval "\"\$compiler\" -std=c++17 $flags consumer/main.cpp $options -Wl,-rpath,$(pkg-config --variable=libdir ondpdftoolutils) -o program"
./program

# The inspector finds its bundle and its libraries by a link, also when all of it was moved.
mv prefix moved
ln -s moved/bin/pdforvell-inspect inspect
./inspect --json locations | grep -o '[^/]*/PDF Orvell.app/Contents/Resources/' | head -1
./inspect doctor >&2
mv moved prefix

# Who uses the other Qt is told so.
echo "add_library(${other_qt}::Core INTERFACE IMPORTED)" >other.cmake
configure -S consumer -B other "-DCMAKE_PROJECT_INCLUDE=$PWD/other.cmake" 2>&1 | grep -o "this project uses Qt"
printf '#include <QtGlobal>\n#undef QT_VERSION_MAJOR\n#define QT_VERSION_MAJOR 9\n' >other.h
eval "\"\$compiler\" -std=c++17 $flags -include other.h -fsyntax-only consumer/main.cpp $(pkg-config --cflags ondpdftoolutils)" 2>&1 |
    grep -o "built with the other Qt" | head -1
)sh";

constexpr char kProductScript[] = R"sh(
cmake=$1 generator=$2 source=$3 compiler=$4 qt=$5
set -e
cp -R "$source/product" mine
sed -n '/^cmake --preset release -D/,/^```/{/^```/d;p;}' "$source/README.md" |
    sed "s|=/path/to/product|='$PWD/mine'|
        s|cmake --preset release|\"$cmake\" -G \"$generator\" -S \"$source\" -B build \"-DCMAKE_CXX_COMPILER=$compiler\" -DOND_QT=$qt|" >configure
sh -e configure >&2
grep -o com.example.reader "build/My Reader.app/Contents/Info.plist"
)sh";

constexpr char kMacScript[] = R"sh(
set -e
mkdir -p X.app/Contents/MacOS
printf '<key>CFBundle%s</key>\n<string>%s</string>\n' Executable X Identifier com.example >X.app/Contents/Info.plist
touch X.app/Contents/MacOS/X X.app/Contents/MacOS/helper
"$1/tools/package/mac" X.app out --dry-run --entitlements main --helper-entitlements inner >commands
sed -n 's/^codesign --force --sign - //p' commands | sed 's/ $//; s|out/X.app/Contents/||'
)sh";

TEST(Install, IsFoundAndUsedAsTheReadmeSays)
{
    const QString sanitizers = OND_TEST_SANITIZE;
    const QString flags = OND_TEST_CXX_FLAGS + (sanitizers.isEmpty() ? "" : " -fsanitize=" + sanitizers);
    const auto result = test::runScript(kScript,
                                        {OND_TEST_CMAKE, OND_TEST_BUILD_DIR, OND_TEST_GENERATOR, OND_TEST_SOURCE_DIR,
                                         OND_TEST_CXX, flags, OND_TEST_OTHER_QT});
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_EQ(result.output,
              "ondpdftoolutils/PDF Orvell.app/Contents/Resources/\nthis project uses Qt\nbuilt with the other Qt\n");
}

TEST(Install, ProductOfTheReadmeIsConfigured)
{
    const auto result = test::runScript(kProductScript,
                                        {OND_TEST_CMAKE, OND_TEST_GENERATOR, OND_TEST_SOURCE_DIR, OND_TEST_CXX,
                                         QString(OND_TEST_OTHER_QT) == "Qt5" ? "6" : "5"});
    EXPECT_EQ(result.output, "com.example.reader\n") << result.errors;
}

TEST(Install, MacBundleIsSignedFromTheInsideOutWithEachProgramsOwnEntitlements)
{
    EXPECT_EQ(test::runScript(kMacScript, {OND_TEST_SOURCE_DIR}).output,
              "Frameworks/QtCore.framework\nFrameworks/libinih.0.dylib\nPlugIns/platforms/libqcocoa.dylib\n"
              "--entitlements inner --identifier com.example.helper MacOS/helper\n--entitlements main out/X.app\n");
}
