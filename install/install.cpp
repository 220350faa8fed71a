#include "install.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "backup_archive.h"
#include "container.h"
#include "cover.h"
#include "output_file.h"
#include "removal_list.h"
#include "safe_paths.h"
#include "sha256.h"
#include "verify.h"
#include "written_record.h"
#include "system.h"

namespace {

using Result = InstallOutcome::Result;


// What the install does for one payload record, decided before anything is changed.
struct Step {
    std::string name;
    const char* data = nullptr;
    std::size_t size = 0;
    WrittenBytes bytes;                // what the record says it wrote
    std::string target;
    std::vector<std::string> folders;  // to be made on the way to the target, outermost first
    bool backUp = false;               // a player's file that no backup file covers yet
    bool skip = false;                 // ours, and standing as shipped: left alone
    bool fileInTheWay = false;         // a file stands where a folder on the way belongs
    std::string recordLines;           // what the record gains for this step
    InstallOutcome stop;               // where the install stops instead, if it does
};

// `path` relative to the game's folder, as the record names it.
std::string Relative(const std::string& path, const std::string& gameFolder)
{
    return path.substr(gameFolder.size() + 1);
}

// Decides each step from what stands on disk now and what the backup files already cover.
class Planner {
public:
    Planner(const GameProfile& game, const SteamAccount& place, const Cover& cover, Rewrite rewrite)
        : contentFolder(place.Game(game.id).contentFolder), gameFolder(place.Game(game.id).gameFolder), cover(cover),
          rewrite(rewrite)
    {
    }

    void Plan(Step& step)
    {
        bool missing = false;  // below a missing folder, or a file, nothing stands either
        for (std::size_t slash = step.target.find('/'); slash != std::string::npos && !EndsHere(step);
             slash = step.target.find('/', slash + 1)) {
            const std::string folder = step.target.substr(0, slash);
            if (folder.size() > 3 && !planned.count(folder))
                PlanFolder(step, folder, missing);
        }
        if (!EndsHere(step))
            PlanTarget(step, missing);
    }

    static bool EndsHere(const Step& step) { return step.stop.result != Result::installed; }

    // New removal lines, files in the payload's order, then folders innermost first.
    std::vector<std::string> newLines;
    std::vector<std::string> newFolders;
    // Files someone else changed since an install wrote them (Rewrite::onlyOurs).
    std::vector<NotAsShipped> changed;

private:
    void PlanFolder(Step& step, const std::string& folder, bool& missing)
    {
        const sys::Entry entry = missing ? sys::Entry{} : Look(folder);
        switch (entry.kind) {
        case sys::EntryKind::none:
            missing = true;
            if (!IsBelow(folder, gameFolder)) {
                step.stop = {Result::folderFailed, folder, sys::Reason::Refused(sys::Reason::Own::gameFolderGone)};
                return;
            }
            step.folders.push_back(folder);
            planned.insert(folder);
            if (!cover.listed.count(folder))
                newFolders.push_back(folder);
            if (!cover.record.HasFolder(Relative(folder, gameFolder)))
                step.recordLines += FolderLine(Relative(folder, gameFolder)) + "\r\n";
            return;
        case sys::EntryKind::file:
        case sys::EntryKind::folder:
            // A link at or above the game's folder whose target is gone: the game is away.
            if (entry.link && !IsBelow(folder, gameFolder)) {
                const sys::Status reached = sys::ReachFolder(folder);
                if (!reached) {
                    step.stop = {Result::folderFailed, folder, reached.Why()};
                    return;
                }
            }
            // A link at or above the content folder is the player's layout; below it, the
            // target may lie anywhere, and the uninstall would not follow.
            if (entry.link && IsBelow(folder, contentFolder.substr(0, contentFolder.size() - 1)))
                step.stop = {Result::writeFailed, step.target, sys::Reason::Refused(sys::Reason::Own::link)};
            else if (entry.kind == sys::EntryKind::file)
                step.fileInTheWay = missing = true;
            return;
        case sys::EntryKind::unknown:
            step.stop = {Result::writeFailed, step.target, entry.reason};
            return;
        }
    }

