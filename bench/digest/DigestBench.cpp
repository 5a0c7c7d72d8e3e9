// MD5 against OpenSSL's, in the form that is its fastest: algorithm fetched and context made beforehand. Files are in
// the page cache; the peer reads them as OndEasyMd5 does, 1024 bytes at a time.

#include "bench/support/Ratios.h"
#include "runtime/Md5.h"
#include "runtime/OndEasyMd5.h"

#include <QTemporaryDir>
#include <cstdio>
#include <fstream>
#include <memory>
#include <openssl/evp.h>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

class Evp
{
public:
    Evp() : m_md5(EVP_MD_fetch(nullptr, "MD5", nullptr), EVP_MD_free), m_context(EVP_MD_CTX_new(), EVP_MD_CTX_free)
    {
        if (!m_md5)
            throw std::runtime_error("OpenSSL has no MD5 here");
    }

    void begin() { EVP_DigestInit_ex(m_context.get(), m_md5.get(), nullptr); }
    void update(const unsigned char *data, std::size_t size) { EVP_DigestUpdate(m_context.get(), data, size); }
    void finish(unsigned char *digest) { EVP_DigestFinal_ex(m_context.get(), digest, nullptr); }

private:
    std::unique_ptr<EVP_MD, void (*)(EVP_MD *)> m_md5;
    std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX *)> m_context;
};

Bytes randomBytes(std::size_t size)
{
    std::mt19937 random;
    Bytes bytes(size);
    for (unsigned char &byte : bytes)
        byte = static_cast<unsigned char>(random());
    return bytes;
}

void compareBytes(const std::string &name, std::size_t size, bench::Bound bound)
{
    const auto ours = [size](benchmark::State &state) {
        Bytes bytes = randomBytes(size);
        unsigned char digest[16];
        for (auto _ : state) {
            Md5 md5;
            md5.md5_update(bytes.data(), bytes.size());
            md5.md5_finish(digest);
            benchmark::DoNotOptimize(digest);
        }
        state.SetBytesProcessed(static_cast<std::int64_t>(size * state.iterations()));
    };
    const auto peer = [size](benchmark::State &state) {
        const Bytes bytes = randomBytes(size);
        Evp evp;
        unsigned char digest[16];
        for (auto _ : state) {
            evp.begin();
            evp.update(bytes.data(), bytes.size());
            evp.finish(digest);
            benchmark::DoNotOptimize(digest);
        }
        state.SetBytesProcessed(static_cast<std::int64_t>(size * state.iterations()));
    };
    bench::compare({"Md5, " + name, ours}, bound, {"EVP, " + name, peer});
}

void compareFile(const std::string &directory, const std::string &name, std::size_t size, bench::Bound bound)
{
    const std::string path = directory + "/" + name;
    const Bytes bytes = randomBytes(size);
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char *>(bytes.data()), bytes.size());

    const auto ours = [path, size](benchmark::State &state) {
        const std::wstring widePath = QString::fromStdString(path).toStdWString();
        for (auto _ : state)
            if (!OndEasyMd5(widePath.c_str()).GetBinary16())
                state.SkipWithError("no digest");
        state.SetBytesProcessed(static_cast<std::int64_t>(size * state.iterations()));
    };
    const auto peer = [path, size](benchmark::State &state) {
        Evp evp;
        unsigned char chunk[1024];
        unsigned char digest[16];
        for (auto _ : state) {
            std::FILE *file = std::fopen(path.c_str(), "rb");
            evp.begin();
            while (const std::size_t count = std::fread(chunk, 1, sizeof chunk, file))
                evp.update(chunk, count);
            evp.finish(digest);
            std::fclose(file);
            benchmark::DoNotOptimize(digest);
        }
        state.SetBytesProcessed(static_cast<std::int64_t>(size * state.iterations()));
    };
    bench::compare({"OndEasyMd5, file of " + name, ours}, bound, {"EVP, file of " + name, peer});
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir directory;
    compareBytes("64 bytes", 64, bench::atLeast(1.15));
    compareBytes("64 KiB", 64 << 10, bench::atLeast(1.0));
    compareBytes("16 MiB", 16 << 20, bench::atLeast(1.0));
    compareFile(directory.path().toStdString(), "1 MiB", 1 << 20, bench::atLeast(1.0));
    compareFile(directory.path().toStdString(), "100 MiB", 100 << 20, bench::atLeast(1.0));
    return bench::run(argc, argv);
}
