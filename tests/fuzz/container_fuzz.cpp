// Walks arbitrary bytes as a container: every visited record must lie inside the buffer, match
// the lengths stored in front of it and move the walk forward, and the walk must visit exactly
// the whole records that a plain reading of the layout finds.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "container.h"
#include "little_endian.h"

namespace {

void Require(bool condition)
{
    if (!condition)
        std::abort();
}

std::int64_t Le32At(const std::vector<char>& buffer, std::size_t position)
{
    return static_cast<std::int32_t>(DecodeLittleEndian32(buffer.data() + position));
}

// How many records the layout holds before the first one that does not fit.
std::size_t WholeRecords(const std::vector<char>& buffer)
{
    const std::uint64_t size = buffer.size();
    std::uint64_t position = 0;
    std::size_t records = 0;
    do {
        if (size - position < 4)
            break;
        const std::int64_t nameLength = Le32At(buffer, position);
        if (nameLength < 0 || size - position - 4 < static_cast<std::uint64_t>(nameLength) + 4)
            break;
        const std::int64_t dataLength = Le32At(buffer, position + 4 + nameLength);
        if (dataLength < 0 || size - position - 8 - nameLength < static_cast<std::uint64_t>(dataLength))
            break;
        position += 8 + nameLength + dataLength;
        ++records;
    } while (position < size);
    return records;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // An exact-size heap copy, so a read past the end is a heap overflow for ASan.
    const std::vector<char> buffer(data, data + size);
    const char* begin = buffer.data();
    std::size_t position = 0;
    std::size_t records = 0;
    WalkRecords(buffer.data(), buffer.size(), 0, [&](const ContainerRecord& record) {
        Require(position + 8 <= buffer.size());
        Require(Le32At(buffer, position) == static_cast<std::int64_t>(record.name.size()));
        Require(record.name.compare(0, record.name.size(), begin + position + 4, record.name.size()) == 0);
        Require(record.data == begin + position + 8 + record.name.size());
        Require(Le32At(buffer, position + 4 + record.name.size()) == static_cast<std::int64_t>(record.size));
        Require(record.size <= buffer.size() && record.data + record.size <= begin + buffer.size());
        Require(record.next == position + 8 + record.name.size() + record.size);
        Require(record.next > position && record.next <= buffer.size());
        position = record.next;
        ++records;
        return true;
    });
    Require(records == WholeRecords(buffer));

    // Reading at and past the end is refused, never read.
    ContainerRecord record;
    for (std::size_t back = 0; back <= 8 && back <= size; ++back)
        if (ReadRecord(buffer.data(), buffer.size(), size - back, record))
            Require(record.next <= buffer.size());
    Require(!ReadRecord(buffer.data(), buffer.size(), size + 1, record));
    return 0;
}