    void PlanTarget(Step& step, bool missing)
    {
        const std::string relative = Relative(step.target, gameFolder);
        const sys::Entry entry = missing ? sys::Entry{} : sys::LookUp(step.target);
        if (entry.kind == sys::EntryKind::unknown) {
            step.stop = {Result::backupFailed, step.target, entry.reason};
        } else if (entry.link) {
            step.stop = {Result::writeFailed, step.target, sys::Reason::Refused(sys::Reason::Own::link)};
        } else if (entry.kind == sys::EntryKind::none) {
            if (!cover.listed.count(step.target))
                newLines.push_back(step.target);
        } else if (!cover.backedUp.count(step.name) && !cover.listed.count(step.target) && !Recorded(step, relative)) {
            step.backUp = true;  // a player's file no install has touched, or one put back since
        } else if (rewrite != Rewrite::everyFile) {
            Converge(step, relative);
        }
        if (!step.skip && !cover.record.HasFile(relative, step.bytes))
            step.recordLines += FileLine(relative, step.bytes) + "\r\n";
    }

    // True when the target holds bytes the record says an install wrote there: ours, though a
    // damaged or lost removal list no longer names it. A file the record names with other bytes
    // may be the player's, put back by an uninstall whose archive then went: backed up again.
    bool Recorded(const Step& step, const std::string& relative) const
    {
        if (!cover.record.files.count(sys::NameKey(relative)))
            return false;
        WrittenBytes bytes;
        return BytesOfFile(step.target, bytes) && cover.record.HasFile(relative, bytes);
    }

    // A file the backup files cover: left alone when it stands as shipped; written when it holds
    // what an install wrote or the player's bytes the archive holds; else changed since.
    void Converge(Step& step, const std::string& relative)
    {
        sys::Reason why;
        Sameness sameness = CompareFile(step.target, step.data, step.size, why);
        if (sameness == Sameness::same) {
            step.skip = true;
            return;
        }
        if (sameness != Sameness::unreadable) {
            WrittenBytes bytes;
            const sys::Status read = BytesOfFile(step.target, bytes);
            const auto backedUp = cover.backedUp.find(step.name);
            if (!read) {
                sameness = Sameness::unreadable;
                why = read.Why();
            } else if ((backedUp != cover.backedUp.end() && backedUp->second == bytes) ||
                       cover.record.HasFile(relative, bytes)) {
                return;
            }
        }
        if (rewrite == Rewrite::onlyOurs)
            changed.push_back({step.target, sameness == Sameness::unreadable ? sameness : Sameness::differs, why});
    }

    sys::Entry Look(const std::string& folder)
    {
        auto known = seen.find(folder);
        if (known == seen.end())
            known = seen.emplace(folder, sys::LookUp(folder)).first;
        return known->second;
    }

