#include "install.h"

#include <optional>
#include <vector>

#include "backup_archive.h"
#include "container.h"
#include "folders.h"
#include "link_rule.h"
#include "little_endian.h"
#include "output_file.h"
#include "removal_list.h"
#include "system.h"

namespace {

struct BackupFiles {
    BackupFiles(const std::string& archivePath, const std::string& removalListPath)
        : archive(archivePath), removalList(removalListPath)
    {
        std::string header;
        AppendLittleEndian32(header, backupArchiveHeader);
        archive.Append(header);
    }

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
    // What failed to reach either file cannot be written anywhere else: the outcome stands.
    static_cast<void>(backups.archive.Close());
    static_cast<void>(backups.removalList.Close());
}

}  // namespace

InstallOutcome InstallConfig(const GameProfile& game, SteamAccount& place)
{
    // Only the first install keeps backups; a reinstall leaves them as the first one wrote them.
    const bool firstInstall = !(place.*game.installedFlag);
    const std::string& placeFolder = place.folder;
    const std::string& contentFolder = place.*game.contentFolder;
    std::vector<std::string> created;
    KnownFolders known;
    std::optional<BackupFiles> backups;
    if (firstInstall)
        backups.emplace(placeFolder + game.archiveName, placeFolder + game.removalListName);

    InstallOutcome outcome;
    WalkRecords(game.payload->start, game.payload->length, 0, [&](const ContainerRecord& record) {
        const std::string target = contentFolder + record.name;
        if (backups) {
            const sys::Entry existing = sys::LookUp(target);
            if (existing.kind != sys::EntryKind::none) {
                // A player's file is overwritten only once its record is in the archive. A link
                // is never followed: its target may lie anywhere, and the uninstall would not
                // write through it to put the file back.
                const std::string folder = target.substr(0, target.rfind('/'));
                if (existing.link || MeetsLink(placeFolder, folder, &known) ||
                    !AppendBackupRecord(backups->archive, record.name, target)) {
                    outcome = {InstallOutcome::Result::backupFailed, target};
                    return false;
                }
            } else {
                AppendRemovalLine(backups->createdFiles, target);
            }
        }
        const std::string notMade = CreateFolders(target, &created, &known);
        if (!notMade.empty()) {
            outcome = {InstallOutcome::Result::folderFailed, notMade};
            return false;
        }
        // A target that cannot be written is not reported: the install goes on.
        static_cast<void>(WriteWholeFile(target, record.data, record.size));
        return true;
    });

    if (backups)
        FinishBackupFiles(*backups, created);
    if (outcome.result == InstallOutcome::Result::installed)
        place.*game.installedFlag = true;
    return outcome;
}
