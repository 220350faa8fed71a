#pragma once
// Builds a payload container from a file set and its manifest (one record name a line, in
// packing order). A malformed container is never produced: any flaw in the set is an error.

#include <string>
#include <vector>

struct PackResult {
    std::vector<char> container;  // the records, end to end; empty when `error` is set
    std::string error;            // names the offending manifest line or file
};

PackResult PackSet(const std::string& setFolder, const std::string& manifestPath);

// Appends one record: name length, name, data length, data (lengths as 32-bit little-endian).
void AppendRecord(std::vector<char>& container, const std::string& name, const std::string& data);
