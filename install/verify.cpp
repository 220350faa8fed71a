#include "verify.h"

#include <algorithm>
#include <cstring>

#include "container.h"
#include "system.h"

namespace {

// Compares in blocks: the largest file of a set is some megabytes.
constexpr std::size_t compareBlock = 1 << 20;

}  // namespace

Sameness CompareFile(const std::string& path, const char* data, std::size_t size, sys::Reason& why)
{
    sys::File file = sys::File::OpenForReading(path);
    if (!file.IsOpen()) {
        const sys::EntryKind kind = sys::LookUp(path).kind;
        why = file.OpenFailure();
        return kind == sys::EntryKind::none ? Sameness::missing
               : kind == sys::EntryKind::folder ? Sameness::differs
                                                 : Sameness::unreadable;
    }
    if (file.Size() != size)
        return Sameness::differs;
    std::vector<char> block(std::min(size, compareBlock));
    for (std::size_t at = 0; at < size;) {
        const std::size_t part = std::min(size - at, block.size());
        const sys::Status read = file.Read(block.data(), part);
        if (!read) {
            why = read.Why();
            return Sameness::unreadable;
        }
        if (std::memcmp(block.data(), data + at, part) != 0)
            return Sameness::differs;
        at += part;
    }
    return Sameness::same;
}

std::vector<NotAsShipped> FilesNotAsShipped(const GameProfile& game, const SteamAccount& place)
{
    std::vector<NotAsShipped> differing;
    WalkRecords(game.payload->start, game.payload->length, 0, [&](const ContainerRecord& record) {
        const std::string target = place.Game(game.id).contentFolder + record.name;
        sys::Reason why;
        const Sameness state = CompareFile(target, record.data, record.size, why);
        if (state != Sameness::same)
            differing.push_back({target, state, why});
        return true;
    });
    return differing;
}