    const std::string& contentFolder;
    const std::string& gameFolder;
    const Cover& cover;
    const Rewrite rewrite;
    std::map<std::string, sys::Entry> seen;  // folders looked up, each once a run
    std::set<std::string> planned;           // folders an earlier step makes
};

// Every target, with its record, in the payload's order.
std::vector<Step> Steps(const GameProfile& game, const SteamAccount& place)
{
    std::vector<Step> steps;
    WalkRecords(game.payload->start, game.payload->length, 0, [&](const ContainerRecord& record) {
        Step step;
        step.name = record.name;
        step.data = record.data;
        step.size = record.size;
        step.bytes = {record.size, RecordSum(*game.payload, steps.size(), record.data, record.size)};
        step.target = place.Game(game.id).contentFolder + record.name;
        steps.push_back(std::move(step));
        return true;
    });
    return steps;
}

// Where an appended piece of a backup file may go again: the file, and its end before it.
struct Appending {
    std::optional<OutputFile> file;
    std::uint64_t start = 0;
};

// Flushes and closes a backup file written ahead; failed when its bytes may not be on the disk.
sys::Status Finish(Appending& appending)
{
    if (!appending.file)
        return sys::Status();
    const sys::Status flushed = appending.file->Flush();
    if (!flushed)
        static_cast<void>(appending.file->CutBack(appending.start));
    const sys::Status closed = appending.file->Close();
    return flushed ? closed : flushed;
}

// Adds `block` to a file of lines (the removal list, the record) after its last whole line, or
// makes the file; a block that does not go in whole goes again, so that no half line stays.
void AppendLines(Appending& appending, const std::string& path, bool exists, const ListExtent& extent,
                 const std::string& block)
{
    appending.file.emplace(exists ? OutputFile::Continue(path, extent.linesEnd) : OutputFile::Create(path));
    appending.start = appending.file->End();
    if (!appending.file->Append(block))
        static_cast<void>(appending.file->CutBack(appending.start));
}

// What goes before lines added to a file whose last line has no line end yet.
std::string LineEndBefore(bool exists, const ListExtent& extent) { return exists && extent.lastLineOpen ? "\r\n" : ""; }

// Where this install's pieces of the backup files lie: the archive's and the record's ends after
// each step's piece, and the removal list's end before this install's lines (what goes before
// them).
struct WrittenAhead {
    std::vector<std::uint64_t> archiveEndAfter;  // one per step; empty when the archive was not opened
    std::vector<std::uint64_t> recordEndAfter;   // one per step; empty when the record was not opened
    std::optional<std::uint64_t> listStart;
    std::string listPrefix;
};

// The backup files before anything else changes: the archive (whose presence offers the
// uninstall) with its header and a record of each player's file about to change, then the
// removal list with every line this install adds, and the record with what it is about to make
// and write; then each is flushed once, so that what undoes the install is on the disk before a
// player's file changes. If that fails, what this install added to them goes again: an archive
// record would stand for a file the install did not change, which the player may still change
// before an uninstall puts the recorded bytes back.
InstallOutcome WriteAhead(const BackupFiles& backup, const Cover& cover, const std::string& gameFolder,
                          const std::vector<Step>& steps, const std::vector<std::string>& lines, WrittenAhead& written)
{
    Appending archive, list, record;
    InstallOutcome stop;  // a player's file that could not be backed up
    const bool header = !cover.archiveExists || cover.archiveEnd == 0;
    if (header || std::any_of(steps.begin(), steps.end(), [](const Step& step) { return step.backUp; })) {
        archive.file.emplace(cover.archiveExists ? OutputFile::Continue(backup.archive, cover.archiveEnd)
                                                 : OutputFile::Create(backup.archive));
        if (header)
            AppendArchiveHeader(*archive.file);
        archive.start = archive.file->End();
        for (const Step& step : steps) {
            const sys::Status recorded = step.backUp ? AppendBackupRecord(*archive.file, step.name, step.target) : sys::Status();
            if (!recorded) {
                stop = {Result::backupFailed, step.target, recorded.Why()};
                break;
            }
            written.archiveEndAfter.push_back(archive.file->End());
        }
        // An archive that could not be made, with nothing to back up: no list without it.
        if (stop.result == Result::installed && !archive.file->State())
            stop = {Result::writeFailed, backup.archive, archive.file->State().Why()};
    }
    if (stop.result == Result::installed && (!cover.listExists || !lines.empty())) {
        written.listPrefix = LineEndBefore(cover.listExists, cover.listExtent);
        AppendLines(list, backup.removalList, cover.listExists, cover.listExtent, written.listPrefix + RemovalLines(lines));
        written.listStart = list.start;
    }
    const bool newGame = std::find(cover.record.games.begin(), cover.record.games.end(), gameFolder) == cover.record.games.end();
    if (stop.result == Result::installed &&
        (!cover.recordExists || newGame || std::any_of(steps.begin(), steps.end(), [](const Step& step) {
             return !step.recordLines.empty();
         }))) {
        std::string block = LineEndBefore(cover.recordExists, cover.record.extent) +
                            (newGame ? GameLine(gameFolder) + "\r\n" : std::string());
        const std::uint64_t start = cover.recordExists ? cover.record.extent.linesEnd : 0;
        for (const Step& step : steps) {
            block += step.recordLines;
            written.recordEndAfter.push_back(start + block.size());
        }
        AppendLines(record, backup.record, cover.recordExists, cover.record.extent, block);
    }
    const sys::Status recordFlushed = Finish(record);
    const sys::Status listed = Finish(list);
    // Without the lines and the record, the archive's new records stand for nothing done.
    if ((!listed || !recordFlushed || stop.result != Result::installed) && archive.file)
        static_cast<void>(archive.file->CutBack(archive.start));
    const sys::Status backedUp = Finish(archive);
    if (stop.result != Result::installed)
        return stop;
    if (!backedUp)
        return {Result::writeFailed, backup.archive, backedUp.Why()};
    if (!listed)
        return {Result::writeFailed, backup.removalList, listed.Why()};
    if (!recordFlushed)
        return {Result::writeFailed, backup.record, recordFlushed.Why()};
    return {};
}

// Carries out one step: the folders on the way, then the file itself.
InstallOutcome Carry(const Step& step, const ActionLog& log)
{
    if (Planner::EndsHere(step))
        return step.stop;
    if (step.skip)
        return {};
    if (step.backUp)
        log(Did::backedUp, step.target, {});
    for (const std::string& folder : step.folders) {
        const sys::Status made = sys::MakeFolder(folder);
        if (made)
            log(Did::madeFolder, folder, {});
        else if (!sys::PathExists(folder))
            return {Result::folderFailed, folder, made.Why()};
    }
    // Where a file stands in a folder's place, the write fails, and that is all: the next
    // record that needs a folder below it stops the install.
    const sys::Status written = WriteWholeFile(step.target, step.data, step.size);
    if (written)
        log(Did::wrote, step.target, {});
    else if (!step.fileInTheWay)
        return {Result::writeFailed, step.target, written.Why()};
    return {};
}

// An install that stopped at `steps[reached]` takes back what it wrote ahead for the steps after
// it, which it never began: an archive record would put back, at the uninstall, bytes the player
// may change meanwhile, and a removal line would delete a file the player or the game makes
// there. Each file is cut back and flushed; where that fails, it keeps what it had.
void TakeBackUnreached(const BackupFiles& backup, const std::vector<Step>& steps, std::size_t reached,
                       const std::vector<std::string>& lines, const WrittenAhead& written)
{
    // The archive and the record hold each step's piece in the steps' order: cut back after the
    // step it stopped at.
    for (const auto& [path, ends] : {std::pair{&backup.archive, &written.archiveEndAfter},
                                     std::pair{&backup.record, &written.recordEndAfter}})
        if (reached + 1 < ends->size() && (*ends)[reached] < ends->back()) {
            OutputFile file = OutputFile::Continue(*path, (*ends)[reached]);
            static_cast<void>(file.Flush());
            static_cast<void>(file.Close());
        }
    if (!written.listStart)
        return;
    std::set<std::string> begun;  // the files and folders of the steps up to the one it stopped at
    for (std::size_t i = 0; i <= reached; ++i) {
        begun.insert(steps[i].target);
        begun.insert(steps[i].folders.begin(), steps[i].folders.end());
    }
    std::vector<std::string> kept;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(kept),
                 [&](const std::string& line) { return begun.count(line) > 0; });
    if (kept.size() == lines.size())
        return;
    // The list as it was before this install, then the lines kept, in the list's place in one
    // step, so that a kill leaves one list or the other.
    ReplaceThroughDraft(backup.removalList, backup.draft, [&](OutputFile& draft) {
        sys::File old = sys::File::OpenForReading(backup.removalList);
        bool copied = old.IsOpen();
        std::vector<char> slice(64 * 1024);
        for (std::uint64_t at = 0; copied && at < *written.listStart; at += slice.size()) {
            const std::size_t part = static_cast<std::size_t>(std::min<std::uint64_t>(slice.size(), *written.listStart - at));
            copied = old.Read(slice.data(), part) && draft.Append(slice.data(), part);
        }
        return old.Close() && copied && draft.Append(written.listPrefix + RemovalLines(kept));
    });
}

