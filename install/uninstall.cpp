#include "backup_archive.h"
#include "file_io.h"
#include "folders.h"
#include "install.h"
#include "path_guard.h"
#include "removal_list.h"
#include "system.h"

void UninstallConfig(const GameProfile& game, SteamAccount& account, InstallWindow& window)
{
    const std::string& accountFolder = account.folder;

    // First delete what the first install created, innermost folders after their files.
    const std::string removalListPath = accountFolder + game.removalListName;
    if (sys::PathExists(removalListPath)) {
        std::vector<char> bytes = ReadWholeFile(removalListPath);
        for (const std::string& path : ReadRemovalList(std::string(bytes.begin(), bytes.end())))
            if (IsRemovableBelow(path, accountFolder))
                RemovePath(path);
        sys::RemoveFile(removalListPath);
    }

    // Then put back the files it overwrote.
    const std::string archivePath = accountFolder + game.archiveName;
    std::vector<char> archive = ReadWholeFile(archivePath);
    const std::string& contentFolder = account.*game.contentFolder;
    WalkBackupArchive(archive, [&](const ContainerRecord& record) {
        if (!IsRestorableName(record.name))
            return;
        std::string target = contentFolder + record.name;
        CreateFolders(target, nullptr);
        WriteWholeFile(target, record.data, record.size);
    });
    archive = {};
    sys::RemoveFile(archivePath);

    window.EnableUninstall(game, false);
    account.*game.installedFlag = false;
    window.ShowMessage(game.uninstalledMessage, "Message", sys::mbIconInformation);
}
