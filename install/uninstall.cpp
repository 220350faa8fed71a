#include "uninstall.h"

#include <algorithm>
#include <set>
#include <vector>

#include "backup_archive.h"
#include "folders.h"
#include "output_file.h"
#include "removal_list.h"
#include "safe_paths.h"
#include "system.h"
#include "text_encoding.h"
#include "windows_names.h"

namespace {

// Far more than any install writes (a few kilobytes): the lines of a longer list past it are
// passed over, so that a damaged list of any size costs no more memory than this.
constexpr std::size_t linesLimit = 8 << 20;

struct Removal {
    bool listExists = false;
    bool readWhole = true;                // the list was read to its end, or to its first empty line
    std::vector<std::string> remaining;   // lines naming what the installs made and is still there
};

std::size_t Depth(const std::string& path) { return static_cast<std::size_t>(std::count(path.begin(), path.end(), '/')); }

enum class Contents { none, some, unknown };

// What a folder holds besides "." and "..", which every listing of a folder has.
Contents ContentsOf(const std::string& folder)
{
    bool listed = false;
    for (const sys::ListedEntry& entry : sys::ListFolder(folder + "/").entries) {
        if (entry.name == ".")
            listed = true;
        else if (entry.name != "..")
            return Contents::some;
    }
    return listed ? Contents::none : Contents::unknown;
}

// Removes one listed folder; true when it still stands and is ours to remove: empty, or
// holding only what remains of ours. A folder holding the player's files stays, and is done.
bool FolderRemains(const std::string& folder, const std::vector<std::string>& remaining, const ActionLog& log,
                   sys::Failure& first)
{
    const sys::Status removed = sys::RemoveFolder(folder);
    if (removed) {
        log("removed", folder);
        return false;
    }
    const sys::Entry entry = sys::LookUp(folder);
    if (entry.kind == sys::EntryKind::none)
        return false;
    const bool remains =
        entry.kind != sys::EntryKind::folder || ContentsOf(folder) != Contents::some ||
        std::any_of(remaining.begin(), remaining.end(), [&](const std::string& line) { return IsBelow(line, folder); });
    if (remains)
        first.NoteFirst(folder, removed.Why());
    return remains;
}

// True when nothing stands at `path` because the folder that would hold it, or one above it,
// is known to lack it: the nearest folder above it that is there can be looked into. Behind a
// link whose target is gone, or a folder the system cannot tell about, nothing is known.
bool KnownGone(const std::string& path)
{
    for (std::string above = path.substr(0, path.rfind('/')); above.size() > 3;
         above = above.substr(0, above.rfind('/'))) {
        const sys::Entry entry = sys::LookUp(above);
        if (entry.kind == sys::EntryKind::none)
            continue;
        if (entry.kind == sys::EntryKind::unknown)
            return false;
        return entry.kind == sys::EntryKind::file || !entry.link || sys::ReachFolder(above);
    }
    return false;
}

// Deletes what the removal list names, files first, then folders innermost first, so the
// lines may come in any order. Each line names what it named below this game's folder here,
// wherever its spelling puts the folders above (LineAtPlace). A line goes once what it names
// is removed or known to be gone; one that could not be looked at stays, for a later uninstall.
Removal RemoveCreated(const BackupFiles& backup, const GameProfile& game, const SteamAccount& place,
                      const ActionLog& log, sys::Failure& first)
{
    Removal removal;
    const sys::Entry list = sys::LookUp(backup.removalList);
    removal.listExists = list.kind != sys::EntryKind::none;
    if (!removal.listExists)
        return removal;
    std::vector<std::string> lines;
    std::set<std::string> seen;
    std::size_t kept = 0;
    const sys::Status read =
        list.link ? sys::Status::Failed(sys::Reason::Refused(sys::Reason::Own::link))
                  : ReadRemovalListFile(backup.removalList, [&](const std::string& line) {
                        const std::string path = LineAtPlace(line, game, place);
                        if (!path.empty() && kept + path.size() <= linesLimit && seen.insert(path).second) {
                            lines.push_back(path);
                            kept += path.size();
                        }
                    });
    removal.readWhole = static_cast<bool>(read);
    if (!read)
        first.NoteFirst(backup.removalList, read.Why());

    const std::string& contentFolder = place.*game.contentFolder;
    KnownFolders known;
    std::vector<std::string> folders;
    const auto stays = [&](const std::string& line, const sys::Reason& why) {
        removal.remaining.push_back(line);
        first.NoteFirst(line, why);
    };
    for (const std::string& line : lines) {
        const sys::Status way = WayTo(contentFolder, line.substr(0, line.rfind('/')), &known);
        const sys::Entry entry = way ? sys::LookUp(line) : sys::Entry{sys::EntryKind::unknown, false, way.Why()};
        if (entry.kind == sys::EntryKind::unknown) {
            stays(line, entry.reason);  // a link on the way, or the system could not tell
        } else if (entry.link) {
            stays(line, sys::Reason::Refused(sys::Reason::Own::link));  // never deleted through
        } else if (entry.kind == sys::EntryKind::none) {
            if (!KnownGone(line))
                stays(line, entry.reason);
        } else if (entry.kind == sys::EntryKind::folder) {
            folders.push_back(line);
        } else if (const sys::Status removed = sys::RemoveFile(line)) {
            log("removed", line);
        } else if (sys::LookUp(line).kind != sys::EntryKind::none) {
            stays(line, removed.Why());
        }
    }
    std::stable_sort(folders.begin(), folders.end(),
                     [](const std::string& a, const std::string& b) { return Depth(a) > Depth(b); });
    for (const std::string& folder : folders)
        if (FolderRemains(folder, removal.remaining, log, first))
            removal.remaining.push_back(folder);
    return removal;
}

// Makes the target hold exactly the record's `size` data bytes, written over it in place and
// flushed; done when every byte went in and the file closed without an error.
sys::Status RestoreRecord(ArchiveReader& archive, const std::string& target, std::uint32_t size)
{
    sys::File out = sys::File::Overwrite(target);
    if (!out.IsOpen())
        return sys::Status::Failed(out.OpenFailure());
    sys::Status written =
        archive.CopyData([&](const char* bytes, std::size_t part) { return out.Write(bytes, part); });
    if (written && out.Size() > size)
        written = out.Truncate(size);
    // On the disk before the archive that holds it can go: a power cut keeps deletions sooner
    // than the bytes written before them.
    if (written)
        written = out.Flush();
    const sys::Status closed = out.Close();
    return written ? closed : written;
}

// Puts back the player's files the archive holds. True when every record the install could
// have written is back whole and the archive could be read to its end. A record whose name
// no install could have written, or that the archive does not hold whole, is passed over.
bool RestoreArchive(const std::string& archivePath, const std::string& contentFolder, const ActionLog& log,
                    sys::Failure& first)
{
    const sys::EntryKind kind = sys::LookUp(archivePath).kind;
    if (kind == sys::EntryKind::none)
        return true;  // nothing to put back, and nothing to lose
    ArchiveReader archive(archivePath);
    if (!archive.Opened()) {
        first.NoteFirst(archivePath, archive.Why());
        return false;
    }
    KnownFolders known;
    bool allRestored = true;
    std::string name;
    bool nameTooLong = false;
    std::uint32_t size = 0;
    while (archive.Next(name, nameTooLong, size)) {
        const std::string target = contentFolder + name;
        if (nameTooLong || !IsWindowsName(name) || Utf16Length(target) > sys::maxPathUnits)
            continue;
        sys::Failure failed;
        const sys::Status way = WayTo(contentFolder, target, &known);
        if (!way)
            failed = {target, way.Why()};
        else
            failed = CreateFolders(target, &known);
        if (!failed.Failed()) {
            const sys::Status restored = RestoreRecord(archive, target, size);
            if (!restored)
                failed = {target, restored.Why()};
        }
        if (failed.Failed()) {
            first.NoteFirst(failed.path, failed.reason);
            allRestored = false;
        } else {
            log("restored", target);
        }
    }
    if (archive.Failed())
        first.NoteFirst(archivePath, archive.Why());
    return allRestored && !archive.Failed();
}

// Deletes one backup file; false, with the reason noted, unless it is known to be gone.
bool Removed(const std::string& path, sys::Failure& first)
{
    const sys::Status removed = sys::RemoveFile(path);
    if (removed || sys::LookUp(path).kind == sys::EntryKind::none)
        return true;
    first.NoteFirst(path, removed.Why());
    return false;
}

// An archive holding no records: it keeps the uninstall offered while something remains. One
// whose every record is back (each flushed) is emptied too: a later uninstall would put those
// bytes back again over what the player may have changed since, and a later install would take
// the files for backed up already. A link in its place is left alone.
void KeepUninstallOffered(const std::string& archivePath, bool allRestored)
{
    const sys::Entry entry = sys::LookUp(archivePath);
    if (entry.kind != sys::EntryKind::none && !(allRestored && entry.kind == sys::EntryKind::file && !entry.link))
        return;
    OutputFile archive = OutputFile::Create(archivePath);
    AppendArchiveHeader(archive);
    static_cast<void>(archive.Close());  // without it, the next start offers the install again
}

}  // namespace

