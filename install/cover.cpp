#include "cover.h"

#include "backup_archive.h"
#include "system.h"

namespace {

// Whether a backup file is there; unknown is a failure to read it (and a folder fails to open).
bool There(const std::string& path, Cover& cover)
{
    const sys::Entry entry = sys::LookUp(path);
    if (entry.kind == sys::EntryKind::unknown)
        cover.unreadable = {path, entry.reason};
    return entry.kind != sys::EntryKind::none;
}

}  // namespace

Cover ReadCover(const std::string& archivePath, const std::string& listPath, const std::set<std::string>& names,
                const std::set<std::string>& paths)
{
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
        const sys::Status read = ReadRemovalListFile(listPath, [&](const std::string& path) {
            if (paths.count(path))
                cover.listed.insert(path);
        }, &cover.listExtent);
        if (!read)
            cover.unreadable = {listPath, read.Why()};
    }
    return cover;
}
