// The removal list reader over arbitrary bytes: whatever a damaged or edited list holds, the
// paths it yields are non-empty UTF-8 free of line-end bytes (an ANSI line grows by at most
// three times in UTF-8), the same however the bytes arrive, and read back the same once written
// as the install writes them.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "removal_list.h"
#include "system.h"
#include "text_encoding.h"

namespace {

std::vector<std::string> ReadRemovalList(const std::string& bytes)
{
    std::vector<std::string> paths;
    RemovalListReader lines([&](const std::string& path) { paths.push_back(path); });
    lines.Feed(bytes.data(), bytes.size());
    lines.Finish();
    return paths;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> paths = ReadRemovalList(bytes);

    std::size_t total = 0;
    std::string rewritten;
    for (const std::string& path : paths) {
        if (path.empty() || path.find_first_of("\r\n") != std::string::npos || !IsUtf8(path) ||
            path.size() > 3 * sys::maxPathBytes)
            std::abort();
        total += path.size();
        rewritten += path + "\r\n";
    }
    // Each path stands for a line of its own: its bytes plus at least one LF between lines.
    if (total + (paths.empty() ? 0 : paths.size() - 1) > 3 * size)
        std::abort();
    if (ReadRemovalList(rewritten) != paths)
        std::abort();

    // Fed in pieces whose sizes the input's first byte picks, as a file is read in blocks.
    const std::size_t piece = size > 0 ? 1 + data[0] % 97 : 1;
    std::vector<std::string> pieced;
    RemovalListReader lines([&](const std::string& path) { pieced.push_back(path); });
    for (std::size_t at = 0; at < size; at += piece)
        lines.Feed(bytes.data() + at, std::min(piece, size - at));
    lines.Finish();
    if (pieced != paths)
        std::abort();
    return 0;
}
