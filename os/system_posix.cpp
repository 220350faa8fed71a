#include "system.h"

#include <dirent.h>
#include <sys/types.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "fault_injection.h"
#include "text_encoding.h"

namespace sys {

namespace faults {

namespace {

// The one piece of state of the test hook: this body stands in for Windows in tests only.
struct Plan {
    std::uint64_t calls = 0;
    std::uint64_t nth = 0;
    Mode mode = Mode::fail;
};

Plan& ThePlan()
{
    static Plan plan;
    return plan;
}

}  // namespace

void Arm(std::uint64_t nth, Mode mode) { ThePlan() = Plan{0, nth, mode}; }

std::uint64_t Calls() { return ThePlan().calls; }

}  // namespace faults

namespace {

// Counts one call into the layer; true when this one is to fail. Ends the process when the
// plan says so.
bool Faulty()
{
    faults::Plan& plan = faults::ThePlan();
    if (++plan.calls != plan.nth)
        return false;
    if (plan.mode == faults::Mode::end)
        _exit(faults::endStatus);
    return true;
}

// Nothing stands at the path, as opposed to the system failing to tell.
bool Missing(int error) { return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG; }

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

// Longer than the limit, holding a NUL byte (after which the system would see a shorter path
// than the caller checked), or not UTF-8: as the Win32 body refuses them.
bool Unusable(const std::string& path)
{
    return path.size() > maxPathBytes || path.find('\0') != std::string::npos || !IsUtf8(path);
}

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

// Opens `path` with `flags` and keeps it only when it is a plain file. Non-blocking, so that
// a pipe standing at the path cannot stall the program.
int OpenPlainFile(const std::string& path, int flags, struct stat& info)
{
    if (Unusable(path))
        return -1;
    int descriptor = open(path.c_str(), flags | O_NONBLOCK | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return -1;
    if (fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode)) {
        close(descriptor);
        return -1;
    }
    return descriptor;
}

}  // namespace

RegistryRead ReadUserRegistryString(const std::string& key, const std::string& value,
                                    std::string& text)
{
    if (Faulty())
        return RegistryRead::keyMissing;
    std::string folder = RegistryFolder(key);
    if (LookUp(folder).kind != EntryKind::folder)
        return RegistryRead::keyMissing;
    std::ifstream in(folder + "/" + value, std::ios::binary);
    if (!in)
        return RegistryRead::valueUnreadable;
    std::string stored((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (Utf16Length(stored) + 1 > 260)  // the stored string and its NUL must fit 260 characters
        return RegistryRead::valueUnreadable;
    text = stored.substr(0, stored.find('\0'));
    return RegistryRead::ok;
}

std::vector<ListedEntry> ListFolder(const std::string& folder)
{
    std::vector<ListedEntry> names;
    if (Faulty() || Unusable(folder + "*.*"))  // the pattern FindFirstFileA is given
        return names;
    DIR* dir = opendir(folder.c_str());
    if (!dir)
        return names;
    while (dirent* entry = readdir(dir)) {
        struct stat info;
        const bool folderEntry = stat((folder + entry->d_name).c_str(), &info) == 0 && S_ISDIR(info.st_mode);
        names.push_back({entry->d_name, folderEntry});
    }
    closedir(dir);
    return names;
}

Entry LookUp(const std::string& path)
{
    Entry entry;
    if (Faulty()) {
        entry.kind = EntryKind::unknown;
        return entry;
    }
    struct stat info;
    if (path.empty() || Unusable(path))
        return entry;
    if (lstat(path.c_str(), &info) != 0) {
        entry.kind = Missing(errno) ? EntryKind::none : EntryKind::unknown;
        return entry;
    }
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
    struct stat info;
    int file = Faulty() ? -1 : OpenPlainFile(path, O_RDONLY, info);
    if (file < 0)
        return false;
    char block[65536];
    while (bytes.size() < limit) {
        ssize_t got = read(file, block, std::min(sizeof block, limit - bytes.size()));
        if (got <= 0)
            break;
        bytes.append(block, static_cast<std::size_t>(got));
    }
    close(file);
    return true;
}

File File::OpenForReading(const std::string& path)
{
    struct stat info;
    int descriptor = Faulty() ? -1 : OpenPlainFile(path, O_RDONLY, info);
    return descriptor < 0 ? File() : File(descriptor, static_cast<std::uint64_t>(info.st_size));
}

File File::Create(const std::string& path)
{
    struct stat info;
    int descriptor = Faulty() ? -1 : OpenPlainFile(path, O_WRONLY | O_CREAT | O_TRUNC, info);
    return descriptor < 0 ? File() : File(descriptor, 0);
}

File File::OpenForAppending(const std::string& path)
{
    struct stat info;
    int descriptor = Faulty() ? -1 : OpenPlainFile(path, O_WRONLY, info);
    if (descriptor < 0)
        return File();
    if (lseek(descriptor, 0, SEEK_END) < 0) {
        close(descriptor);
        return File();
    }
    return File(descriptor, static_cast<std::uint64_t>(info.st_size));
}

bool File::Read(char* bytes, std::size_t count)
{
    const int descriptor = static_cast<int>(handle);
    return !Faulty() && open &&
           TransferAll(bytes, count, [&](char* at, std::size_t part) { return read(descriptor, at, part); });
}

bool File::Write(const char* bytes, std::size_t count)
{
    const int descriptor = static_cast<int>(handle);
    return !Faulty() && open &&
           TransferAll(bytes, count, [&](const char* at, std::size_t part) { return write(descriptor, at, part); });
}

bool File::Skip(std::uint64_t count)
{
    return !Faulty() && open && count <= static_cast<std::uint64_t>(LLONG_MAX) &&
           lseek(static_cast<int>(handle), static_cast<off_t>(count), SEEK_CUR) >= 0;
}

bool File::Truncate(std::uint64_t size)
{
    const int descriptor = static_cast<int>(handle);
    return !Faulty() && open && size <= static_cast<std::uint64_t>(LLONG_MAX) &&
           ftruncate(descriptor, static_cast<off_t>(size)) == 0 &&
           lseek(descriptor, static_cast<off_t>(size), SEEK_SET) >= 0;
}

bool File::Close()
{
    if (!open)
        return false;
    open = false;
    const bool failed = Faulty();  // the descriptor goes all the same
    return close(static_cast<int>(handle)) == 0 && !failed;
}

bool MakeFolder(const std::string& path)
{
    return !Faulty() && !Unusable(path) && mkdir(path.c_str(), 0777) == 0;
}

bool RemoveFolder(const std::string& path)
{
    return !Faulty() && !Unusable(path) && rmdir(path.c_str()) == 0;
}

bool RemoveFile(const std::string& path)
{
    return !Faulty() && !Unusable(path) && unlink(path.c_str()) == 0;
}

bool MoveOver(const std::string& from, const std::string& to)
{
    return !Faulty() && !Unusable(from) && !Unusable(to) && rename(from.c_str(), to.c_str()) == 0;
}

// The programs' names as the system started them: the last part of each process's first
// argument (/proc/<pid>/cmdline, readable for every process).
std::vector<std::string> RunningProgramNames()
{
    std::vector<std::string> names;
    if (Faulty())
        return names;
    DIR* processes = opendir("/proc");
    if (!processes)
        return names;
    while (dirent* entry = readdir(processes)) {
        if (entry->d_name[0] < '0' || entry->d_name[0] > '9')
            continue;
        std::ifstream commandLine(std::string("/proc/") + entry->d_name + "/cmdline", std::ios::binary);
        std::string first;
        if (std::getline(commandLine, first, '\0') && !first.empty())
            names.push_back(first.substr(first.find_last_of('/') + 1));
    }
    closedir(processes);
    return names;
}

std::string AnsiToUtf8(const std::string& ansi)
{
    // Code page 1252's characters at 0x80-0x9F; the rest of the upper half is Latin-1's.
    static const char16_t upper[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                       0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    std::u16string text;
    for (char c : ansi) {
        const unsigned char byte = static_cast<unsigned char>(c);
        text += byte >= 0x80 && byte < 0xA0 ? upper[byte - 0x80] : static_cast<char16_t>(byte);
    }
    return ToUtf8(text.data(), text.size());
}

}  // namespace sys
