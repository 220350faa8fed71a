#include "folder_size.h"

#include <algorithm>
#include <filesystem>

namespace bench {

FolderSize MeasureFolder(const std::string& folder)
{
    namespace fs = std::filesystem;
    FolderSize size;
    std::error_code error;
    if (!fs::is_directory(folder, error))
        return size;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file())
            continue;
        ++size.files;
        size.bytes += entry.file_size();
        size.largest = std::max(size.largest, entry.file_size());
    }
    return size;
}

long long FileSize(const std::string& path)
{
    std::error_code error;
    std::uintmax_t size = std::filesystem::file_size(path, error);
    return error ? -1 : static_cast<long long>(size);
}

}  // namespace bench
