#include "system.h"

#include <windows.h>
#include <tlhelp32.h>

#include <algorithm>

#include "long_paths.h"
#include "scoped_handle.h"
#include "text_encoding.h"

namespace sys {

namespace {

// UTF-8 as UTF-16 for the W calls (wchar_t is UTF-16 on Windows); false for bytes that are not
// UTF-8, which name nothing.
bool Wide(const std::string& utf8, std::wstring& wide)
{
    std::u16string utf16;
    const bool converted = ToUtf16(utf8, utf16);
    wide.assign(utf16.begin(), utf16.end());
    return converted;
}

std::string Utf8(const wchar_t* wide, std::size_t length)
{
    return ToUtf8(reinterpret_cast<const char16_t*>(wide), length);
}

std::string Utf8(const wchar_t* wide) { return Utf8(wide, wcslen(wide)); }

// The system's reason for the call that just failed.
Status LastError() { return Status::Failed(Reason::System(GetLastError())); }

// The longest path plain calls take, and plain CreateDirectory (room for an 8.3 name).
constexpr std::size_t plainPathLimit = MAX_PATH - 1;
constexpr std::size_t plainFolderLimit = MAX_PATH - 13;

// The path as a call takes it: UTF-16, in its extended-length form when it is longer than the
// call's `limit`. Failed when no call can take it: a NUL byte (after which the system would see
// a shorter path than the caller checked), bytes that are not UTF-8, more than Windows' longest.
Status SystemPath(const std::string& path, std::wstring& wide, std::size_t limit = plainPathLimit)
{
    if (path.empty() || path.find('\0') != std::string::npos ||
        !Wide(Utf16Length(path) > limit ? ExtendedLengthPath(path) : path, wide)) {
        wide.clear();
        return Status::Failed(Reason::System(ERROR_INVALID_NAME));
    }
    if (wide.size() > maxPathUnits) {
        wide.clear();
        return Status::Failed(Reason::System(ERROR_FILENAME_EXCED_RANGE));
    }
    return Status();
}

HANDLE Native(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

// The errors that mean nothing stands at the path: a missing file or folder on the way, a name
// no entry can have, a file where a folder is needed, a drive or share that is not there.
bool Missing(DWORD error)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_DIRECTORY:
    case ERROR_INVALID_DRIVE:
    case ERROR_NOT_READY:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
        return true;
    default:
        return false;
    }
}

// Opens `path` and keeps it only when it is a file on a disk: a device name (COM1, NUL) opens a
// device, which must never be read or written as if it were a player's file. `made`, when given,
// tells whether an OPEN_ALWAYS opening made the file.
Status OpenDiskFile(const std::string& path, DWORD access, DWORD sharing, DWORD disposition, ScopedFileHandle& file,
                    bool* made = nullptr)
{
    std::wstring wide;
    Status usable = SystemPath(path, wide);
    if (!usable)
        return usable;
    file = ScopedFileHandle(
        CreateFileW(wide.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsValid())
        return LastError();
    // OPEN_ALWAYS says ERROR_ALREADY_EXISTS when the file was there; read at once, before
    // another call sets the last error anew.
    if (made)
        *made = GetLastError() != ERROR_ALREADY_EXISTS;
    if (GetFileType(file.Get()) != FILE_TYPE_DISK) {
        file.Close();
        return Status::Failed(Reason::Refused(Reason::Own::notADiskFile));
    }
    return Status();
}

// A file's size from its handle; failed for one the system cannot tell.
Status SizeOf(HANDLE file, std::uint64_t& size)
{
    LARGE_INTEGER length;
    if (!GetFileSizeEx(file, &length))
        return LastError();
    size = static_cast<std::uint64_t>(std::max<LONGLONG>(length.QuadPart, 0));
    return Status();
}

// Repeats `transfer` (ReadFile or WriteFile) in slices of at most largestTransfer bytes until
// all `size` bytes have moved; failed when a call fails or moves nothing.
template <class Bytes, class Transfer>
Status TransferAll(Bytes* bytes, std::size_t size, Transfer transfer)
{
    while (size > 0) {
        DWORD moved = 0;
        if (!transfer(bytes, static_cast<DWORD>(std::min(size, largestTransfer)), &moved))
            return LastError();
        if (moved == 0)
            return Status::Failed(Reason::Refused(Reason::Own::endedEarly));
        bytes += moved;
        size -= moved;
    }
    return Status();
}

Status Done(BOOL succeeded) { return succeeded ? Status() : LastError(); }

}  // namespace

RegistryString ReadRegistryString(RegistryHive hive, const std::string& key, const std::string& value)
{
    RegistryString result;
    std::wstring wideKey, wideValue;
    if (!Wide(key, wideKey) || !Wide(value, wideValue)) {
        result.reason = Reason::System(ERROR_INVALID_NAME);
        return result;
    }
    const REGSAM view = hive == RegistryHive::machine32 ? KEY_WOW64_32KEY : hive == RegistryHive::machine64 ? KEY_WOW64_64KEY : 0;
    HKEY opened = nullptr;
    const LONG open = RegOpenKeyExW(hive == RegistryHive::user ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE, wideKey.c_str(),
                                    0, KEY_QUERY_VALUE | view, &opened);
    ScopedRegistryKey steamKey(open == ERROR_SUCCESS ? opened : nullptr);
    if (!steamKey.IsValid()) {
        result.reason = Reason::System(static_cast<std::uint32_t>(open));
        return result;
    }
    // 260 characters: a longer value, with its NUL, does not fit and is unreadable.
    wchar_t buffer[260];
    DWORD size = sizeof buffer;
    const LONG query =
        RegQueryValueExW(steamKey.Get(), wideValue.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(buffer), &size);
    if (query != ERROR_SUCCESS) {
        result.read = RegistryRead::valueUnreadable;
        result.reason = Reason::System(static_cast<std::uint32_t>(query));
        return result;
    }
    std::size_t length = 0;
    while (length < size / sizeof(wchar_t) && buffer[length] != L'\0')
        ++length;
    result.read = RegistryRead::ok;
    result.text = Utf8(buffer, length);
    return result;
}

Listing ListFolder(const std::string& folder)
{
    Listing listing;
    std::wstring pattern;
    listing.status = SystemPath(folder + "*.*", pattern);
    if (!listing.status)
        return listing;
    WIN32_FIND_DATAW entry;
    ScopedFind search(FindFirstFileW(pattern.c_str(), &entry));
    if (!search.IsValid()) {
        listing.status = LastError();
        return listing;
    }
    do
        listing.entries.push_back({Utf8(entry.cFileName), (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
                                   (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0,
                                   std::uint64_t{entry.nFileSizeHigh} << 32 | entry.nFileSizeLow});
    while (FindNextFileW(search.Get(), &entry));
    // Only the end of the listing ends it: a listing cut short by an error is no listing, since
    // whoever reads one takes a name it lacks for gone.
    if (GetLastError() != ERROR_NO_MORE_FILES) {
        listing.status = LastError();
        listing.entries.clear();
    }
    return listing;
}

std::string NameKey(const std::string& name) { return AsciiLower(name); }

// The attributes alone answer most look-ups, and cost a fraction of a search. A file another
// program holds open with no sharing (pagefile.sys, say) refuses them; its folder's listing still
// shows it.
Entry LookUp(const std::string& path)
{
    Entry result;
    std::wstring wide;
    if (!SystemPath(path, wide))
        return result;
    DWORD attributes = GetFileAttributesW(wide.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        WIN32_FIND_DATAW entry;
        ScopedFind search(error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED
                              ? FindFirstFileW(wide.c_str(), &entry)
                              : INVALID_HANDLE_VALUE);
        if (!search.IsValid()) {
            result.kind = Missing(error) ? EntryKind::none : EntryKind::unknown;
            result.reason = Reason::System(error);
            return result;
        }
        attributes = entry.dwFileAttributes;
    }
    result.kind = (attributes & FILE_ATTRIBUTE_DIRECTORY) ? EntryKind::folder : EntryKind::file;
    result.link = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    return result;
}

Status ReadFileStart(const std::string& path, std::size_t limit, std::string& bytes)
{
    bytes.clear();
    ScopedFileHandle file;
    Status opened = OpenDiskFile(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING, file);
    if (!opened)
        return opened;
    char block[65536];
    while (bytes.size() < limit) {
        DWORD wanted = static_cast<DWORD>(std::min<std::size_t>(sizeof block, limit - bytes.size()));
        DWORD got = 0;
        if (!ReadFile(file.Get(), block, wanted, &got, nullptr) || got == 0)
            break;
        bytes.append(block, got);
    }
    return Status();
}

File File::Open(const std::string& path, Opening how)
{
    // Readers let others read and write meanwhile; writers let others read only.
    const bool reading = how == Opening::read;
    const DWORD access = reading ? GENERIC_READ : how == Opening::readWrite ? GENERIC_READ | GENERIC_WRITE : GENERIC_WRITE;
    const DWORD disposition[] = {OPEN_EXISTING, CREATE_ALWAYS, OPEN_ALWAYS, OPEN_EXISTING, OPEN_ALWAYS};
    ScopedFileHandle file;
    std::uint64_t size = 0;
    bool made = false;
    Status opened = OpenDiskFile(path, access, reading ? FILE_SHARE_READ | FILE_SHARE_WRITE : FILE_SHARE_READ,
                                 disposition[static_cast<int>(how)], file, &made);
    if (opened && how != Opening::create)
        opened = SizeOf(file.Get(), size);
    LARGE_INTEGER zero{};
    if (opened && how == Opening::append)
        opened = Done(SetFilePointerEx(file.Get(), zero, nullptr, FILE_END));
    if (!opened)
        return Failed(opened.Why());
    return File(reinterpret_cast<std::intptr_t>(file.Release()), size, how == Opening::readWrite && made);
}

Status File::Read(char* bytes, std::size_t count)
{
    if (!open)
        return Status::Failed(Reason::System(ERROR_INVALID_HANDLE));
    return TransferAll(bytes, count, [&](char* at, DWORD part, DWORD* moved) {
        return ReadFile(Native(handle), at, part, moved, nullptr);
    });
}

Status File::Write(const char* bytes, std::size_t count)
{
    if (!open)
        return Status::Failed(Reason::System(ERROR_INVALID_HANDLE));
    return TransferAll(bytes, count, [&](const char* at, DWORD part, DWORD* moved) {
        return WriteFile(Native(handle), at, part, moved, nullptr);
    });
}

Status File::Skip(std::uint64_t count)
{
    if (!open || count > 0x7FFFFFFFFFFFFFFFull)
        return Status::Failed(Reason::System(open ? ERROR_NEGATIVE_SEEK : ERROR_INVALID_HANDLE));
    LARGE_INTEGER distance;
    distance.QuadPart = static_cast<LONGLONG>(count);
    return Done(SetFilePointerEx(Native(handle), distance, nullptr, FILE_CURRENT));
}

Status File::Truncate(std::uint64_t size)
{
    if (!open || size > 0x7FFFFFFFFFFFFFFFull)
        return Status::Failed(Reason::System(open ? ERROR_NEGATIVE_SEEK : ERROR_INVALID_HANDLE));
    LARGE_INTEGER position;
    position.QuadPart = static_cast<LONGLONG>(size);
    return Done(SetFilePointerEx(Native(handle), position, nullptr, FILE_BEGIN) && SetEndOfFile(Native(handle)));
}

Status File::Flush()
{
    if (!open)
        return Status::Failed(Reason::System(ERROR_INVALID_HANDLE));
    return Done(FlushFileBuffers(Native(handle)));
}

Status File::Close()
{
    if (!open)
        return Status::Failed(Reason::System(ERROR_INVALID_HANDLE));
    open = false;
    return Done(ScopedFileHandle(Native(handle)).Close());
}

namespace {

Status IdentityOfHandle(HANDLE handle, Identity& identity)
{
    BY_HANDLE_FILE_INFORMATION information;
    if (!GetFileInformationByHandle(handle, &information))
        return LastError();
    identity = {information.dwVolumeSerialNumber,
                std::uint64_t{information.nFileIndexHigh} << 32 | information.nFileIndexLow};
    return Status();
}

// A handle that only asks about what stands at `path`, a folder too (backup semantics), every
// link followed; it lets every other program read, write and delete meanwhile.
Status OpenToAsk(const std::string& path, ScopedFileHandle& handle)
{
    std::wstring wide;
    Status usable = SystemPath(path, wide);
    if (!usable)
        return usable;
    handle = ScopedFileHandle(CreateFileW(wide.c_str(), FILE_READ_ATTRIBUTES,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                          OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    return handle.IsValid() ? Status() : LastError();
}

}  // namespace

Status File::IdentityOf(Identity& identity) const
{
    if (!open)
        return Status::Failed(Reason::System(ERROR_INVALID_HANDLE));
    return IdentityOfHandle(Native(handle), identity);
}

Status IdentityOf(const std::string& path, Identity& identity)
{
    ScopedFileHandle handle;
    Status opened = OpenToAsk(path, handle);
    return opened ? IdentityOfHandle(handle.Get(), identity) : opened;
}

Status FinalPath(const std::string& path, std::string& final)
{
    ScopedFileHandle handle;
    Status opened = OpenToAsk(path, handle);
    if (!opened)
        return opened;
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetFinalPathNameByHandleW(handle.Get(), name.data(), static_cast<DWORD>(name.size()),
                                                       FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
        if (length == 0)
            return LastError();
        if (length < name.size()) {
            final = Utf8(name.data(), length);
            return Status();
        }
        name.assign(length, L'\0');  // the size it needs, its NUL included
    }
}

Status ReachFolder(const std::string& folder)
{
    std::wstring pattern;
    Status usable = SystemPath(folder + "/*", pattern);
    if (!usable)
        return usable;
    WIN32_FIND_DATAW entry;
    ScopedFind search(FindFirstFileW(pattern.c_str(), &entry));
    return search.IsValid() ? Status() : LastError();
}

std::string FullPath(const std::string& path)
{
    std::wstring wide;
    if (!Wide(path, wide) || wide.empty())
        return path;
    const DWORD length = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    std::wstring full(length, L'\0');
    const DWORD written = length ? GetFullPathNameW(wide.c_str(), length, full.data(), nullptr) : 0;
    return written > 0 && written < length ? Utf8(full.data(), written) : path;
}

Status MakeFolder(const std::string& path)
{
    std::wstring wide;
    Status usable = SystemPath(path, wide, plainFolderLimit);
    return usable ? Done(CreateDirectoryW(wide.c_str(), nullptr)) : usable;
}

Status RemoveFolder(const std::string& path)
{
    std::wstring wide;
    Status usable = SystemPath(path, wide);
    return usable ? Done(RemoveDirectoryW(wide.c_str())) : usable;
}

Status RemoveFile(const std::string& path)
{
    std::wstring wide;
    Status usable = SystemPath(path, wide);
    return usable ? Done(DeleteFileW(wide.c_str())) : usable;
}

Status MoveOver(const std::string& from, const std::string& to)
{
    std::wstring wideFrom, wideTo;
    Status usable = SystemPath(from, wideFrom);
    if (usable)
        usable = SystemPath(to, wideTo);
    return usable ? Done(MoveFileExW(wideFrom.c_str(), wideTo.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
                  : usable;
}

std::vector<std::string> RunningProgramNames()
{
    std::vector<std::string> names;
    ScopedSnapshot snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (!snapshot.IsValid())
        return names;
    PROCESSENTRY32W process{};
    process.dwSize = sizeof process;
    for (BOOL more = Process32FirstW(snapshot.Get(), &process); more; more = Process32NextW(snapshot.Get(), &process))
        names.push_back(Utf8(process.szExeFile));
    return names;
}

std::string ComputerName()
{
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = {};
    DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
    return GetComputerNameW(name, &size) ? Utf8(name, size) : std::string();
}

std::string UserName()
{
    wchar_t name[257] = {};  // UNLEN + 1
    DWORD size = 257;
    return GetUserNameW(name, &size) ? Utf8(name) : std::string();
}

std::string AnsiToUtf8(const std::string& ansi)
{
    if (ansi.empty())
        return std::string();
    const int length = MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(std::max(length, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()), wide.data(), length);
    return Utf8(wide.data(), wide.size());
}

std::string SystemMessage(std::uint32_t code)
{
    wchar_t* text = nullptr;
    // Language 0: the user's language, else the system's, else English.
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                            FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::string message = length > 0 && text ? Utf8(text, length) : std::string();
    LocalFree(text);
    message.erase(message.find_last_not_of(" \r\n") + 1);
    return message.empty() ? "Windows error " + std::to_string(code) : message;
}

}  // namespace sys
