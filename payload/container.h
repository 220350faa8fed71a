#pragma once
// Containers: records of (int32 name length, name, int32 data length, data), little-endian,
// packed end to end. The embedded payloads and the backup archive share this layout.

#include <cstddef>
#include <string>
#include <vector>

struct ContainerRecord {
    std::string name;           // the stored name, owned
    const char* data = nullptr; // view into the buffer
    std::size_t size = 0;
    std::size_t next = 0;       // where the following record starts
};

// Reads the record that starts at `position`. False, with nothing read, when a length is
// negative or the name or data would run past the end of the buffer.
bool ReadRecord(const std::vector<char>& buffer, std::size_t position, ContainerRecord& record);

// True once the walk has reached or passed the end of the buffer.
inline bool AtEnd(const std::vector<char>& buffer, std::size_t position)
{
    return position >= buffer.size();
}

// Calls `visit(record)` for each record from `position` on. Like the install's walk, the end is
// tested after each record; a record that does not fit stops the walk before it is visited.
template <class Visit>
void WalkRecords(const std::vector<char>& buffer, std::size_t position, Visit visit)
{
    ContainerRecord record;
    do {
        if (!ReadRecord(buffer, position, record))
            return;
        visit(record);
        position = record.next;
    } while (!AtEnd(buffer, position));
}
