#include "system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace sys {

namespace {

// The registry stands as a folder tree: LUDAX_REGISTRY (default ~/.ludax-registry) holds
// HKEY_CURRENT_USER/<key path>/, and each value is a file of that folder.
std::string RegistryFolder(const std::string& key)
{
    const char* root = std::getenv("LUDAX_REGISTRY");
    const char* home = std::getenv("HOME");
    std::string path = root ? root : std::string(home ? home : ".") + "/.ludax-registry";
    path += "/HKEY_CURRENT_USER/";
    for (char c : key)
        path += c == '\\' ? '/' : c;
    return path;
}

// Longer than the limit, or holding a NUL byte, after which the system would see a shorter
// path than the caller checked.
bool Unusable(const std::string& path)
{
    return path.size() > maxPathLength || path.find('\0') != std::string::npos;
}

int Descriptor(FileHandle file) { return static_cast<int>(file.handle); }

// Repeats `transfer` (read or write) until all `size` bytes have moved; false when a call
// fails or moves nothing. An interrupted call is simply repeated.
template <class Bytes, class Transfer>
bool TransferAll(Bytes* bytes, std::size_t size, Transfer transfer)
{
    while (size > 0) {
        ssize_t moved = transfer(bytes, std::min<std::size_t>(size, INT_MAX));
        if (moved < 0 && errno == EINTR)
            continue;
        if (moved <= 0)
            return false;
        bytes += moved;
        size -= static_cast<std::size_t>(moved);
    }
    return true;
}

}  // namespace

RegistryRead ReadUserRegistryString(const std::string& key, const std::string& value,
                                    std::string& text)
{
    std::string folder = RegistryFolder(key);
    if (FindEntry(folder) != EntryKind::folder)
        return RegistryRead::keyMissing;
    std::ifstream in(folder + "/" + value, std::ios::binary);
    if (!in)
        return RegistryRead::valueUnreadable;
    std::string stored((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (stored.size() + 1 > 260)  // the stored string and its NUL must fit 260 bytes
        return RegistryRead::valueUnreadable;
    text = stored.substr(0, stored.find('\0'));
    return RegistryRead::ok;
}

std::vector<std::string> ListFolder(const std::string& folder)
{
    std::vector<std::string> names;
    if (Unusable(folder + "*.*"))  // the pattern FindFirstFileA is given
        return names;
    DIR* dir = opendir(folder.c_str());
    if (!dir)
        return names;
    while (dirent* entry = readdir(dir))
        names.push_back(entry->d_name);
    closedir(dir);
    return names;
}

Entry LookUp(const std::string& path)
{
    Entry entry;
    struct stat info;
    if (path.empty() || Unusable(path) || lstat(path.c_str(), &info) != 0)
        return entry;
    if (S_ISLNK(info.st_mode)) {
        entry.link = true;
        struct stat target;
        entry.kind = stat(path.c_str(), &target) == 0 && S_ISDIR(target.st_mode) ? EntryKind::folder
                                                                                   : EntryKind::file;
    } else {
        entry.kind = S_ISDIR(info.st_mode) ? EntryKind::folder : EntryKind::file;
    }
    return entry;
}

bool ReadFileStart(const std::string& path, std::size_t limit, std::string& bytes)
{
    bytes.clear();
    int file = Unusable(path) ? -1 : open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return false;
    char block[65536];
    while (bytes.size() < limit) {
        std::size_t wanted = std::min(sizeof block, limit - bytes.size());
        ssize_t got = read(file, block, wanted);
        if (got <= 0)
            break;
        bytes.append(block, static_cast<std::size_t>(got));
    }
    close(file);
    return true;
}

bool OpenForReading(const std::string& path, FileHandle& file, std::uint64_t& size)
{
    file = FileHandle{};
    if (Unusable(path))
        return false;
    // Non-blocking, so that a pipe standing at the path cannot stall the program.
    int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    struct stat info;
    if (fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode)) {
        close(descriptor);
        return false;
    }
    size = static_cast<std::uint64_t>(info.st_size);
    file = FileHandle{descriptor, true};
    return true;
}

bool OpenForWriting(const std::string& path, FileHandle& file)
{
    file = FileHandle{};
    if (Unusable(path))
        return false;
    int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return false;
    struct stat info;
    if (fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode)) {
        close(descriptor);
        return false;
    }
    file = FileHandle{descriptor, true};
    return true;
}

bool ReadExactly(FileHandle file, char* bytes, std::size_t size)
{
    return TransferAll(bytes, size, [&](char* at, std::size_t count) { return read(Descriptor(file), at, count); });
}

bool WriteExactly(FileHandle file, const char* bytes, std::size_t size)
{
    return TransferAll(bytes, size,
                       [&](const char* at, std::size_t count) { return write(Descriptor(file), at, count); });
}

bool Skip(FileHandle file, std::uint64_t count)
{
    return count <= static_cast<std::uint64_t>(LLONG_MAX) &&
           lseek(Descriptor(file), static_cast<off_t>(count), SEEK_CUR) >= 0;
}

bool CloseFile(FileHandle& file)
{
    bool closed = file.open && close(Descriptor(file)) == 0;
    file = FileHandle{};
    return closed;
}

bool MakeFolder(const std::string& path)
{
    return !Unusable(path) && mkdir(path.c_str(), 0777) == 0;
}

void RemoveFolder(const std::string& path)
{
    if (!Unusable(path))
        rmdir(path.c_str());
}

void RemoveFile(const std::string& path)
{
    if (!Unusable(path))
        unlink(path.c_str());
}

void ExitWithMessage(const std::string& text, const std::string& caption, unsigned style)
{
    std::fprintf(stderr, "[%s] (style 0x%02x)\n%s\n", caption.c_str(), style, text.c_str());
    std::exit(-1);
}

}  // namespace sys
