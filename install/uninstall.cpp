#include "backup_archive.h"
#include "file_io.h"
#include "folders.h"
#include "install.h"
#include "path_guard.h"
#include "removal_list.h"
#include "system.h"

namespace {

// Shown under the game's own message when the archive had to stay.
const char notRestoredText[] =
    "Some files could not be restored, so the backup was kept. Free some disk space and try again.";

// Deletes what the first install created, innermost folders after their files. Nothing is
// deleted through a link, and a line the install could not have written is passed over.
void RemoveCreated(const std::string& accountFolder, const std::string& listPath)
{
    if (sys::FindEntry(listPath) != sys::EntryKind::file || MeetsLink(accountFolder, listPath, nullptr))
        return;
    KnownFolders known;
    const bool read = ReadRemovalListFile(listPath, [&](const std::string& path) {
        // RemovePath itself refuses a link; the folders above it are looked at here.
        if (!IsRemovableBelow(path, accountFolder) ||
            MeetsLink(accountFolder, path.substr(0, path.rfind('/')), &known))
            return;
        RemovePath(path);
        known.erase(path);
    });
    // A list that could not be read whole stays for the next try.
    if (read)
        sys::RemoveFile(listPath);
}

// Writes one record's data to its target; true when every byte went in and the file closed
// without an error.
bool RestoreRecord(ArchiveReader& archive, const std::string& target)
{
    sys::FileHandle out;
    if (!sys::OpenForWriting(target, out))
        return false;
    bool written = archive.CopyData(
        [&](const char* bytes, std::size_t size) { return sys::WriteExactly(out, bytes, size); });
    return sys::CloseFile(out) && written;
}

// Puts back the player's files the archive holds. True when the archive may go: it could be
// read to its end and every record the install could have written is back whole. A record
// whose name the install could never have written is passed over and does not count.
bool RestoreArchive(const std::string& accountFolder, const std::string& archivePath,
                    const std::string& contentFolder)
{
    const sys::Entry entry = sys::LookUp(archivePath);
    if (entry.kind == sys::EntryKind::none)
        return true;  // nothing to put back, and nothing to lose
    if (MeetsLink(accountFolder, archivePath, nullptr))
        return false;
    ArchiveReader archive(archivePath);
    if (!archive.Opened())
        return false;
    KnownFolders known;
    bool allRestored = true;
    std::string name;
    bool nameTooLong = false;
    std::uint32_t size = 0;
    while (archive.Next(name, nameTooLong, size)) {
        const std::string target = contentFolder + name;
        if (nameTooLong || !IsRestorableName(name) || target.size() > sys::maxPathLength)
            continue;
        const bool restored = !MeetsLink(accountFolder, target, &known) &&
                              TryCreateFolders(target, &known) && RestoreRecord(archive, target);
        allRestored = allRestored && restored;
    }
    return allRestored && !archive.Failed();
}

}  // namespace

void UninstallConfig(const GameProfile& game, SteamAccount& account, InstallWindow& window)
{
    const std::string& accountFolder = account.folder;
    RemoveCreated(accountFolder, accountFolder + game.removalListName);

    const std::string archivePath = accountFolder + game.archiveName;
    if (RestoreArchive(accountFolder, archivePath, account.*game.contentFolder)) {
        sys::RemoveFile(archivePath);
        window.EnableUninstall(game, false);
        account.*game.installedFlag = false;
        window.ShowMessage(game.uninstalledMessage, "Message", sys::mbIconInformation);
        return;
    }
    // Some of the player's bytes are only in the archive: it stays, and so does the way back.
    window.EnableUninstall(game, true);
    account.*game.installedFlag = true;
    window.ShowMessage(std::string(game.uninstalledMessage) + "\n" + notRestoredText, "Message",
                       sys::mbIconInformation);
}
