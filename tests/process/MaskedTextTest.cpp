#include "tests/support/TestFiles.h"

#include <QString>
#include <gtest/gtest.h>
#include <regex>

TEST(MaskedText, NoTextOfTheProductBuildIsReadableInTheLibrary)
{
    // The title of the login dialog names the product to everyone.
    const std::string library = QByteArray::fromStdString(test::readFile(OND_TEST_LIBRARY))
                                    .replace("Log in / Sign up PDF Orvell ID", "")
                                    .toStdString();
    ASSERT_NE(library.find("MacConfigPath::GetUserDataPath"), std::string::npos) << "what is not masked is found";

    const std::regex ignored("\n *(#include|//)[^\n]*"), literal("\"([^\"\n]*)\"");
    const std::string scheme = "https://";
    int count = 0;
    for (const auto &entry : std::filesystem::directory_iterator(OND_PRODUCT_DIR)) {
        const std::string header = entry.path().extension() == ".h" ? test::readFile(entry.path()) : "";
        const std::string source = std::regex_replace(header, ignored, "");
        for (std::sregex_iterator it(source.begin(), source.end(), literal), end; it != end; ++it) {
            const std::string text = (*it)[1];
            if (text.size() < scheme.size())
                continue; // may occur by chance
            ++count;
            // Of an address its third piece, as a compiler that sees through the mask stores it into a string. The
            // second one may be a file's name: "help.pdf".
            const bool isAddress = text.rfind(scheme, 0) == 0 && text.size() >= 3 * scheme.size();
            const std::string needle = isAddress ? text.substr(2 * scheme.size(), scheme.size()) : text;
            const std::wstring wide = QString::fromStdString(text).toStdWString();
            const std::string wideBytes(reinterpret_cast<const char *>(wide.data()), wide.size() * sizeof(wchar_t));
            EXPECT_EQ(library.find(needle), std::string::npos) << text;
            EXPECT_EQ(library.find(wideBytes), std::string::npos) << text << " (UTF-32)";
        }
    }
    EXPECT_GT(count, 50) << "the headers were not understood";
}
