#include "tools/inspect/Paths.h"

#include "paths/MacSandbox.h"
#include "paths/PathUtils.h"
#include "tools/inspect/Actions.h"

namespace inspect {

namespace {

/// What a getter creates while it answers.
enum class Creates { nothing, dataFolder, ownFolder };

struct Row
{
    const char *name;
    QString (*getter)();
    Creates creates;
};

constexpr Row kRows[] = {
    {"getTempDir", PathUtils::getTempDir, Creates::nothing},
    {"getApplicationDir", PathUtils::getApplicationDir, Creates::nothing},
    {"getApplicationPath", PathUtils::getApplicationPath, Creates::nothing},
    {"getAppDataDirName", PathUtils::getAppDataDirName, Creates::nothing},
    {"getAppDataDir", [] { return PathUtils::getAppDataDir(false); }, Creates::nothing},
    {"getAppConfigPath", [] { return PathUtils::getAppConfigPath(false); }, Creates::nothing},
    {"getSignImageSavePath", PathUtils::getSignImageSavePath, Creates::dataFolder},
    {"getHighLightFastColorFilePath", PathUtils::getHighLightFastColorFilePath, Creates::dataFolder},
    {"getUnderlineFastColorFilePath", PathUtils::getUnderlineFastColorFilePath, Creates::dataFolder},
    {"getUrlsTrustedConfigPath", PathUtils::getUrlsTrustedConfigPath, Creates::dataFolder},
    {"GetAttachmentTrustConfigPath", PathUtils::GetAttachmentTrustConfigPath, Creates::dataFolder},
    {"getScreenshotFolderPath", PathUtils::getScreenshotFolderPath, Creates::dataFolder},
    {"getAppHotKeyPath", PathUtils::getAppHotKeyPath, Creates::dataFolder},
    {"getAnnotConfigPath", PathUtils::getAnnotConfigPath, Creates::dataFolder},
    {"getBackgroundTaskConfigPath", PathUtils::getBackgroundTaskConfigPath, Creates::dataFolder},
    {"getAssociateCfgPath", PathUtils::getAssociateCfgPath, Creates::dataFolder},
    {"getCommonCfgPath", PathUtils::getCommonCfgPath, Creates::dataFolder},
    {"getTrustCAFilePath", PathUtils::getTrustCAFilePath, Creates::dataFolder},
    {"getSelfSignCertStoreIndexFilePath", PathUtils::getSelfSignCertStoreIndexFilePath, Creates::dataFolder},
    {"getChatHistoryDatabasePath", PathUtils::getChatHistoryDatabasePath, Creates::dataFolder},
    {"getWatermarkDir", PathUtils::getWatermarkDir, Creates::dataFolder},
    {"getWelcomeFileOpenStatePath", PathUtils::getWelcomeFileOpenStatePath, Creates::dataFolder},
    {"getSignatureDir", PathUtils::getSignatureDir, Creates::ownFolder},
    {"getSealDir", PathUtils::getSealDir, Creates::ownFolder},
    {"getRecommendPdfDir", PathUtils::getRecommendPdfDir, Creates::ownFolder},
    {"getSaveChatDocContentFileDir", PathUtils::getSaveChatDocContentFileDir, Creates::ownFolder},
    {"getThumbnailDir", PathUtils::getThumbnailDir, Creates::ownFolder},
    {"getConfigDataPath", PathUtils::getConfigDataPath, Creates::nothing},
    {"getAutoLoadDisableDirConfigDataPath", PathUtils::getAutoLoadDisableDirConfigDataPath, Creates::nothing},
    {"getVersionConfigPath", PathUtils::getVersionConfigPath, Creates::nothing},
    {"getRecommendWatermarkDir", PathUtils::getRecommendWatermarkDir, Creates::nothing},
    {"getLoginReminderFolderPath", PathUtils::getLoginReminderFolderPath, Creates::nothing},
    {"getThirdPartLicensePath", PathUtils::getThirdPartLicensePath, Creates::nothing},
    {"getWelcomeFilePathWithUpdate", PathUtils::getWelcomeFilePathWithUpdate, Creates::nothing},
    {"getChatAiPath", PathUtils::getChatAiPath, Creates::nothing},
    {"getTranslatePath", PathUtils::getTranslatePath, Creates::nothing},
    {"getScreenShotExePath", PathUtils::getScreenShotExePath, Creates::nothing},
    {"GetEditImageBackupDir", PathUtils::GetEditImageBackupDir, Creates::ownFolder},
    {"getPreloadImgTempPath", PathUtils::getPreloadImgTempPath, Creates::nothing},
};

std::string userFolder(QStandardPaths::StandardLocation location)
{
    return PathUtils::writableLocation(location).toStdString();
}

Json answers(bool mayCreate)
{
    const bool hasDataFolder = PathUtils::isDirPathExist(PathUtils::getAppDataDir(false));
    const auto isAsked = [&](Creates creates) {
        return mayCreate || creates == Creates::nothing || (creates == Creates::dataFolder && hasDataFolder);
    };
    Json result;
    Json notAsked = Json::array();
    const auto ask = [&](const char *name, QString (*getter)(), Creates creates) {
        if (isAsked(creates))
            result[name] = getter().toStdString();
        else
            notAsked.push_back(name);
    };
    for (const Row &row : kRows)
        ask(row.name, row.getter, row.creates);
    ask("getWelcomeFilePath", PathUtils::getWelcomeFilePath,
        MacSandbox::isSandBox() ? Creates::ownFolder : Creates::nothing);
    result["writableLocation"] = Json::array({
        userFolder(QStandardPaths::DesktopLocation),
        userFolder(QStandardPaths::DownloadLocation),
        userFolder(QStandardPaths::DocumentsLocation),
    });
    if (isAsked(Creates::dataFolder))
        result["isSwithToStandard"] = PathUtils::isSwithToStandard();
    else
        notAsked.push_back("isSwithToStandard");
    result["notAsked"] = notAsked;
    return result;
}

} // namespace

Json paths()
{
    return answers(false);
}

Run createPaths(CLI::App & /*command*/)
{
    return [](const Print &print) {
        print(answers(true));
        return true;
    };
}

} // namespace inspect
