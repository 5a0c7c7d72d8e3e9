#include "tools/inspect/Actions.h"

#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "runtime/CCmdLineParser.h"
#include "runtime/CommonFileLog.h"
#include "runtime/OndEasyMd5.h"
#include "tools/inspect/Account.h"
#include "tools/inspect/Languages.h"
#include "tools/inspect/Paths.h"
#include "tools/inspect/Registry.h"
#include "tools/inspect/SupportReport.h"
#include "tools/inspect/Terminal.h"

#include <CLI/CLI.hpp>
#include <QByteArray>
#include <chrono>
#include <filesystem>
#include <future>
#include <memory>

namespace fs = std::filesystem;

namespace inspect {

namespace {

bool isLogEnabled()
{
    try {
        return CommonFileLog::IsLogEnable();
    } catch (const std::filesystem::filesystem_error &) {
        return false; // a log whose existence cannot be told is not written either
    }
}

Run log(CLI::App &command)
{
    auto message = std::make_shared<std::string>();
    auto isConfig = std::make_shared<bool>(false);
    CLI::Option *text = command.add_option("MESSAGE", *message, "The line to write")->option_text(" ");
    command.add_flag("--config", *isConfig, "Write the configuration")->excludes(text);
    return [message, isConfig, text](const Print &print) {
        if (text->empty() && !*isConfig)
            throw WrongUse("log takes a message, or --config");
        const std::string path = MacConfigPath::GetInstance()->GetLogPath();
        std::error_code error;
        const auto before = fs::file_size(path, error);
        if (*isConfig)
            MacGlobalConfig::OutputConfigLog();
        else
            CommonFileLog::WriteLog(*message);
        const bool isOn = isLogEnabled();
        const auto after = fs::file_size(path, error);
        print({{"IsLogEnable", isOn}, {"GetLogPath", path}});
        return isOn && !error && (before == static_cast<std::uintmax_t>(-1) || after > before);
    };
}

/// The digest of a file; on a terminal, with a word that it goes on when that takes more than a second.
OndEasyMd5 digestOf(const std::string &path)
{
    auto digest = std::async(std::launch::async,
                             [path] { return OndEasyMd5(QString::fromStdString(path).toStdWString().c_str()); });
    const Progress progress("digest: " + escaped(path));
    while (digest.wait_for(std::chrono::seconds(1)) != std::future_status::ready)
        progress.tell();
    return digest.get();
}

Run digest(CLI::App &command)
{
    auto files = std::make_shared<std::vector<std::string>>();
    command.add_option("FILE", *files, "Files to read")->required()->option_text("...");
    return [files](const Print &print) {
        Json digests = Json::object();
        bool isFine = true;
        for (const std::string &path : *files) {
            const OndEasyMd5 md5 = digestOf(path);
            const unsigned char *bytes = md5.GetBinary16();
            isFine = isFine && bytes;
            if (bytes)
                digests[path] = {
                    {"md5", QByteArray(reinterpret_cast<const char *>(bytes), 16).toHex().toStdString()},
                    {"ToString", md5.ToString().toStdString()},
                };
            else
                digests[path] = {{"error", "cannot be read"}};
        }
        print(digests);
        return isFine;
    };
}

Run parse(CLI::App &command)
{
    command.footer("The one argument is a command line: quote it.\n\n" + command.get_footer());
    return [&command](const Print &print) {
        const std::vector<std::string> lines = command.remaining();
        if (lines.size() != 1)
            throw WrongUse("parse takes one command line; quote it");
        const CCmdLineParser parser(QString::fromStdString(lines[0]).toStdWString().c_str());
        Json switches = Json::object();
        QString key;
        QString value;
        for (auto it = parser.getFirst(); !parser.isLast(it);) {
            parser.getNext(it, key, value);
            switches[key.toStdString()] = value.toStdString();
        }
        print(switches);
        return true;
    };
}

} // namespace

const std::vector<Action> &actions()
{
    static const std::vector<Action> all = {
        {"create-paths", "Print the section paths, with the folders made that its getters make", createPaths},
        {"digest", "Print the MD5 of files, in hexadecimal and in the library's text form", digest},
        {"language", "Print the languages and the one in use, or choose one", language},
        {"log", "Write a message, or the configuration, to the diagnostic log", log},
        {"login", "Log in, with the password from standard input or in the product's dialog", login},
        {"logout", "End the session in all processes", logout},
        {"page", "Open an account page through the account helper", openPage},
        {"parse", "Print the switches and values of a command line", parse, false, true},
        {"registry", "Print all values of a key, one of them, or write one", registry},
        {"report", "Write everything that support asks for on one page, without what says who the user is", report},
        {"watch", "Print every change of the account until interrupted", watch, true},
    };
    return all;
}

} // namespace inspect
