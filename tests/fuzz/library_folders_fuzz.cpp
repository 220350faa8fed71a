// Steam's library list over arbitrary bytes: whatever a damaged or binary file holds, the reader
// returns, without running deep or long, paths that carry no control bytes, are no longer in
// total than the input, and read back the same once written out as Steam writes them.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "libraryfolders_vdf.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> paths = ParseLibraryFolders(text);

    std::size_t total = 0;
    std::string rewritten = "\"libraryfolders\"\n{\n";
    for (std::size_t i = 0; i < paths.size(); ++i) {
        std::string escaped;
        for (char c : paths[i]) {
            if (static_cast<unsigned char>(c) < 0x20 && c != ' ' && c != '\t' && c != '\r' && c != '\n')
                std::abort();
            if (c == '\\' || c == '"')
                escaped += '\\';
            escaped += c;
        }
        total += paths[i].size();
        rewritten += "\t\"" + std::to_string(i) + "\"\n\t{\n\t\t\"path\"\t\t\"" + escaped + "\"\n\t}\n";
    }
    rewritten += "}\n";
    if (total > size)
        std::abort();
    if (ParseLibraryFolders(rewritten) != paths)
        std::abort();
    return 0;
}
