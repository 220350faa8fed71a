#include "verify.h"

#include <algorithm>
#include <cstring>

#include "container.h"
#include "system.h"

namespace {

// Compares in blocks: the largest file of a set is some megabytes.
constexpr std::size_t compareBlock = 1 << 20;

// True when `path` holds exactly the `size` bytes at `data`.
bool HoldsExactly(sys::File& file, const char* data, std::size_t size)
{
    if (file.Size() != size)
        return false;
    std::vector<char> block(std::min(size, compareBlock));
    for (std::size_t at = 0; at < size;) {
        const std::size_t part = std::min(size - at, block.size());
        if (!file.Read(block.data(), part) || std::memcmp(block.data(), data + at, part) != 0)
            return false;
        at += part;
    }
    return true;
}

}  // namespace

std::vector<NotAsShipped> FilesNotAsShipped(const GameProfile& game, const SteamAccount& place)
{
    std::vector<NotAsShipped> differing;
    WalkRecords(game.payload->start, game.payload->length, 0, [&](const ContainerRecord& record) {
        const std::string target = place.*game.contentFolder + record.name;
        sys::File file = sys::File::OpenForReading(target);
        if (!file.IsOpen())
            differing.push_back({target, sys::LookUp(target).kind == sys::EntryKind::none});
        else if (!HoldsExactly(file, record.data, record.size))
            differing.push_back({target, false});
        return true;
    });
    return differing;
}
