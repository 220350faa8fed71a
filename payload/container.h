#pragma once
// Containers: records of (int32 name length, name, int32 data length, data), little-endian,
// packed end to end. The embedded payloads and the backup archive share this layout. A
// container is read where it lies, through its start and length.

#include <cstddef>
#include <string>

struct ContainerRecord {
    std::string name;           // the stored name, owned
    const char* data = nullptr; // view into the container
    std::size_t size = 0;
    std::size_t next = 0;       // where the following record starts
};

// Reads the record that starts at `position` of the `length` bytes at `start`. False, with
// nothing read, when a length is negative or the name or data would run past the end.
bool ReadRecord(const char* start, std::size_t length, std::size_t position, ContainerRecord& record);

// Calls `visit(record)` for each record from `position` on, until `visit` returns false. Like
// the install's walk, the end is tested after each record, so a first record is always read;
// a record that does not fit stops the walk before it is visited.
template <class Visit>
void WalkRecords(const char* start, std::size_t length, std::size_t position, Visit visit)
{
    ContainerRecord record;
    do {
        if (!ReadRecord(start, length, position, record) || !visit(record))
            return;
        position = record.next;
    } while (position < length);
}
