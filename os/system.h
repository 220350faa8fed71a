#pragma once
// The operating-system calls the installer makes, behind one thin layer: a Win32 body (the
// product) and a POSIX body (the native tests). Nothing here shows a box or ends the process;
// every call that can fail says whether it worked and, if not, why (call_status.h): the system's own
// error code, or the layer's refusal. Paths and texts are UTF-8; the Win32 body hands them to the
// system's UTF-16 calls, a long path in its extended-length form (long_paths.h).

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "call_status.h"

namespace sys {

enum class RegistryRead { ok, keyMissing, valueUnreadable };

struct RegistryString {
    RegistryRead read = RegistryRead::keyMissing;
    std::string text;  // the characters up to the first NUL, when read
    Reason reason;     // why not, when not
};

// Where a registry value lives: the user's own keys, or the machine's in its 32-bit view (where
// 32-bit programs such as Steam's installer write, WOW6432Node on 64-bit Windows) or its 64-bit
// view.
enum class RegistryHive { user, machine32, machine64 };

// Reads a string value of a key through a buffer of 260 characters; a value that does not fit
// (with its NUL) is unreadable.
RegistryString ReadRegistryString(RegistryHive hive, const std::string& key, const std::string& value);

struct ListedEntry {
    std::string name;
    bool folder = false;       // a folder, or a link to one
    bool link = false;         // a symbolic link, junction or other reparse point itself
    std::uint64_t size = 0;    // a file's size
};

struct Listing {
    std::vector<ListedEntry> entries;
    Status status;  // failed: the folder could not be listed whole (entries then empty)
};

// Every entry of `folder` (which ends with '/'), files and folders alike, "." and ".."
// included, in the order the file system returns them.
Listing ListFolder(const std::string& folder);

// Whether two names in one folder are the same entry's: Windows compares them without regard to
// letter case (for the plain ASCII names this program writes, exactly so), POSIX byte for byte.
std::string NameKey(const std::string& name);

// The longest path any call below takes: Windows' longest, in UTF-16 units and in UTF-8 bytes
// (three a unit at most). Each call treats a longer path, one holding a NUL byte, or one that
// is not UTF-8, as missing or refuses it, so that the existence test, the reads and the writes
// all see the same set of paths: a file the test cannot see is never written.
constexpr std::size_t maxPathUnits = 32767;
constexpr std::size_t maxPathBytes = 3 * maxPathUnits;

// The POSIX body stands in for Windows in the native tests, whose folders are POSIX paths
// ("/tmp/..."): what reads a path as absolute takes those there. Windows reads a lone leading
// separator as the current drive's root, so it takes none.
#ifdef _WIN32
constexpr bool posixPathsToo = false;
#else
constexpr bool posixPathsToo = true;
#endif

// `none`: nothing stands there (nor can: the path is too long, or a folder on the way is missing
// or a file). `unknown`: the system could not tell (access denied, an I/O error): whoever must
// not guess stops there.
enum class EntryKind { none, file, folder, unknown };

// The entry itself, never what a link points to. `link` is set for a symbolic link, junction
// or other reparse point (Win32: FILE_ATTRIBUTE_REPARSE_POINT from FindFirstFileW; POSIX:
// lstat). A link's kind is that of its target, and a link whose target is gone is a file.
struct Entry {
    EntryKind kind = EntryKind::none;
    bool link = false;
    Reason reason;  // why the system could not tell, for `unknown`
};
Entry LookUp(const std::string& path);

// True when a file or folder of exactly that path is known to exist.
inline bool PathExists(const std::string& path)
{
    const EntryKind kind = LookUp(path).kind;
    return kind == EntryKind::file || kind == EntryKind::folder;
}

// At most `limit` bytes from the start of the file; failed when it cannot be opened.
Status ReadFileStart(const std::string& path, std::size_t limit, std::string& bytes);

// What tells one file or folder from every other, whichever path names it (an 8.3 short name, a
// link or junction, another drive letter for the same disk, the "\\?\" form): its volume and its
// number there (Win32: GetFileInformationByHandle; POSIX: st_dev and st_ino).
struct Identity {
    std::uint64_t volume = 0;
    std::uint64_t index = 0;
    // Wine at times gives a volume serial number of 0 (when it could not ask the volume), for one
    // handle of a file and not for another: a 0 says nothing, and the file's number alone tells.
    bool operator==(const Identity& other) const
    {
        return index == other.index && (volume == other.volume || volume == 0 || other.volume == 0);
    }
    bool operator!=(const Identity& other) const { return !(*this == other); }
};

// A plain file on a disk, open for reading or for writing, closed when the object goes. Folders,
// devices and pipes are refused at opening. Once a call has returned true its bytes have
// reached the system; nothing is buffered here.
class File {
public:
    // Opens an existing file for reading; others may keep reading and writing it meanwhile.
    static File OpenForReading(const std::string& path) { return Open(path, Opening::read); }
    // Creates or truncates a file for writing.
    static File Create(const std::string& path) { return Open(path, Opening::create); }
    // Opens a file for writing from its start, creating it when missing; Size() gives the size it
    // had. Its bytes are written over in place and Truncate() then cuts what is left past the new
    // end: the file system keeps its blocks instead of freeing and allocating each again, and need
    // not first wait for the writes of a file it was handed a moment ago.
    static File Overwrite(const std::string& path) { return Open(path, Opening::overwrite); }
    // Opens an existing file for writing at its end; Size() gives that end.
    static File OpenForAppending(const std::string& path) { return Open(path, Opening::append); }
    // Opens a file for reading from its start and for writing, creating it when missing
    // (Created() tells): a log is looked at before anything is added to it.
    static File OpenOrCreate(const std::string& path) { return Open(path, Opening::readWrite); }

