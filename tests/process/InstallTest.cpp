#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

namespace {

/// What a compiler needs besides: the flags of the build, and its sanitizers.
QStringList buildFlags()
{
    const QString sanitizers = OND_TEST_SANITIZE;
    QStringList flags = QString(OND_TEST_CXX_FLAGS).split(' ', Qt::SkipEmptyParts);
    if (!sanitizers.isEmpty())
        flags += "-fsanitize=" + sanitizers;
    return flags;
}

class Install : public testing::Test
{
protected:
    void SetUp() override { run(OND_TEST_CMAKE, {"--install", OND_TEST_BUILD_DIR, "--prefix", prefix()}); }

    [[nodiscard]] QString prefix() const { return QString::fromStdString(m_dir / "prefix"); }
    [[nodiscard]] std::string path(const std::string &name) const { return m_dir / name; }

    std::string run(const std::string &program, const QStringList &arguments)
    {
        const test::ProcessResult result = test::runProcess(program, arguments, path("home"));
        EXPECT_EQ(result.exitStatus, 0) << program << '\n' << result.output << result.errors;
        return result.output;
    }

    const std::string consumer = OND_TEST_SOURCE_DIR "/tests/process/consumer";

private:
    test::TempDir m_dir;
};

} // namespace

TEST_F(Install, IsFoundAndUsedThroughCMake)
{
    const QString build = QString::fromStdString(path("build"));
    run(OND_TEST_CMAKE,
        {"-G", OND_TEST_GENERATOR, "-S", QString::fromStdString(consumer), "-B", build,
         "-DCMAKE_PREFIX_PATH=" + prefix(), QString("-DCMAKE_CXX_COMPILER=") + OND_TEST_CXX,
         "-DCMAKE_CXX_FLAGS=" + buildFlags().join(' ')});
    run(OND_TEST_CMAKE, {"--build", build});
    EXPECT_EQ(run(path("build/consumer"), {}), "log of consumer\n");
}

TEST_F(Install, IsFoundAndUsedThroughPkgConfig)
{
    const std::string directory = prefix().toStdString();
    const test::TempDir home;
    const std::string command = "cd '" + home.path().string() + "' && export PKG_CONFIG_PATH=$(dirname $(find '"
        + directory + "' -name ondpdftoolutils.pc)) && '" OND_TEST_CXX "' -std=c++17 -fPIC '" + consumer + "/main.cpp' "
        + buildFlags().join(' ').toStdString()
        + " $(pkg-config --cflags --libs ondpdftoolutils) -Wl,-rpath,$(pkg-config --variable=libdir ondpdftoolutils)"
          " -o consumer && ./consumer";
    EXPECT_EQ(run("/bin/sh", {"-c", QString::fromStdString(command)}), "log of consumer\n");
}
