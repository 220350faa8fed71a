#pragma once
// Builds a payload container from a file set and its manifest (one record name a line, in
// packing order). The set is checked first (set_check.h); a malformed container is never
// produced: any error in the set refuses it.

#include <string>
#include <vector>

#include "set_check.h"

struct PackResult {
    std::vector<char> container;     // the records, end to end; empty when `error` is set
    std::string error;               // every error of the set, one a line
    std::vector<Finding> findings;   // errors and warnings, as the check found them
};

PackResult PackSet(const std::string& setFolder, const std::string& manifestPath);

// Appends one record: name length, name, data length, data (lengths as 32-bit little-endian).
void AppendRecord(std::vector<char>& container, const std::string& name, const std::string& data);
