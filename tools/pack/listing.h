#pragma once
// What a built container carries, record by record, and how that differs from its set as the
// set stands now: the organiser's way to see that the program ships exactly the set.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct ListedRecord {
    std::string name;
    std::uint64_t size = 0;
    std::uint32_t crc = 0;  // the CRC-32 of the record's data, as zip tools show it
};

// The records of the container at `start` (`length` bytes, wherever it lies: a file of its own or
// a program that carries it) in order; false, with `error` saying where, when the records do not
// fill the container exactly.
bool ListRecords(const char* start, std::size_t length, std::vector<ListedRecord>& records, std::string& error);

// One line per difference between the records and the set's manifest and files; none when the
// container carries exactly the set, in the manifest's order.
std::vector<std::string> CompareWithSet(const std::vector<ListedRecord>& records, const std::string& setFolder,
                                        const std::string& manifestPath);
