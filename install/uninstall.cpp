#include "uninstall.h"

#include <algorithm>
#include <set>
#include <vector>

#include "backup_archive.h"
#include "container.h"
#include "folder_view.h"
#include "folders.h"
#include "output_file.h"
#include "removal_list.h"
#include "safe_paths.h"
#include "system.h"
#include "text_encoding.h"
#include "verify.h"
#include "windows_names.h"
#include "written_record.h"

namespace {

// What the backup files say, read before anything changes.
struct BackupRead {
    bool listExists = false;
    sys::Status listRead;               // failed: the list could not be read (to its limit)
    std::vector<std::string> lines;     // what the list's lines name here, each once
    std::set<std::string> lineKeys;     // the same, by sys::NameKey
    bool recordExists = false;
    sys::Status recordRead;
    WrittenRecord record;
    NamedGames namedGames;  // the game's folders the lines and the record name
    std::set<std::string> restored;       // what the archive puts back, by sys::NameKey
    sys::Status archiveRead;              // failed: what the archive puts back is not known whole
};

// Reads a backup file that is there with `read`; a link in its place is not read through.
sys::Status ReadBackup(const std::string& path, bool& exists, const std::function<sys::Status()>& read)
{
    const sys::Entry entry = sys::LookUp(path);
    exists = entry.kind != sys::EntryKind::none;
    if (!exists)
        return sys::Status();
    if (entry.link)
        return sys::Status::Failed(sys::Reason::Refused(sys::Reason::Own::link));
    return read();
}

// The paths the archive holds a record of that the uninstall writes back (RestoreArchive's rules).
bool Restorable(const std::string& name, bool nameTooLong, const std::string& target)
{
    return !nameTooLong && IsWindowsName(name) && Utf16Length(target) <= sys::maxPathUnits;
}

BackupRead ReadBackupFiles(const BackupFiles& backup, const GameAtPlace& at, const SteamAccount& place)
{
    BackupRead read;
    const LinePlacer placer(place, at.id);
    read.listRead = ReadBackup(backup.removalList, read.listExists, [&] {
        return ReadLines(backup.removalList, [&](const std::string& line) {
            const PlacedLine placed = placer.Place(line);
            if (!placed.path.empty() && read.lineKeys.insert(sys::NameKey(placed.path)).second)
                read.lines.push_back(placed.path);
            read.namedGames.Note(placed.gameFolder);
        });
    });
    read.recordRead = ReadBackup(backup.record, read.recordExists, [&] { return ReadWrittenRecord(backup.record, read.record); });
    for (const std::string& folder : read.record.games)
        read.namedGames.Note(folder);
    ArchiveReader archive(backup.archive);
    std::string name;
    bool nameTooLong = false;
    std::uint32_t size = 0;
    while (archive.Next(name, nameTooLong, size)) {
        const std::string target = at.contentFolder + name;
        if (Restorable(name, nameTooLong, target))
            read.restored.insert(sys::NameKey(target));
    }
    if (archive.Failed() || (!archive.Opened() && sys::LookUp(backup.archive).kind != sys::EntryKind::none))
        read.archiveRead = sys::Status::Failed(archive.Why());
    return read;
}

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

// Removes one folder of ours; true when it still stands and is ours to remove: empty, or
// holding only what remains of ours. A folder holding the player's files stays, and is done.
bool FolderRemains(const std::string& folder, const std::vector<std::string>& remaining, const ActionLog& log,
                   sys::Failure& first)
{
    const sys::Status removed = sys::RemoveFolder(folder);
    if (removed) {
        log(Did::removed, folder, {});
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

// The files the record says an install wrote, and those of this program's own set, each handed to
// `removeIfOurs` with what tells whether it still holds our bytes.
void RemoveOursByBytes(const BackupRead& read, const GameProfile& game, const GameAtPlace& at,
                       const std::function<void(const std::string&, const std::function<Sameness(std::uint64_t, sys::Reason&)>&)>&
                           removeIfOurs)
{
    const std::string& gameFolder = at.gameFolder;
    const std::string& contentFolder = at.contentFolder;
    const std::string contentPath = contentFolder.substr(0, contentFolder.size() - 1);
    for (const auto& [key, versions] : read.record.files) {
        const std::string path = gameFolder + "/" + read.record.fileNames.at(key);
        if (IsRemovableLine(path, gameFolder, contentFolder) && IsBelow(path, contentPath))
            removeIfOurs(path, [&, &versions = versions](std::uint64_t size, sys::Reason& why) {
                if (std::none_of(versions.begin(), versions.end(), [&](const WrittenBytes& v) { return v.size == size; }))
                    return Sameness::differs;
                WrittenBytes bytes;
                const sys::Status hashed = BytesOfFile(path, bytes);
                why = hashed.Why();
                return !hashed ? Sameness::unreadable
                       : std::find(versions.begin(), versions.end(), bytes) != versions.end() ? Sameness::same
                                                                                               : Sameness::differs;
            });
    }
    WalkRecords(game.payload->start, game.payload->length, 0, [&](const ContainerRecord& record) {
        const std::string path = contentFolder + record.name;
        removeIfOurs(path, [&](std::uint64_t size, sys::Reason& why) {
            return size != record.size ? Sameness::differs : CompareFile(path, record.data, record.size, why);
        });
        return true;
    });
}

// What remains of ours after the removal.
struct Remaining {
    std::vector<std::string> lines;  // removal lines naming what is still there: the list named just these replaces the old one
    // Something the record or the set knows is ours could not go, or could not be looked at. It
    // never becomes a removal line: a line is an order to delete whatever stands there, and the
    // file may hold the player's bytes by the next uninstall.
    bool ours = false;
};

// Removes what is ours: each removal line, each file the record says an install wrote while it
// holds those bytes, each file of this program's own set holding exactly its bytes (no file the
// archive puts back), then each listed or recorded folder, innermost first. Whatever of ours
// could not go, or could not be looked at, remains.
Remaining RemoveOurs(const BackupRead& read, const GameProfile& game, const GameAtPlace& at, const ActionLog& log,
                     sys::Failure& first)
{
    const std::string& gameFolder = at.gameFolder;
    const std::string& contentFolder = at.contentFolder;
    FolderView view(gameFolder, contentFolder);
    Remaining remaining;
    std::vector<std::string> folders;
    std::set<std::string> handled;      // by sys::NameKey: each path the record or the set names, once
    std::vector<std::string> standing;  // what of ours still stands
    const auto listed = [&](const std::string& path) { return read.lineKeys.count(sys::NameKey(path)) > 0; };
    const auto stays = [&](const std::string& path, const sys::Reason& why) {
        standing.push_back(path);
        if (listed(path))
            remaining.lines.push_back(path);
        else
            remaining.ours = true;
        first.NoteFirst(path, why);
    };
    const auto remove = [&](const std::string& path) {
        if (const sys::Status removed = sys::RemoveFile(path))
            log(Did::removed, path, {});
        else if (sys::LookUp(path).kind != sys::EntryKind::none)
            stays(path, removed.Why());
    };
    // A file the record or the set knows is ours while `ours` says its bytes are.
    const auto removeIfOurs = [&](const std::string& path, const std::function<Sameness(std::uint64_t size, sys::Reason& why)>& ours) {
        if (listed(path) || !handled.insert(sys::NameKey(path)).second || read.restored.count(sys::NameKey(path)))
            return;
        const FolderView::Seen seen = view.Look(path);
        sys::Reason why = seen.reason;
        const Sameness sameness = seen.kind == sys::EntryKind::unknown ? Sameness::unreadable
                                  : seen.kind != sys::EntryKind::file || seen.link ? Sameness::differs
                                                                                     : ours(seen.size, why);
        if (sameness == Sameness::same)
            remove(path);
        else if (sameness == Sameness::unreadable)
            stays(path, why);  // it may be ours: what could not be looked at stays
    };

    for (const std::string& line : read.lines) {
        const FolderView::Seen seen = view.Look(line);
        if (seen.kind == sys::EntryKind::unknown)
            stays(line, seen.reason);  // a link on the way, or the system could not tell
        else if (seen.link)
            stays(line, sys::Reason::Refused(sys::Reason::Own::link));  // never deleted through
        else if (seen.kind == sys::EntryKind::folder)
            folders.push_back(line);
        else if (seen.kind == sys::EntryKind::file)
            remove(line);
    }
    // Without knowing what the archive puts back, a player's file that still holds our bytes
    // cannot be told from ours: those wait for an uninstall that can read the archive.
    if (!read.archiveRead) {
        remaining.ours = true;
        first.NoteFirst(at.backup.archive, read.archiveRead.Why());
    } else {
        RemoveOursByBytes(read, game, at, removeIfOurs);
    }
    for (const auto& [key, relative] : read.record.folders) {
        const std::string path = gameFolder + "/" + relative;
        if (!IsRemovableLine(path, gameFolder, contentFolder) || listed(path) || !handled.insert(sys::NameKey(path)).second)
            continue;
        const FolderView::Seen seen = view.Look(path);
        if (seen.kind == sys::EntryKind::folder && !seen.link)
            folders.push_back(path);
        else if (seen.kind == sys::EntryKind::unknown)
            stays(path, seen.reason);
    }
    std::stable_sort(folders.begin(), folders.end(),
                     [](const std::string& a, const std::string& b) { return Depth(a) > Depth(b); });
    for (const std::string& folder : folders)
        if (FolderRemains(folder, standing, log, first))
            stays(folder, sys::Reason());
    return remaining;
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
        if (!Restorable(name, nameTooLong, target))
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
            log(Did::restored, target, {});
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

UninstallOutcome UninstallConfig(const GameProfile& game, const SteamAccount& place, const ActionLog& givenLog,
                                 const std::vector<SteamAccount>& places)
{
    const ActionLog log = givenLog ? givenLog : NoLog;
    const GameAtPlace& at = place.Game(game.id);
    const BackupFiles& backup = at.backup;
    UninstallOutcome outcome;
    sys::Failure& first = outcome.firstFailure;
    const auto nothingChanged = [&] {
        outcome.backupKept = true;
        outcome.installed = sys::PathExists(backup.archive);
        return outcome;
    };

    // The game moved, renamed, on a drive not mounted, behind a link whose target is gone: what
    // the backup files undo is not here, and a folder made in its place would take the player's
    // files back where the game is not. Nothing changes until it is back.
    const std::string& gameFolder = at.gameFolder;
    for (const std::string& folder : {gameFolder, gameFolder + "/cstrike"}) {
        const sys::Status there = sys::ReachFolder(folder);
        if (!there) {
            first = {folder, there.Why()};
            outcome.gameAway = true;
            return nothingChanged();
        }
    }

    // Backup files that cannot be read whole do not say where they belong, nor all that is ours:
    // nothing changes until they can be.
    const BackupRead read = ReadBackupFiles(backup, at, place);
    if (!read.listRead || !read.recordRead) {
        first = !read.listRead ? sys::Failure{backup.removalList, read.listRead.Why()}
                               : sys::Failure{backup.record, read.recordRead.Why()};
        return nothingChanged();
    }
    // Backup files copied here from the game at another place would put that player's files over
    // this one's, and take this one's for ours.
    const Belonging belonging = GameTheyBelongTo(read.namedGames.Folders(), place, game.id, places);
    if (!belonging.elsewhere.empty() || belonging.unknown.Failed()) {
        outcome.elsewhere = !belonging.elsewhere.empty();
        first = outcome.elsewhere ? sys::Failure{belonging.elsewhere, {}} : belonging.unknown;
        return nothingChanged();
    }

    // A rewrite of the removal list an earlier uninstall did not finish: its draft is ours.
    if (sys::LookUp(backup.draft).kind == sys::EntryKind::file)
        static_cast<void>(sys::RemoveFile(backup.draft));

    const Remaining remaining = RemoveOurs(read, game, at, log, first);
    const bool restored = RestoreArchive(backup.archive, at.contentFolder, log, first);

    outcome.backupKept = !remaining.lines.empty() || remaining.ours || !restored;
    if (!outcome.backupKept) {
        // The archive goes last: left alone, it still offers the uninstall, which finishes the
        // job; a removal list or record left alone would not be offered.
        for (const std::string& file : {backup.removalList, backup.record, backup.archive})
            if (!outcome.backupKept && !Removed(file, first))
                outcome.backupKept = true;
    } else if (read.listExists) {
        // A list naming just what remains, in the old one's place; the old one stays when that fails.
        ReplaceThroughDraft(backup.removalList, backup.draft,
                            [&](OutputFile& draft) { return draft.Append(RemovalLines(remaining.lines)); });
    }
    if (outcome.backupKept) {
        KeepUninstallOffered(backup.archive, restored);
        for (const std::string& line : remaining.lines)
            log(Did::kept, line, {});
        for (const std::string& file : {backup.archive, backup.removalList, backup.record})
            if (sys::PathExists(file))
                log(Did::kept, file, {});
    }
    outcome.installed = sys::PathExists(backup.archive);
    return outcome;
}
