#include "container.h"

#include <cstdint>

#include "little_endian.h"

namespace {

// A signed 32-bit little-endian length at `position`, or -1 when it does not fit.
std::int64_t ReadLength(const char* start, std::size_t length, std::size_t position)
{
    std::uint32_t value = 0;
    if (!ReadLittleEndian32(start, length, position, value))
        return -1;
    return static_cast<std::int32_t>(value);
}

bool Fits(std::size_t length, std::size_t position, std::int64_t size)
{
    return size >= 0 && position <= length && static_cast<std::uint64_t>(size) <= length - position;
}

}  // namespace

bool ReadRecord(const char* start, std::size_t length, std::size_t position, ContainerRecord& record)
{
    const std::int64_t nameLength = ReadLength(start, length, position);
    const std::size_t namePosition = position + 4;
    if (!Fits(length, namePosition, nameLength))
        return false;
    const std::size_t lengthPosition = namePosition + nameLength;
    const std::int64_t dataLength = ReadLength(start, length, lengthPosition);
    const std::size_t dataPosition = lengthPosition + 4;
    if (!Fits(length, dataPosition, dataLength))
        return false;
    record.name.assign(start + namePosition, nameLength);
    record.data = start + dataPosition;
    record.size = dataLength;
    record.next = dataPosition + dataLength;
    return true;
}
