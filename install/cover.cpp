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
        cover.unreadable.NoteFirst(path, entry.reason);
    else if (entry.link)
        cover.unreadable.NoteFirst(path, sys::Reason::Refused(sys::Reason::Own::link));
    return entry.kind != sys::EntryKind::none;
}

}  // namespace

Cover ReadCover(const GameProfile& game, const SteamAccount& place, const std::set<std::string>& names,
                const std::set<std::string>& paths)
{
    const BackupFiles& backup = place.Game(game.id).backup;
    Cover cover;
    cover.archiveExists = There(backup.archive, cover);
    if (cover.archiveExists && !cover.unreadable.Failed()) {
        ArchiveReader archive(backup.archive);
        std::string name;
        bool nameTooLong = false;
        std::uint32_t size = 0;
        while (archive.Next(name, nameTooLong, size)) {
            if (nameTooLong || !names.count(name))
                continue;
            Sha256 sha;
            const sys::Status read = archive.CopyData([&](const char* bytes, std::size_t part) {
                sha.Add(bytes, part);
                return sys::Status();
            });
            if (read)
                cover.backedUp[name] = {size, sha.Finish()};
        }
        if (!archive.Opened() || archive.Failed())
            cover.unreadable.NoteFirst(backup.archive, archive.Why());
        cover.archiveEnd = archive.WholeEnd();
    }
    cover.listExists = There(backup.removalList, cover);
    if (cover.listExists && !cover.unreadable.Failed()) {
        const LinePlacer placer(place, game.id);
        const sys::Status read = ReadLines(backup.removalList, [&](const std::string& line) {
            const PlacedLine placed = placer.Place(line);
            if (paths.count(placed.path))
                cover.listed.insert(placed.path);
            cover.namedGames.Note(placed.gameFolder);
        }, &cover.listExtent);
        if (!read)
            cover.unreadable.NoteFirst(backup.removalList, read.Why());
    }
    cover.recordExists = There(backup.record, cover);
    if (cover.recordExists && !cover.unreadable.Failed()) {
        const sys::Status read = ReadWrittenRecord(backup.record, cover.record);
        if (!read)
            cover.unreadable.NoteFirst(backup.record, read.Why());
        for (const std::string& folder : cover.record.games)
            cover.namedGames.Note(folder);
    }
    return cover;
}
