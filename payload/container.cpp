#include "container.h"

#include <cstdint>

#include "little_endian.h"

namespace {

// A signed 32-bit little-endian length at `position`, or -1 when it does not fit.
std::int64_t ReadLength(const std::vector<char>& buffer, std::size_t position)
{
    std::uint32_t value = 0;
    if (!ReadLittleEndian32(buffer.data(), buffer.size(), position, value))
        return -1;
    return static_cast<std::int32_t>(value);
}

bool Fits(const std::vector<char>& buffer, std::size_t position, std::int64_t length)
{
    return length >= 0 && position <= buffer.size() &&
           static_cast<std::uint64_t>(length) <= buffer.size() - position;
}

}  // namespace

bool ReadRecord(const std::vector<char>& buffer, std::size_t position, ContainerRecord& record)
{
    std::int64_t nameLength = ReadLength(buffer, position);
    std::size_t namePosition = position + 4;
    if (!Fits(buffer, namePosition, nameLength))
        return false;
    std::size_t lengthPosition = namePosition + nameLength;
    std::int64_t dataLength = ReadLength(buffer, lengthPosition);
    std::size_t dataPosition = lengthPosition + 4;
    if (!Fits(buffer, dataPosition, dataLength))
        return false;
    record.name.assign(buffer.data() + namePosition, nameLength);
    record.data = buffer.data() + dataPosition;
    record.size = dataLength;
    record.next = dataPosition + dataLength;
    return true;
}
