#include "uninstall.h"

#include "backup_archive.h"
#include "folders.h"
#include "link_rule.h"
#include "name_rules.h"
#include "removal_list.h"
#include "system.h"

namespace {

// Deletes what the first install created, innermost folders after their files. Nothing is
// deleted through a link, and a line the install could not have written is passed over.
void RemoveCreated(const std::string& accountFolder, const std::string& listPath)
{
    if (sys::LookUp(listPath).kind != sys::EntryKind::file || MeetsLink(accountFolder, listPath, nullptr))
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
        static_cast<void>(sys::RemoveFile(listPath));  // one left behind is read again, harmlessly
}

// Writes one record's data to its target; true when every byte went in and the file closed
// without an error.
bool RestoreRecord(ArchiveReader& archive, const std::string& target)
{
    sys::File out = sys::File::Create(target);
    if (!out.IsOpen())
        return false;
    const bool written =
        archive.CopyData([&](const char* bytes, std::size_t size) { return out.Write(bytes, size); });
    return out.Close() && written;
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
                              CreateFolders(target, nullptr, &known).empty() && RestoreRecord(archive, target);
        allRestored = allRestored && restored;
    }
    return allRestored && !archive.Failed();
}

}  // namespace

UninstallOutcome UninstallConfig(const GameProfile& game, SteamAccount& place)
{
    const std::string& placeFolder = place.folder;
    RemoveCreated(placeFolder, placeFolder + game.removalListName);

    const std::string archivePath = placeFolder + game.archiveName;
    UninstallOutcome outcome;
    // Some of the player's bytes may be only in the archive: then it stays, and so does the way back.
    outcome.archiveKept = !RestoreArchive(placeFolder, archivePath, place.*game.contentFolder);
    if (!outcome.archiveKept)
        static_cast<void>(sys::RemoveFile(archivePath));
    place.*game.installedFlag = outcome.archiveKept;
    return outcome;
}
