#pragma once
// What a folder tree holds, by file sizes only (nothing is read, so measuring costs no memory).

#include <cstdint>
#include <string>

namespace bench {

struct FolderSize {
    int files = 0;
    std::uintmax_t bytes = 0;
    std::uintmax_t largest = 0;  // the largest single file
};

// All regular files below `folder`; an absent folder holds nothing.
FolderSize MeasureFolder(const std::string& folder);

// Size of one file, or -1 when it does not exist.
long long FileSize(const std::string& path);

}  // namespace bench
