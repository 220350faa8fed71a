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
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>

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
    std::uint64_t alsoNth = 0;
    // For a power cut: what each file written since Arm holds on the disk itself, by path (a
    // file is known from its first opening for writing, holding what it held then: nothing for a
    // new one), and the path each open file was opened under.
    std::map<std::string, std::string> onDisk;
    std::map<int, std::string> openForWriting;
};

Plan& ThePlan()
{
    static Plan plan;
    return plan;
}

std::string Contents(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// Every file keeps what reached the disk: a journalling file system keeps the creations,
// deletions and renames, but of the bytes written since a file's last flush, some files' reach
// the disk and some do not, in no order the program can count on. Here each file's fate is drawn
// from its name and the call the power went at, so that a sweep over the calls meets both.
void CutThePower()
{
    for (const auto& [path, bytes] : ThePlan().onDisk) {
        if ((std::hash<std::string>{}(path) + ThePlan().nth) % 2 == 0)
            continue;  // what was written landed
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    _exit(endStatus);
}

}  // namespace

void Arm(std::uint64_t nth, Mode mode, std::uint64_t alsoNth) { ThePlan() = Plan{0, nth, mode, alsoNth, {}, {}}; }

std::uint64_t Calls() { return ThePlan().calls; }

}  // namespace faults

namespace {

// A power cut must know what each written file holds on the disk: the bytes it had before it was
// first opened for writing, until it is flushed.
void WillWrite(const std::string& path)
{
    faults::Plan& plan = faults::ThePlan();
    if (plan.mode == faults::Mode::powerCut && !plan.onDisk.count(path))
        plan.onDisk[path] = faults::Contents(path);
}

void OpenedForWriting(int descriptor, const std::string& path)
{
    if (faults::ThePlan().mode == faults::Mode::powerCut)
        faults::ThePlan().openForWriting[descriptor] = path;
}

// Counts one call into the layer; true when this one is to fail (as an I/O error would). Ends
// the process when the plan says so.
bool Faulty()
{
    faults::Plan& plan = faults::ThePlan();
    ++plan.calls;
    if (plan.calls == plan.alsoNth) {
        errno = EIO;
        return true;
    }
    if (plan.calls != plan.nth)
        return false;
    if (plan.mode == faults::Mode::end)
        _exit(faults::endStatus);
    if (plan.mode == faults::Mode::powerCut)
        faults::CutThePower();
    errno = EIO;
    return true;
}

// True when this write is the one that puts down part of its bytes and fails.
bool WritesHalf()
{
    const faults::Plan& plan = faults::ThePlan();
    return plan.mode == faults::Mode::partialWrite && plan.calls + 1 == plan.nth;
}

// The system's reason for the call that just failed.
Status LastError() { return Status::Failed(Reason::System(static_cast<std::uint32_t>(errno))); }

Status Done(bool succeeded) { return succeeded ? Status() : LastError(); }

// Nothing stands at the path, as opposed to the system failing to tell.
bool Missing(int error) { return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG; }

// The registry stands as a folder tree: LUDAX_REGISTRY (default ~/.ludax-registry) holds
// HKEY_CURRENT_USER/<key path>/ and the machine's two views, HKEY_LOCAL_MACHINE-32/ and
// HKEY_LOCAL_MACHINE-64/; each value is a file of its key's folder.
std::string RegistryFolder(RegistryHive hive, const std::string& key)
{
    const char* root = std::getenv("LUDAX_REGISTRY");
    const char* home = std::getenv("HOME");
    std::string path = root ? root : std::string(home ? home : ".") + "/.ludax-registry";
    path += hive == RegistryHive::user ? "/HKEY_CURRENT_USER/"
            : hive == RegistryHive::machine32 ? "/HKEY_LOCAL_MACHINE-32/" : "/HKEY_LOCAL_MACHINE-64/";
    for (char c : key)
        path += c == '\\' ? '/' : c;
    return path;
}

// Longer than the limit, holding a NUL byte (after which the system would see a shorter path
// than the caller checked), or not UTF-8: as the Win32 body refuses them. Sets errno.
bool Unusable(const std::string& path)
{
    if (path.size() > maxPathBytes)
        errno = ENAMETOOLONG;
    else if (path.find('\0') != std::string::npos || !IsUtf8(path))
        errno = EILSEQ;
    else
        return false;
    return true;
}

// Repeats `transfer` (read or write) in slices of at most largestTransfer bytes until all `size`
// bytes have moved; failed when a call fails or moves nothing. An interrupted call is repeated.
template <class Bytes, class Transfer>
Status TransferAll(Bytes* bytes, std::size_t size, Transfer transfer)
{
    while (size > 0) {
        ssize_t moved = transfer(bytes, std::min(size, largestTransfer));
        if (moved < 0 && errno == EINTR)
            continue;
        if (moved < 0)
            return LastError();
        if (moved == 0)
            return Status::Failed(Reason::Refused(Reason::Own::endedEarly));
        bytes += moved;
        size -= static_cast<std::size_t>(moved);
    }
    return Status();
}

// Opens `path` with `flags` and keeps it only when it is a plain file. Non-blocking, so that
// a pipe standing at the path cannot stall the program.
Status OpenPlainFile(const std::string& path, int flags, struct stat& info, int& descriptor)
{
    descriptor = -1;
    if (Faulty() || Unusable(path))
        return LastError();
    const bool writing = (flags & O_ACCMODE) != O_RDONLY;
    if (writing)
        WillWrite(path);
    const int opened = open(path.c_str(), flags | O_NONBLOCK | O_CLOEXEC, 0666);
    if (opened < 0)
        return LastError();
    if (fstat(opened, &info) != 0) {
        const Status failed = LastError();
        close(opened);
        return failed;
    }
    if (!S_ISREG(info.st_mode)) {
        close(opened);
        return S_ISDIR(info.st_mode) ? Status::Failed(Reason::System(EISDIR))
                                     : Status::Failed(Reason::Refused(Reason::Own::notADiskFile));
    }
    descriptor = opened;
    if (writing)
        OpenedForWriting(opened, path);
    return Status();
}

}  // namespace

