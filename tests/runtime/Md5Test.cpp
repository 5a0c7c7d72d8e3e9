#include "runtime/Md5.h"

#include "runtime/OndEasyMd5.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <sys/stat.h>

namespace {

using Bytes = std::vector<unsigned char>;

std::string text(const OndEasyMd5 &md5)
{
    return md5.ToString().toStdString();
}

std::string textOfFile(const std::string &path)
{
    return text(OndEasyMd5(QString::fromStdString(path).toStdWString().c_str()));
}

std::string finished(Md5 &md5)
{
    unsigned char digest[16];
    md5.md5_finish(digest);
    return text(OndEasyMd5(digest));
}

} // namespace

TEST(Md5, EveryLengthInPiecesAsBytesAndAsAFile)
{
    Bytes bytes(67'000);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(i * i / 97);
    const test::TempDir dir;
    const std::string path = dir / "Größe-文件-\U0001F4C4.pdf";
    test::writeFile(path, std::string(bytes.begin(), bytes.end()));

    std::vector<std::size_t> lengths(2201);
    std::iota(lengths.begin(), lengths.end(), 0);
    lengths.insert(lengths.end(), {65'472, 65'535, 65'536, 65'537, 65'601, 66'559, 66'560, 66'561, 67'000});
    Md5 all;
    std::minstd_rand random;
    for (; !lengths.empty(); lengths.pop_back()) {
        const std::size_t length = lengths.back();
        std::string expected = text(OndEasyMd5(bytes.data(), static_cast<int>(length)));
        all.md5_update(reinterpret_cast<unsigned char *>(expected.data()), expected.size());
        Md5 pieces;
        for (std::size_t at = 0, size = 0; at < length; at += size) {
            size = std::min<std::size_t>(random() % 200, length - at);
            pieces.md5_update(bytes.data() + at, size);
        }
        ASSERT_EQ(finished(pieces), expected) << length;
        std::filesystem::resize_file(path, length);
        ASSERT_EQ(textOfFile(path), expected) << length;
    }
    EXPECT_EQ(finished(all), "e7x88x6axfdx26x8axe4x7fxdbxb6xe1x66x28x30xf1x17x")
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
    const std::string empty = "d4x1dx8cxd9x8fx00xb2x04xe9x80x09x98xecxf8x42x7ex";
    const std::tuple<const char *, std::string, std::string> rows[] = {
        {"missing file", textOfFile(dir / "none"), ""},
        {"null path", text(OndEasyMd5(static_cast<const wchar_t *>(nullptr))), ""},
        {"FIFO that nobody writes", textOfFile(dir / "fifo"), ""},
        {"device without an end", textOfFile("/dev/zero"), ""},
        {"negative length", text(OndEasyMd5(Bytes(1).data(), -1)), ""},
        {"bytes without an address", text(OndEasyMd5(nullptr, 1)), ""},
        {"digest of zeros", text(OndEasyMd5(Bytes(16).data())), ""},
        {"no bytes", text(OndEasyMd5(nullptr, 0)), empty},
        {"folder, which opens and yields nothing", textOfFile(dir / ""), empty},
    };
    for (const auto &[name, actual, expected] : rows)
        EXPECT_EQ(actual, expected) << name;
    EXPECT_EQ(OndEasyMd5(Bytes(16).data()).GetBinary16(), nullptr);
}
