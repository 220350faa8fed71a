#include "cover.h"

#include "backup_archive.h"
#include "safe_paths.h"
#include "system.h"

namespace {

// Whether a backup file is there; unknown is a failure to read it (and a folder fails to open).
// A link in a backup file's place is refused: the install would write wherever it leads.
bool There(const std::string& path, Cover& cover)
{
    const sys::Entry entry = sys::LookUp(path);
    if (entry.kind == sys::EntryKind::unknown)
        cover.unreadable = {path, entry.reason};
    else if (entry.link && !cover.unreadable.Failed())
        cover.unreadable = {path, sys::Reason::Refused(sys::Reason::Own::link)};
    return entry.kind != sys::EntryKind::none;
}

}  // namespace

Cover ReadCover(const GameProfile& game, const SteamAccount& place, const std::set<std::string>& names,
                const std::set<std::string>& paths)
{
    const BackupFiles backup = BackupFilesOf(game, place);
    const std::string& archivePath = backup.archive;
    const std::string& listPath = backup.removalList;
    Cover cover;
    cover.archiveExists = There(archivePath, cover);
    if (cover.archiveExists && !cover.unreadable.Failed()) {
        ArchiveReader archive(archivePath);
        std::string name;
        bool nameTooLong = false;
        std::uint32_t size = 0;
        while (archive.Next(name, nameTooLong, size))
            if (!nameTooLong && names.count(name))
                cover.backedUp.insert(name);
        if (!archive.Opened() || archive.Failed())
            cover.unreadable = {archivePath, archive.Why()};
        cover.archiveEnd = archive.WholeEnd();
    }
    cover.listExists = There(listPath, cover);
    if (cover.listExists && !cover.unreadable.Failed()) {
        const sys::Status read = ReadRemovalListFile(listPath, [&](const std::string& line) {
            const std::string path = LineAtPlace(line, game, place);
            if (paths.count(path))
                cover.listed.insert(path);
        }, &cover.listExtent);
        if (!read)
            cover.unreadable = {listPath, read.Why()};
    }
    return cover;
}
