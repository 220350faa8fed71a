#include <fcntl.h>
#include <unistd.h>

#include "flushed_copy.h"

namespace bench {

bool WriteAndFlush(const std::filesystem::path& path, const std::string& bytes)
{
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (file < 0)
        return false;
    bool done = true;
    for (std::size_t at = 0; done && at < bytes.size();) {
        const ssize_t written = write(file, bytes.data() + at, bytes.size() - at);
        done = written > 0;
        at += done ? static_cast<std::size_t>(written) : 0;
    }
    done = done && fsync(file) == 0;
    return close(file) == 0 && done;
}

}  // namespace bench
