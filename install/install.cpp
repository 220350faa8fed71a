#include "install.h"

#include <memory>

#include "backup_archive.h"
#include "container.h"
#include "file_io.h"
#include "folders.h"
#include "little_endian.h"
#include "removal_list.h"
#include "system.h"

namespace {

struct BackupFiles {
    OutputFile archive;
    OutputFile removalList;
    // The removal list's lines of the files created so far. They name only what the install
    // made, never a player's file, so they are gathered here and written in one piece when the
    // install ends, whichever way it ends.
    std::string createdFiles;
};

// Ends both backup files: the created files' lines, then the created folders innermost first,
// so that each folder is already empty when the uninstall reaches it.
void FinishBackupFiles(BackupFiles& backups, const std::vector<std::string>& created)
{
    for (auto folder = created.rbegin(); folder != created.rend(); ++folder)
        AppendRemovalLine(backups.createdFiles, *folder);
    backups.removalList.Append(backups.createdFiles);
    backups.archive.Close();
    backups.removalList.Close();
}

// A player's file is overwritten only once its record is in the archive. When that fails,
// the install stops before the file: the backup files keep what reached them (the folders
// made so far included), so the next start offers the uninstall, which undoes the rest.
[[noreturn]] void StopBeforeOverwriting(const std::string& target, BackupFiles& backups,
                                        const std::vector<std::string>& created)
{
    FinishBackupFiles(backups, created);
    sys::ExitWithMessage("Could not back up the file\n" + target + "\nNothing more was changed.",
                         "Hiba:", sys::mbOk);
}

}  // namespace

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
    KnownFolders known;

    std::unique_ptr<BackupFiles> backups;
    if (firstInstall) {
        backups.reset(new BackupFiles{OutputFile(accountFolder + game.archiveName),
                                      OutputFile(accountFolder + game.removalListName), {}});
        std::string header;
        AppendLittleEndian32(header, backupArchiveHeader);
        backups->archive.Append(header);
    }

    WalkRecords(container, 0, [&](const ContainerRecord& record) {
        std::string target = contentFolder + record.name;
        if (firstInstall) {
            const sys::Entry existing = sys::LookUp(target);
            if (existing.kind != sys::EntryKind::none) {
                // A link is never followed: its target may lie anywhere, and the uninstall
                // would not write through it to put the file back.
                const std::string folder = target.substr(0, target.rfind('/'));
                if (existing.link || MeetsLink(accountFolder, folder, &known) ||
                    !AppendBackupRecord(backups->archive, record.name, target))
                    StopBeforeOverwriting(target, *backups, created);
            } else {
                AppendRemovalLine(backups->createdFiles, target);
            }
        }
        // A folder that cannot be made ends the program; the backup files then list what was
        // created up to there.
        CreateFolders(target, &created, &known, [&] {
            if (backups)
                FinishBackupFiles(*backups, created);
        });
        WriteWholeFile(target, record.data, record.size);
    });

    if (firstInstall) {
        FinishBackupFiles(*backups, created);
        backups.reset();
    }

    installed = true;
    window.EnableUninstall(game, true);
    created = {};
    container = {};
    window.ShowMessage(game.installedMessage, "Message", sys::mbIconInformation);
}
