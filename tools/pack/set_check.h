#pragma once
// What the build checks in a file set before packing it: that the manifest and the folder agree
// on exactly which files ship, that every name is one Windows can hold, and that the contents
// the game reads agree with each other (content_rules.h). Errors stop the build; warnings are
// printed and the build goes on.

#include <cstdint>
#include <string>
#include <vector>

#include "manifest.h"

struct Finding {
    bool error = true;
    std::string where;    // a file, or "file:line"
    std::string message;  // what is wrong and what to do about it
};

struct SetCheck {
    std::vector<ManifestLine> records;  // the manifest's lines, in packing order
    std::vector<Finding> findings;      // in the order they were found
    std::uint64_t containerSize = 0;    // what the records will add up to

    bool Passed() const;
};

SetCheck CheckSet(const std::string& setFolder, const std::string& manifestPath);

// "error: <where>: <message>" or "warning: ...", one line.
std::string Describe(const Finding& finding);

// Reads a whole file; false when it cannot be read.
bool ReadWhole(const std::string& path, std::string& bytes);
