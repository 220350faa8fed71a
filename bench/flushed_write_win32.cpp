#include <windows.h>

#include "flushed_copy.h"

namespace bench {

bool WriteAndFlush(const std::filesystem::path& path, const std::string& bytes)
{
    const HANDLE file =
        CreateFileW(path.wstring().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const bool done = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
                      written == bytes.size() && FlushFileBuffers(file);
    return CloseHandle(file) && done;
}

}  // namespace bench