UninstallOutcome UninstallConfig(const GameProfile& game, SteamAccount& place, const ActionLog& givenLog)
{
    const ActionLog log = givenLog ? givenLog : [](const char*, const std::string&) {};
    const BackupFiles backup = BackupFilesOf(game, place);
    const std::string& archivePath = backup.archive;
    const std::string& listPath = backup.removalList;
    UninstallOutcome outcome;
    sys::Failure& first = outcome.firstFailure;

    // The game moved, renamed, on a drive not mounted, behind a link whose target is gone: what
    // the backup files undo is not here, and a folder made in its place would take the player's
    // files back where the game is not. Nothing changes until it is back.
    const std::string& gameFolder = place.*game.gameFolder;
    for (const std::string& folder : {gameFolder, gameFolder + "/cstrike"}) {
        const sys::Status there = sys::ReachFolder(folder);
        if (!there) {
            first = {folder, there.Why()};
            outcome.gameAway = true;
            outcome.backupKept = true;
            place.*game.installedFlag = sys::PathExists(archivePath);
            return outcome;
        }
    }

    // A rewrite of the removal list an earlier uninstall did not finish: its draft is ours.
    const std::string& draftPath = backup.draft;
    if (sys::LookUp(draftPath).kind == sys::EntryKind::file)
        static_cast<void>(sys::RemoveFile(draftPath));

    const Removal removal = RemoveCreated(backup, game, place, log, first);
    const bool restored = RestoreArchive(archivePath, place.*game.contentFolder, log, first);

    outcome.backupKept = !removal.readWhole || !removal.remaining.empty() || !restored;
    if (!outcome.backupKept) {
        // The removal list goes first: an archive left alone still offers the uninstall, which
        // finishes the job; a removal list left alone would not be offered.
        if (removal.listExists)
            outcome.backupKept = !Removed(listPath, first);
        if (!outcome.backupKept)
            outcome.backupKept = !Removed(archivePath, first);
    } else if (removal.listExists && removal.readWhole) {
        // A list naming just what remains, in the old one's place; the old one stays when that fails.
        ReplaceThroughDraft(listPath, draftPath,
                            [&](OutputFile& draft) { return draft.Append(RemovalLines(removal.remaining)); });
    }
    if (outcome.backupKept) {
        KeepUninstallOffered(archivePath, restored);
        for (const std::string& line : removal.remaining)
            log("kept", line);
        for (const std::string& backup : {archivePath, listPath})
            if (sys::PathExists(backup))
                log("kept", backup);
    }
    place.*game.installedFlag = sys::PathExists(archivePath);
    return outcome;
}
