#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

namespace {

constexpr char kScript[] = R"sh(
cmake=$1 build=$2 generator=$3 consumer=$4 compiler=$5 flags=$6 other_qt=$7
set -e
{
    "$cmake" --install "$build" --prefix "$PWD/prefix"
    "$cmake" -G "$generator" -S "$consumer" -B build "-DCMAKE_PREFIX_PATH=$PWD/prefix" \
        "-DCMAKE_CXX_COMPILER=$compiler" "-DCMAKE_CXX_FLAGS=$flags"
    "$cmake" --build build
} >&2
build/consumer
export PKG_CONFIG_PATH=$(dirname "$(find "$PWD/prefix" -name ondpdftoolutils.pc)")${PKG_CONFIG_PATH:+:$PKG_CONFIG_PATH}
"$compiler" -std=c++17 $flags "$consumer/main.cpp" $(pkg-config --cflags --libs ondpdftoolutils) \
    "-Wl,-rpath,$(pkg-config --variable=libdir ondpdftoolutils)" -o consumer
./consumer

# Who uses the other Qt is told so.
echo "add_library(${other_qt}::Core INTERFACE IMPORTED)" >other.cmake
"$cmake" -G "$generator" -S "$consumer" -B other "-DCMAKE_PREFIX_PATH=$PWD/prefix" "-DCMAKE_CXX_COMPILER=$compiler" \
    "-DCMAKE_PROJECT_INCLUDE=$PWD/other.cmake" 2>&1 | grep -o "this project uses Qt"
printf '#include <QtGlobal>\n#undef QT_VERSION_MAJOR\n#define QT_VERSION_MAJOR 9\n' >other.h
"$compiler" -std=c++17 $flags -include other.h -fsyntax-only "$consumer/main.cpp" $(pkg-config --cflags ondpdftoolutils) 2>&1 |
    grep -o "built with the other Qt" | head -1
)sh";

} // namespace

TEST(Install, IsFoundAndUsedThroughCMakeAndPkgConfig)
{
    const test::TempDir dir;
    const QString sanitizers = OND_TEST_SANITIZE;
    const QString flags = OND_TEST_CXX_FLAGS + (sanitizers.isEmpty() ? "" : " -fsanitize=" + sanitizers);
    const QString script = QString::fromStdString("cd '" + dir.path().string() + "'") + kScript;
    const char *consumer = OND_TEST_SOURCE_DIR "/tests/process/consumer";
    const test::ProcessResult result =
        test::runProcess("/bin/sh",
                         {"-c", script, "sh", OND_TEST_CMAKE, OND_TEST_BUILD_DIR, OND_TEST_GENERATOR, consumer,
                          OND_TEST_CXX, flags, OND_TEST_OTHER_QT},
                         dir / "home");
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_EQ(result.output, "log of consumer\nlog of consumer\nthis project uses Qt\nbuilt with the other Qt\n");
}
