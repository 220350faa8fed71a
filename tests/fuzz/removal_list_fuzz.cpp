// The removal list reader over arbitrary bytes: whatever a damaged or edited list holds, the
// paths it yields are non-empty, free of line-end bytes, no longer in total than the input,
// and read back the same once written as the install writes them.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "removal_list.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> paths = ReadRemovalList(bytes);

    std::size_t total = 0;
    std::string rewritten;
    for (const std::string& path : paths) {
        if (path.empty() || path.find_first_of("\r\n") != std::string::npos)
            std::abort();
        total += path.size();
        rewritten += path + "\r\n";
    }
    // Each path stands for a line of its own: its bytes plus at least one LF between lines.
    if (total + (paths.empty() ? 0 : paths.size() - 1) > size)
        std::abort();
    if (ReadRemovalList(rewritten) != paths)
        std::abort();
    return 0;
}
