#include "install.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "backup_archive.h"
#include "container.h"
#include "cover.h"
#include "output_file.h"
#include "removal_list.h"
#include "safe_paths.h"
#include "system.h"

namespace {

using Result = InstallOutcome::Result;

sys::Reason Refused(sys::Reason::Own own) { return sys::Reason::Refused(own); }

// What the install does for one payload record, decided before anything is changed.
struct Step {
    std::string name;
    const char* data = nullptr;
    std::size_t size = 0;
    std::string target;
    std::vector<std::string> folders;  // to be made on the way to the target, outermost first
    bool backUp = false;               // a player's file that no backup file covers yet
    bool fileInTheWay = false;         // a file stands where a folder on the way belongs
    InstallOutcome stop;               // where the install stops instead, if it does
};

// Decides each step from what stands on disk now and what the backup files already cover.
class Planner {
public:
    Planner(const GameProfile& game, const SteamAccount& place, const Cover& cover)
        : contentFolder(place.*game.contentFolder), gameFolder(place.*game.gameFolder), cover(cover)
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

private:
    void PlanFolder(Step& step, const std::string& folder, bool& missing)
    {
        const sys::Entry entry = missing ? sys::Entry{} : Look(folder);
        switch (entry.kind) {
        case sys::EntryKind::none:
            missing = true;
            if (!IsBelow(folder, gameFolder)) {
                step.stop = {Result::folderFailed, folder, Refused(sys::Reason::Own::gameFolderGone)};
                return;
            }
            step.folders.push_back(folder);
            planned.insert(folder);
            if (!cover.listed.count(folder))
                newFolders.push_back(folder);
            return;
        case sys::EntryKind::file:
        case sys::EntryKind::folder:
            // A link at or above the content folder is the player's layout; below it, the
            // target may lie anywhere, and the uninstall would not follow.
            if (entry.link && IsBelow(folder, contentFolder.substr(0, contentFolder.size() - 1)))
                step.stop = {Result::writeFailed, step.target, Refused(sys::Reason::Own::link)};
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
        const sys::Entry entry = missing ? sys::Entry{} : sys::LookUp(step.target);
        if (entry.kind == sys::EntryKind::unknown) {
            step.stop = {Result::backupFailed, step.target, entry.reason};
        } else if (entry.link) {
            step.stop = {Result::writeFailed, step.target, Refused(sys::Reason::Own::link)};
        } else if (entry.kind == sys::EntryKind::none) {
            if (!cover.listed.count(step.target))
                newLines.push_back(step.target);
        } else {
            step.backUp = !cover.backedUp.count(step.name) && !cover.listed.count(step.target);
        }
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
        step.target = place.*game.contentFolder + record.name;
        steps.push_back(std::move(step));
        return true;
    });
    return steps;
}

// The backup files before anything else changes: the archive (whose presence offers the
// uninstall) with its header, then the removal list with every line this install adds.
InstallOutcome WriteAhead(const std::string& archivePath, const std::string& listPath, const Cover& cover,
                          const std::vector<std::string>& lines)
{
    if (!cover.archiveExists || cover.archiveEnd == 0) {
        OutputFile archive = cover.archiveExists ? OutputFile::Continue(archivePath, 0) : OutputFile::Create(archivePath);
        AppendArchiveHeader(archive);
        const sys::Status written = archive.Close();
        if (!written)
            return {Result::writeFailed, archivePath, written.Why()};
    }
    if (cover.listExists && lines.empty())
        return {};
    OutputFile list = cover.listExists ? OutputFile::Continue(listPath, cover.listExtent.linesEnd)
                                       : OutputFile::Create(listPath);
    const std::uint64_t start = list.End();
    const std::string block = (cover.listExists && cover.listExtent.lastLineOpen ? "\r\n" : "") + RemovalLines(lines);
    if (!list.Append(block))
        static_cast<void>(list.CutBack(start));  // no half line may stay for the uninstall to read
    const sys::Status written = list.Close();
    if (!written)
        return {Result::writeFailed, listPath, written.Why()};
    return {};
}

// Carries out one step: the backup of the player's file, the folders, the file itself.
InstallOutcome Carry(const Step& step, const std::string& archivePath, std::uint64_t& archiveEnd, const ActionLog& log)
{
    if (Planner::EndsHere(step))
        return step.stop;
    if (step.backUp) {
        OutputFile archive = OutputFile::Continue(archivePath, archiveEnd);
        const sys::Status recorded = AppendBackupRecord(archive, step.name, step.target);
        const sys::Status closed = archive.Close();
        if (!recorded || !closed)
            return {Result::backupFailed, step.target, (recorded ? closed : recorded).Why()};
        archiveEnd = archive.End();
        log("backed up", step.target);
    }
    for (const std::string& folder : step.folders) {
        const sys::Status made = sys::MakeFolder(folder);
        if (made)
            log("made folder", folder);
        else if (!sys::PathExists(folder))
            return {Result::folderFailed, folder, made.Why()};
    }
    // Where a file stands in a folder's place, the write fails, and that is all: the next
    // record that needs a folder below it stops the install.
    const sys::Status written = WriteWholeFile(step.target, step.data, step.size);
    if (written)
        log("wrote", step.target);
    else if (!step.fileInTheWay)
        return {Result::writeFailed, step.target, written.Why()};
    return {};
}

InstallOutcome LogStop(const InstallOutcome& outcome, const ActionLog& log)
{
    log("stopped", outcome.path);
    return outcome;
}

}  // namespace

InstallOutcome InstallConfig(const GameProfile& game, SteamAccount& place, const ActionLog& givenLog)
{
    const ActionLog log = givenLog ? givenLog : [](const char*, const std::string&) {};
    const BackupFiles backup = BackupFilesOf(game, place);
    const std::string& archivePath = backup.archive;
    const std::string& listPath = backup.removalList;
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
    const Cover cover = ReadCover(archivePath, listPath, names, paths);
    if (cover.unreadable.Failed())
        return LogStop({Result::writeFailed, cover.unreadable.path, cover.unreadable.reason}, log);

    // Planned up to the step the install stops at, if it does.
    Planner planner(game, place, cover);
    std::size_t planned = 0;
    while (planned < steps.size()) {
        planner.Plan(steps[planned]);
        if (Planner::EndsHere(steps[planned++]))
            break;
    }
    std::vector<std::string> lines = planner.newLines;
    lines.insert(lines.end(), planner.newFolders.rbegin(), planner.newFolders.rend());
    InstallOutcome outcome = WriteAhead(archivePath, listPath, cover, lines);
    if (outcome.result != Result::installed)
        return LogStop(outcome, log);

    std::uint64_t archiveEnd = std::max<std::uint64_t>(cover.archiveEnd, 4);
    for (std::size_t i = 0; i < planned; ++i) {
        outcome = Carry(steps[i], archivePath, archiveEnd, log);
        if (outcome.result != Result::installed)
            return LogStop(outcome, log);
    }
    place.*game.installedFlag = true;
    return outcome;
}
