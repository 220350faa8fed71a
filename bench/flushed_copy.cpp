#include "flushed_copy.h"

#include <fstream>
#include <iterator>

namespace bench {

bool CopyFlushingEachFile(const std::string& source, const std::string& destination)
{
    namespace fs = std::filesystem;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(source)) {
        const fs::path target = fs::path(destination) / fs::relative(entry.path(), source);
        if (entry.is_directory()) {
            fs::create_directories(target);
            continue;
        }
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        if (!in.good() && !in.eof())
            return false;
        if (!WriteAndFlush(target, bytes))
            return false;
    }
    return true;
}

}  // namespace bench
