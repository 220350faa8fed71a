#include "install.h"

#include <memory>

#include "backup_archive.h"
#include "container.h"
#include "file_io.h"
#include "folders.h"
#include "removal_list.h"
#include "system.h"

void InstallConfig(const GameProfile& game, SteamAccount& account, InstallWindow& window)
{
    bool& installed = account.*game.installedFlag;
    if (installed &&
        window.ShowMessage(game.reinstallQuestion, "Question", sys::mbYesNoQuestion) != sys::idYes)
        return;
    // Only the first install keeps backups; a reinstall leaves them as the first one wrote them.
    const bool firstInstall = !installed;

    std::vector<char> container = LoadContainer(*game.payload);
    const std::string& accountFolder = account.folder;
    const std::string& contentFolder = account.*game.contentFolder;
    std::vector<std::string> created;

    std::unique_ptr<OutputFile> archive, removalList;
    if (firstInstall) {
        archive = std::make_unique<OutputFile>(accountFolder + game.archiveName);
        removalList = std::make_unique<OutputFile>(accountFolder + game.removalListName);
        archive->AppendInt32(backupArchiveHeader);
    }

    WalkRecords(container, 0, [&](const ContainerRecord& record) {
        std::string target = contentFolder + record.name;
        if (firstInstall) {
            if (sys::PathExists(target))
                AppendBackupRecord(*archive, record.name, target);
            else
                AppendRemovalLine(*removalList, target);
        }
        CreateFolders(target, &created);
        WriteWholeFile(target, record.data, record.size);
    });

    if (firstInstall) {
        archive->Flush();
        // Innermost first, so that each folder is already empty when the uninstall reaches it.
        for (auto folder = created.rbegin(); folder != created.rend(); ++folder)
            AppendRemovalLine(*removalList, *folder);
        removalList->Flush();
        archive->Close();
        removalList->Close();
        archive.reset();
        removalList.reset();
    }

    installed = true;
    window.EnableUninstall(game, true);
    created = {};
    container = {};
    window.ShowMessage(game.installedMessage, "Message", sys::mbIconInformation);
}