    File() = default;
    File(File&& other) noexcept
        : handle(other.handle), open(other.open), created(other.created), size(other.size),
          openFailure(other.openFailure)
    {
        other.open = false;
    }
    File& operator=(File&& other) noexcept
    {
        if (this != &other) {
            static_cast<void>(Close());
            handle = other.handle;
            open = other.open;
            created = other.created;
            size = other.size;
            openFailure = other.openFailure;
            other.open = false;
        }
        return *this;
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    // Closes a file still open; a caller that must know whether the close worked calls Close().
    ~File() { static_cast<void>(Close()); }

    bool IsOpen() const { return open; }
    // Why the file could not be opened.
    const Reason& OpenFailure() const { return openFailure; }
    // The size the file had when it was opened (0 for one it created).
    std::uint64_t Size() const { return size; }
    // True when the opening made the file.
    bool Created() const { return created; }

    // Done when exactly `count` bytes were read, or written.
    Status Read(char* bytes, std::size_t count);
    Status Write(const char* bytes, std::size_t count);
    Status Write(const std::string& bytes) { return Write(bytes.data(), bytes.size()); }
    // Moves the read position `count` bytes on.
    Status Skip(std::uint64_t count);
    // Cuts a file open for writing to `size` bytes and goes on writing there.
    Status Truncate(std::uint64_t size);
    // Makes what was written so far reach the disk (FlushFileBuffers, fsync), so that a power
    // cut keeps it: until then the system may hold it in memory only.
    Status Flush();
    // Done when the file was open and closed without an error (one the system kept from an
    // earlier write included). The file is closed in any case.
    Status Close();
    // What tells this file from every other (IdentityOf).
    Status IdentityOf(Identity& identity) const;

private:
    enum class Opening { read, create, overwrite, append, readWrite };
    // The four ways to open, each body's one way of asking its system.
    static File Open(const std::string& path, Opening how);
    File(std::intptr_t handle, std::uint64_t size, bool created = false)
        : handle(handle), open(true), created(created), size(size)
    {
    }
    static File Failed(Reason why)
    {
        File file;
        file.openFailure = why;
        return file;
    }

    std::intptr_t handle = 0;  // meaningless while `open` is false
    bool open = false;
    bool created = false;
    std::uint64_t size = 0;
    Reason openFailure;
};

// Reads and writes go to the system in slices of at most this many bytes: larger calls are known
// to fail on network disks, where diskless LAN PCs keep their games.
constexpr std::size_t largestTransfer = 4u << 20;

// Done when `folder` is there and leads somewhere: a folder, or a link to one whose target is
// there. A link whose target is gone, a file and nothing at all fail.
Status ReachFolder(const std::string& folder);

// `path` as an absolute path, resolved against the current folder when it is relative.
std::string FullPath(const std::string& path);

// The identity of the file or folder at `path`, every link on the way and at its end followed;
// failed when nothing is there.
Status IdentityOf(const std::string& path, Identity& identity);

// The path the system finds the folder or file at `path` under, every link followed and short
// names long (Win32: GetFinalPathNameByHandleW, "\\?\C:\..."; POSIX: realpath); failed when
// nothing is there.
Status FinalPath(const std::string& path, std::string& final);

// Creates one folder; failed when it could not be made (its parent missing, a name taken).
Status MakeFolder(const std::string& path);
// Removes an empty folder, or one file.
Status RemoveFolder(const std::string& path);
Status RemoveFile(const std::string& path);
// Puts the file `from` in the place of the file `to` in one step: whoever looks finds the old
// file or the new one, never a mix.
Status MoveOver(const std::string& from, const std::string& to);

// The file names of the programs running now ("hl.exe"), as the system gives them.
std::vector<std::string> RunningProgramNames();

// This computer's name, and the name of the user the program runs as; empty when unknown.
std::string ComputerName();
std::string UserName();

}  // namespace sys
