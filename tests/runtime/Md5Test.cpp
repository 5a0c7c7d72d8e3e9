#include "runtime/Md5.h"

#include "runtime/OndEasyMd5.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

static std::string text(const OndEasyMd5 &md5)
{
    return md5.ToString().toStdString();
}

static std::string textOfFile(const std::string &path)
{
    return text(OndEasyMd5(QString::fromStdString(path).toStdWString().c_str()));
}

static std::string finished(Md5 &md5)
{
    unsigned char digest[16];
    md5.md5_finish(digest);
    return text(OndEasyMd5(digest));
}

TEST(Md5, EveryLengthInPiecesAsBytesAndAsAFile)
{
    const test::TempDir dir;
    const std::string path = dir / "Größe-文件-\U0001F4C4.pdf";
    std::string content;
    Md5 all;
    for (int length = 0; length < 1100; content += static_cast<char>(length * length / 97), ++length) {
        auto *bytes = reinterpret_cast<unsigned char *>(content.data());
        std::string expected = text(OndEasyMd5(bytes, length));
        Md5 pieces;
        for (int at = 0, size = 0; at < length; at += size) {
            size = std::min(1 + at * 7 % 150, length - at);
            pieces.md5_update(bytes + at, size);
        }
        ASSERT_EQ(finished(pieces), expected) << length;
        test::writeFile(path, content);
        ASSERT_EQ(textOfFile(path), expected) << length;
        all.md5_update(reinterpret_cast<unsigned char *>(expected.data()), expected.size());
    }
    EXPECT_EQ(finished(all), "20x7dxc7xd9x69xedx13x86x45xffx3bx0bxeaxe2x35x62x")
        << "what another program makes of the same";
}

TEST(Md5, CountsBitsPastFourGigabytes)
{
    struct Resumed : Md5
    {
        Resumed() { m_count[0] = 0xffffffc0, m_count[1] = 1; } // as though 8 GiB had gone before, but for one block
    } md5;
    unsigned char bytes[200] = {};
    md5.md5_update(bytes, sizeof bytes);
    EXPECT_EQ(finished(md5), "aaxb7xe2x69x2cx4dxc9xe4x7exa2xc3x77xeax05x64xe5x");
}

TEST(OndEasyMd5, WhatCannotBeReadHasNoDigest)
{
    const test::TempDir dir;
    ASSERT_EQ(::mkfifo((dir / "fifo").c_str(), 0600), 0);
    const unsigned char zeros[16] = {};
    const std::string empty = "d4x1dx8cxd9x8fx00xb2x04xe9x80x09x98xecxf8x42x7ex";
    const std::tuple<const char *, std::string, std::string> rows[] = {
        {"missing file", textOfFile(dir / "none"), ""},
        {"null path", text(OndEasyMd5(static_cast<const wchar_t *>(nullptr))), ""},
        {"FIFO that nobody writes", textOfFile(dir / "fifo"), ""},
        {"negative length", text(OndEasyMd5(zeros, -1)), ""},
        {"bytes without an address", text(OndEasyMd5(nullptr, 1)), ""},
        {"digest of zeros", text(OndEasyMd5(zeros)), ""},
        {"no bytes", text(OndEasyMd5(nullptr, 0)), empty},
        {"folder, which opens and yields nothing", textOfFile(dir / ""), empty},
    };
    for (const auto &[name, actual, expected] : rows)
        EXPECT_EQ(actual, expected) << name;
}