// Registry errors as Windows gives them: the key or value is not there.
constexpr std::uint32_t registryNotFound = ENOENT;

RegistryString ReadRegistryString(RegistryHive hive, const std::string& key, const std::string& value)
{
    RegistryString result;
    if (Faulty()) {
        result.reason = Reason::System(EIO);
        return result;
    }
    std::string folder = RegistryFolder(hive, key);
    if (LookUp(folder).kind != EntryKind::folder) {
        result.reason = Reason::System(registryNotFound);
        return result;
    }
    result.read = RegistryRead::valueUnreadable;
    std::ifstream in(folder + "/" + value, std::ios::binary);
    if (!in) {
        result.reason = Reason::System(registryNotFound);
        return result;
    }
    std::string stored((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (Utf16Length(stored) + 1 > 260) {  // the stored string and its NUL must fit 260 characters
        result.reason = Reason::System(E2BIG);
        return result;
    }
    result.read = RegistryRead::ok;
    result.text = stored.substr(0, stored.find('\0'));
    return result;
}

Listing ListFolder(const std::string& folder)
{
    Listing listing;
    if (Faulty() || Unusable(folder + "*.*")) {  // the pattern FindFirstFileW is given
        listing.status = LastError();
        return listing;
    }
    DIR* dir = opendir(folder.c_str());
    if (!dir) {
        listing.status = LastError();
        return listing;
    }
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(dir);
        if (!entry)
            break;
        // As a search reports it: the entry itself (a link is marked), the kind of what it leads to.
        ListedEntry listed{entry->d_name};
        struct stat info;
        const std::string path = folder + entry->d_name;
        if (lstat(path.c_str(), &info) == 0) {
            listed.link = S_ISLNK(info.st_mode);
            struct stat target;
            if (listed.link && stat(path.c_str(), &target) == 0)
                info = target;
            listed.folder = S_ISDIR(info.st_mode);
            listed.size = listed.folder ? 0 : static_cast<std::uint64_t>(info.st_size);
        }
        listing.entries.push_back(listed);
    }
    // Only the end of the listing ends it.
    if (errno != 0) {
        listing.status = LastError();
        listing.entries.clear();
    }
    closedir(dir);
    return listing;
}

std::string NameKey(const std::string& name) { return name; }

Entry LookUp(const std::string& path)
{
    Entry entry;
    if (Faulty()) {
        entry.kind = EntryKind::unknown;
        entry.reason = Reason::System(EIO);
        return entry;
    }
    struct stat info;
    if (path.empty() || Unusable(path))
        return entry;
    if (lstat(path.c_str(), &info) != 0) {
        entry.kind = Missing(errno) ? EntryKind::none : EntryKind::unknown;
        entry.reason = Reason::System(static_cast<std::uint32_t>(errno));
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

Status ReadFileStart(const std::string& path, std::size_t limit, std::string& bytes)
{
    bytes.clear();
    struct stat info;
    int file = -1;
    Status opened = OpenPlainFile(path, O_RDONLY, info, file);
    if (!opened)
        return opened;
    char block[65536];
    while (bytes.size() < limit) {
        ssize_t got = read(file, block, std::min(sizeof block, limit - bytes.size()));
        if (got <= 0)
            break;
        bytes.append(block, static_cast<std::size_t>(got));
    }
    close(file);
    return Status();
}

File File::Open(const std::string& path, Opening how)
{
    const int flags[] = {O_RDONLY, O_WRONLY | O_CREAT | O_TRUNC, O_WRONLY | O_CREAT, O_WRONLY, O_RDWR};
    struct stat info;
    int descriptor = -1;
    Status opened = OpenPlainFile(path, flags[static_cast<int>(how)], info, descriptor);
    // Made when missing, as OPEN_ALWAYS does, knowing that it made it.
    bool made = false;
    if (how == Opening::readWrite && !opened && opened.Why() == Reason::System(ENOENT)) {
        opened = OpenPlainFile(path, O_RDWR | O_CREAT | O_EXCL, info, descriptor);
        made = static_cast<bool>(opened);
    }
    if (opened && how == Opening::append && lseek(descriptor, 0, SEEK_END) < 0) {
        opened = LastError();
        close(descriptor);
    }
    // A truncated file's stat says 0.
    return opened ? File(descriptor, static_cast<std::uint64_t>(info.st_size), made) : Failed(opened.Why());
}

Status File::Read(char* bytes, std::size_t count)
{
    const int descriptor = static_cast<int>(handle);
    if (Faulty())
        return LastError();
    if (!open)
        return Status::Failed(Reason::System(EBADF));
    return TransferAll(bytes, count, [&](char* at, std::size_t part) { return read(descriptor, at, part); });
}

Status File::Write(const char* bytes, std::size_t count)
{
    const int descriptor = static_cast<int>(handle);
    if (WritesHalf() && open && count > 1)
        static_cast<void>(write(descriptor, bytes, count / 2));
    if (Faulty())
        return LastError();
    if (!open)
        return Status::Failed(Reason::System(EBADF));
    return TransferAll(bytes, count, [&](const char* at, std::size_t part) { return write(descriptor, at, part); });
}

Status File::Skip(std::uint64_t count)
{
    if (Faulty())
        return LastError();
    if (!open || count > static_cast<std::uint64_t>(LLONG_MAX))
        return Status::Failed(Reason::System(open ? EINVAL : EBADF));
    return Done(lseek(static_cast<int>(handle), static_cast<off_t>(count), SEEK_CUR) >= 0);
}

Status File::Truncate(std::uint64_t size)
{
    const int descriptor = static_cast<int>(handle);
    if (Faulty())
        return LastError();
    if (!open || size > static_cast<std::uint64_t>(LLONG_MAX))
        return Status::Failed(Reason::System(open ? EINVAL : EBADF));
    return Done(ftruncate(descriptor, static_cast<off_t>(size)) == 0 &&
                lseek(descriptor, static_cast<off_t>(size), SEEK_SET) >= 0);
}

Status File::Flush()
{
    if (Faulty())
        return LastError();
    if (!open)
        return Status::Failed(Reason::System(EBADF));
    const int descriptor = static_cast<int>(handle);
    if (fsync(descriptor) != 0)
        return LastError();
    faults::Plan& plan = faults::ThePlan();
    const auto written = plan.openForWriting.find(descriptor);
    if (written != plan.openForWriting.end())
        plan.onDisk[written->second] = faults::Contents(written->second);
    return Status();
}

Status File::Close()
{
    if (!open)
        return Status::Failed(Reason::System(EBADF));
    open = false;
    faults::ThePlan().openForWriting.erase(static_cast<int>(handle));
    const bool failed = Faulty();  // the descriptor goes all the same
    if (close(static_cast<int>(handle)) != 0)
        return LastError();
    return failed ? Status::Failed(Reason::System(EIO)) : Status();
}

Status File::IdentityOf(Identity& identity) const
{
    if (Faulty())
        return LastError();
    struct stat info;
    if (!open || fstat(static_cast<int>(handle), &info) != 0)
        return open ? LastError() : Status::Failed(Reason::System(EBADF));
    identity = {static_cast<std::uint64_t>(info.st_dev), static_cast<std::uint64_t>(info.st_ino)};
    return Status();
}

Status IdentityOf(const std::string& path, Identity& identity)
{
    struct stat info;
    if (Faulty() || Unusable(path) || stat(path.c_str(), &info) != 0)
        return LastError();
    identity = {static_cast<std::uint64_t>(info.st_dev), static_cast<std::uint64_t>(info.st_ino)};
    return Status();
}

Status FinalPath(const std::string& path, std::string& final)
{
    if (Faulty() || Unusable(path))
        return LastError();
    char* resolved = realpath(path.c_str(), nullptr);
    if (!resolved)
        return LastError();
    final = resolved;
    std::free(resolved);
    return Status();
}

Status MakeFolder(const std::string& path)
{
    return Done(!Faulty() && !Unusable(path) && mkdir(path.c_str(), 0777) == 0);
}

Status RemoveFolder(const std::string& path)
{
    return Done(!Faulty() && !Unusable(path) && rmdir(path.c_str()) == 0);
}

Status RemoveFile(const std::string& path)
{
    if (Faulty() || Unusable(path) || unlink(path.c_str()) != 0)
        return LastError();
    faults::ThePlan().onDisk.erase(path);  // a deletion is kept
    return Status();
}

Status MoveOver(const std::string& from, const std::string& to)
{
    if (Faulty() || Unusable(from) || Unusable(to))
        return LastError();
    WillWrite(from);  // the file moves with what it holds on the disk
    if (rename(from.c_str(), to.c_str()) != 0)
        return LastError();
    faults::Plan& plan = faults::ThePlan();
    if (plan.mode == faults::Mode::powerCut) {
        plan.onDisk[to] = plan.onDisk[from];
        plan.onDisk.erase(from);
    }
    return Status();
}

Status ReachFolder(const std::string& folder)
{
    struct stat info;
    if (Faulty() || Unusable(folder) || stat(folder.c_str(), &info) != 0)
        return LastError();
    return S_ISDIR(info.st_mode) ? Status() : Status::Failed(Reason::System(ENOTDIR));
}

std::string FullPath(const std::string& path)
{
    if (path.empty() || path[0] == '/')
        return path;
    char* here = getcwd(nullptr, 0);
    const std::string full = here ? std::string(here) + "/" + path : path;
    std::free(here);
    return full;
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

std::string ComputerName()
{
    char name[256] = {};
    return gethostname(name, sizeof name - 1) == 0 ? name : "";
}

std::string UserName()
{
    const char* user = std::getenv("USER");
    return user ? user : "";
}

std::string SystemMessage(std::uint32_t code) { return std::strerror(static_cast<int>(code)); }

}  // namespace sys
