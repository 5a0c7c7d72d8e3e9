#include <config/MacConfigPath.h>
#include <filesystem>
#include <iostream>
#include <paths/MacBookmark.h>

int main()
{
    // Stands for a folder that the user chose in an open panel.
    const std::string folder = MacConfigPath::GetInstance()->GetUserDataPath("chosen");
    std::filesystem::create_directories(folder);
    if (MacBookmark::createBookmark(folder))
        std::cout << "remembered\n";

    // In a later run:
    const bool parents = true; // look for a bookmark of the folders above, too
    if (MacBookmark::checkBookmarkForDir(folder + "/report.pdf", parents)) {
        std::cout << "may read what is in it\n";
        MacBookmark::closeBookmark(folder);
    }
}