// Where an install stopped: the log says so, and the outcome whether the archive is there now.
InstallOutcome LogStop(InstallOutcome outcome, const BackupFiles& backup, const ActionLog& log)
{
    log(Did::stopped, outcome.path, outcome.reason);
    outcome.installed = sys::PathExists(backup.archive);
    return outcome;
}

}  // namespace

InstallOutcome InstallConfig(const GameProfile& game, const SteamAccount& place, const ActionLog& givenLog,
                             const std::vector<SteamAccount>& places, Rewrite rewrite)
{
    const ActionLog log = givenLog ? givenLog : NoLog;
    const BackupFiles& backup = place.Game(game.id).backup;
    std::vector<Step> steps = Steps(game, place);

    // Only what this payload can make is looked for in the backup files.
    std::set<std::string> names, paths;
    for (const Step& step : steps) {
        names.insert(step.name);
        for (std::size_t slash = step.target.find('/'); slash != std::string::npos;
             slash = step.target.find('/', slash + 1))
            paths.insert(step.target.substr(0, slash));
        paths.insert(step.target);
    }
    const Cover cover = ReadCover(game, place, names, paths);
    if (cover.unreadable.Failed())
        return LogStop({Result::writeFailed, cover.unreadable.path, cover.unreadable.reason}, backup, log);
    // Backup files copied here from another place would take this place's files for that one's.
    const Belonging belonging = GameTheyBelongTo(cover.namedGames.Folders(), place, game.id, places);
    if (!belonging.elsewhere.empty())
        return LogStop({Result::elsewhere, belonging.elsewhere, {}}, backup, log);
    if (belonging.unknown.Failed())
        return LogStop({Result::writeFailed, belonging.unknown.path, belonging.unknown.reason}, backup, log);

    // Planned up to the step the install stops at, if it does.
    Planner planner(game, place, cover, rewrite);
    std::size_t planned = 0;
    while (planned < steps.size()) {
        planner.Plan(steps[planned]);
        if (Planner::EndsHere(steps[planned++]))
            break;
    }
    steps.resize(planned);
    // Stopped before its first file (the game's folder away, say): nothing to undo, nothing made.
    if (!steps.empty() && Planner::EndsHere(steps.front()))
        return LogStop(steps.front().stop, backup, log);
    // Someone else changed files since an install wrote them: nothing is written over them.
    if (!planner.changed.empty()) {
        InstallOutcome changed(Result::changedSince, std::string(), sys::Reason());
        changed.changed = planner.changed;
        changed.installed = cover.archiveExists;
        return changed;
    }
    // Every file stands as shipped: nothing to write, not even the backup files.
    if (std::all_of(steps.begin(), steps.end(), [](const Step& step) { return step.skip; }) &&
        !Planner::EndsHere(steps.back())) {
        InstallOutcome nothing;
        nothing.installed = true;
        return nothing;
    }
    std::vector<std::string> lines = planner.newLines;
    lines.insert(lines.end(), planner.newFolders.rbegin(), planner.newFolders.rend());
    WrittenAhead written;
    InstallOutcome outcome = WriteAhead(backup, cover, place.Game(game.id).gameFolder, steps, lines, written);
    if (outcome.result != Result::installed)
        return LogStop(outcome, backup, log);

    std::size_t files = 0;
    for (std::size_t at = 0; at < steps.size(); ++at) {
        outcome = Carry(steps[at], log);
        if (outcome.result != Result::installed) {
            TakeBackUnreached(backup, steps, at, lines, written);
            return LogStop(outcome, backup, log);
        }
        files += steps[at].skip ? 0 : 1;
    }
    outcome.written = files;
    outcome.installed = true;
    return outcome;
}
