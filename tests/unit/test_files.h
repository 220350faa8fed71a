#pragma once
// Real folder trees for tests: a fresh temporary folder per test and whole-file helpers.

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // The folder's path with '/' separators and no trailing slash.
    const std::string& Path() const { return path; }

private:
    std::string path;
};

// Creates the missing folders on the way and writes `bytes` as the whole file.
void WriteFile(const std::string& path, const std::string& bytes);
std::string ReadFile(const std::string& path);
void MakeFolders(const std::string& path);
// Deletes one file, one empty folder or one link (never what it points at); anything else stays.
void RemovePath(const std::string& path);
bool Exists(const std::string& path);
// True once `holds` does, asked every 10 ms for five seconds: what the system does may take a moment.
bool Soon(const std::function<bool()>& holds);

// The names of Counter-Strike 1.6's three backup files (archive, removal list, record), each
// after a '/', as a place's folder is followed by them.
constexpr const char* cs16BackupFiles[] = {"/cs16ludax.bak", "/cs16ludax_1.bak", "/cs16ludax_2.bak"};

// The file of the containers' sums CMake computed at build time ("cs16/<name> <sha256>" lines and
// "<game> <sha256>"), read from a host path under Wine too; and the name a build gives itself from it.
std::string ContainerSums(const std::string& sumsFile);
std::string BuildName(const std::string& sumsFile);

// The names of what `folder` holds ("." and ".." left out), as UTF-8, in the order the system
// lists them: through calls of the tests' own, not the program's.
std::vector<std::string> NamesIn(const std::string& folder);

// Every file and folder below `folder`: relative path -> file bytes, or "<folder>" for a folder
// (natively, a link is "<link to ...>" and is not followed).
using Tree = std::map<std::string, std::string>;
Tree Snapshot(const std::string& folder);

// Makes `link` a symbolic link to the folder or file `target`: natively with symlink(), under
// Wine as a Unix link made by the Unix `ln`, since Wine cannot make one through Win32. False
// when no link could be made.
bool MakeLink(const std::string& target, const std::string& link);

#ifdef _WIN32
// The 8.3 short form Windows gives the whole path of an existing file or folder ("C:\\STEAM~1\\...");
// empty when it gives none.
std::string ShortPath(const std::string& path);

// Wine only: the drive `letter` ("M") leads to `folder` (a drive's letter in the prefix's
// dosdevices, as Wine keeps them), or to nothing with an empty folder. False when it could not.
bool MapDrive(const std::string& letter, const std::string& folder);
#endif

// A 32-bit field lowest byte first, and a record of the payload and backup formats: the name's
// length, the name, the data's length, the data. Typed here, so that no test takes its expected
// bytes from the code under test.
std::string Le32(std::uint32_t value);
std::string Record(const std::string& name, const std::string& data);
// A path as Steam writes it in its files: with '\' on Windows; elsewhere only '/' separates.
std::string AsSteamWritesIt(std::string path);
// libraryfolders.vdf as Steam writes it today, naming `libraries` in order, backslashes doubled
// in the quotes.
std::string LibraryList(const std::vector<std::string>& libraries);

// UTF-8 text whose letters all lie below U+0100, as the single-byte Western code page (1252,
// which the POSIX body stands in with) writes it: how an earlier version wrote a path.
std::string Western(const std::string& utf8);

// The four bytes the install writes first in a backup archive.
const std::string archiveHeader("\x01\0\0\0", 4);

// Sets the file's size without writing its bytes (a sparse file where the file system allows).
void ResizeFile(const std::string& path, std::uint64_t size);

// Keeps a file open for writing with no sharing, so that nobody else can open it meanwhile, or
// with readers let in, so that it can be read but not written (Windows only; POSIX has no such
// lock).
class LockedFile {
public:
    enum class Sharing { none, readers };
    explicit LockedFile(const std::string& path, Sharing sharing = Sharing::none);
    ~LockedFile();
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    bool Locked() const { return handle != nullptr; }

private:
    void* handle = nullptr;
};

// A log's lines (CR LF ended) as their tab-separated fields, each line's time stamp (its first
// field) left out.
std::vector<std::vector<std::string>> LogFields(const std::string& log);

// `path` with '\\' for each '/', as Windows writes paths.
std::string Backslashed(std::string path);
