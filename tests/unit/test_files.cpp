#include <algorithm>
#include "test_files.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <thread>
#include <vector>

#ifdef _WIN32
#include <windows.h>

#include <cctype>
#else
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace {

// A UTF-8 path as the system takes it. On Windows a long absolute one (or the root of a tree
// that may hold long ones) in its extended-length form, which the file functions take at any
// length; that form resolves no "." or "..", so those keep the plain form.
fs::path Native(const std::string& path, bool deep = false)
{
#ifdef _WIN32
    if ((path.size() > 240 || deep) && path.size() > 2 && path[1] == ':' && path.find("/.") == std::string::npos) {
        std::string extended = "\\\\?\\" + path;
        for (char& c : extended)
            c = c == '/' ? '\\' : c;
        return fs::u8path(extended);
    }
    return fs::u8path(path);
#else
    static_cast<void>(deep);
    return fs::path(path);
#endif
}

// The C runtime's stat does not take the extended-length form either.
bool IsFolder(const fs::path& path)
{
#ifdef _WIN32
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
#else
    return fs::is_directory(path);
#endif
}

std::string Utf8(const fs::path& path)
{
    const auto text = path.generic_u8string();
    return std::string(text.begin(), text.end());
}

}  // namespace

TempFolder::TempFolder()
{
    static std::atomic<unsigned> counter{0};
    std::random_device seed;
    fs::path base = fs::temp_directory_path() /
                    ("ludax-test-" + std::to_string(seed()) + "-" + std::to_string(counter++));
    fs::create_directories(base);
    path = Utf8(base);
}

TempFolder::~TempFolder()
{
    std::error_code ignored;
    fs::remove_all(Native(path), ignored);
}

#ifdef _WIN32
// The C runtime's streams do not take the extended-length form: the file calls themselves do.
void WriteFile(const std::string& path, const std::string& bytes)
{
    fs::path file = Native(path);
    if (file.has_parent_path())
        fs::create_directories(file.parent_path());
    HANDLE out = CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    const bool whole = out != INVALID_HANDLE_VALUE &&
                       ::WriteFile(out, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
                       written == bytes.size();
    if (out != INVALID_HANDLE_VALUE)
        CloseHandle(out);
    if (!whole)
        throw std::runtime_error("cannot write " + path);
}

std::string ReadFile(const std::string& path)
{
    HANDLE in = CreateFileW(Native(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (in == INVALID_HANDLE_VALUE)
        throw std::runtime_error("cannot read " + path);
    std::string bytes;
    char block[65536];
    DWORD got = 0;
    while (::ReadFile(in, block, sizeof block, &got, nullptr) && got > 0)
        bytes.append(block, got);
    CloseHandle(in);
    return bytes;
}
#else
void WriteFile(const std::string& path, const std::string& bytes)
{
    fs::path file = Native(path);
    if (file.has_parent_path())
        fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out)
        throw std::runtime_error("cannot write " + path);
}

std::string ReadFile(const std::string& path)
{
    std::ifstream in(Native(path), std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + path);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}
#endif

void MakeFolders(const std::string& path) { fs::create_directories(Native(path)); }

bool Soon(const std::function<bool()>& holds)
{
    for (int wait = 0; wait < 500 && !holds(); ++wait)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return holds();
}

std::string ContainerSums(const std::string& sumsFile)
{
#ifdef _WIN32
    return ReadFile(!sumsFile.empty() && sumsFile[0] == '/' ? "Z:" + sumsFile : sumsFile);
#else
    return ReadFile(sumsFile);
#endif
}

std::string BuildName(const std::string& sumsFile)
{
    const std::string text = ContainerSums(sumsFile);
    const auto id = [&](const std::string& game) { return text.substr(text.find(game + " ") + game.size() + 1, 12); };
    return "Ludax config. 1.02 (cs16 " + id("cs16") + ", css " + id("css") + ")";
}

void RemovePath(const std::string& path)
{
    std::error_code ignored;
    fs::remove(Native(path), ignored);
}

bool Exists(const std::string& path)
{
    std::error_code ignored;
    return fs::exists(Native(path), ignored);
}

std::vector<std::string> NamesIn(const std::string& folder)
{
    std::vector<std::string> names;
#ifdef _WIN32
    // The C runtime's directory walk does not take the extended-length form: FindFirstFileW does.
    WIN32_FIND_DATAW entry;
    HANDLE search = FindFirstFileW((Native(folder, true) / L"*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    do {
        const std::wstring name = entry.cFileName;
        if (name != L"." && name != L"..")
            names.push_back(Utf8(fs::path(name)));
    } while (FindNextFileW(search, &entry));
    FindClose(search);
#else
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
#endif
    return names;
}

namespace {

// Adds what `folder` holds below `relative` (empty or ending with '/').
void AddEntries(const std::string& folder, const std::string& relative, std::map<std::string, std::string>& tree)
{
    const std::string here = relative.empty() ? folder : folder + "/" + relative.substr(0, relative.size() - 1);
    for (const std::string& entry : NamesIn(here)) {
        const std::string name = relative + entry;
#ifndef _WIN32
        // A link is where it points to, whether or not anything stands there.
        std::error_code failed;
        if (fs::is_symlink(fs::symlink_status(folder + "/" + name, failed))) {
            tree[name] = "<link to " + fs::read_symlink(folder + "/" + name, failed).string() + ">";
            continue;
        }
#endif
        if (IsFolder(Native(folder + "/" + name, true))) {
            tree[name] = "<folder>";
            AddEntries(folder, name + "/", tree);
        } else {
            tree[name] = ReadFile(folder + "/" + name);
        }
    }
}

}  // namespace

std::map<std::string, std::string> Snapshot(const std::string& folder)
{
    std::map<std::string, std::string> tree;
    if (Exists(folder))
        AddEntries(folder.back() == '/' ? folder.substr(0, folder.size() - 1) : folder, "", tree);
    return tree;
}

#ifdef _WIN32

namespace {

// Wine's own export: the Unix path of a Windows path, allocated on the process heap.
std::string UnixPathOf(const std::string& path)
{
    using Convert = char*(CDECL*)(const WCHAR*);
    auto convert = reinterpret_cast<Convert>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
    if (!convert)
        return std::string();
    std::wstring wide = fs::u8path(path).wstring();
    char* unixPath = convert(wide.c_str());
    if (!unixPath)
        return std::string();
    std::string result = unixPath;
    HeapFree(GetProcessHeap(), 0, unixPath);
    return result;
}

// Runs a Unix command line; Wine starts a Unix program but cannot wait for it, so the caller
// waits until what it makes shows.
bool RunUnix(const std::string& program, std::string command)
{
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(program.c_str(), &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}


}  // namespace

bool MapDrive(const std::string& letter, const std::string& folder)
{
    // The prefix's drive C: is its dosdevices/c:, which lies beside the other letters.
    std::string devices = UnixPathOf("C:\\");
    devices = devices.substr(0, devices.find_last_of('/', devices.size() - 2) + 1);
    const std::string drive = letter + ":\\";
    const std::string name = std::string(1, static_cast<char>(std::tolower(static_cast<unsigned char>(letter[0])))) + ":";
    if (folder.empty())
        return RunUnix("Z:\\bin\\rm", "/bin/rm -f \"" + devices + name + "\"") &&
               Soon([&] { return GetFileAttributesA(drive.c_str()) == INVALID_FILE_ATTRIBUTES; });
    const std::string target = UnixPathOf(folder);
    return !target.empty() &&
           RunUnix("Z:\\bin\\ln", "/bin/ln -sfn \"" + target + "\" \"" + devices + name + "\"") &&
           Soon([&] { return GetFileAttributesA(drive.c_str()) != INVALID_FILE_ATTRIBUTES; });
}

std::string ShortPath(const std::string& path)
{
    const std::wstring wide = fs::u8path(path).wstring();
    std::wstring shortPath(32768, L'\0');
    const DWORD length = GetShortPathNameW(wide.c_str(), shortPath.data(), static_cast<DWORD>(shortPath.size()));
    if (length == 0 || length >= shortPath.size())
        return std::string();
    shortPath.resize(length);
    return fs::path(shortPath).u8string();
}

bool MakeLink(const std::string& target, const std::string& link)
{
    const std::string unixTarget = UnixPathOf(target), unixLink = UnixPathOf(link);
    return !unixTarget.empty() && !unixLink.empty() &&
           RunUnix("Z:\\bin\\ln", "/bin/ln -s \"" + unixTarget + "\" \"" + unixLink + "\"") &&
           Soon([&] { return GetFileAttributesW(fs::u8path(link).wstring().c_str()) != INVALID_FILE_ATTRIBUTES; });
}

LockedFile::LockedFile(const std::string& path, Sharing sharing)
{
    HANDLE file = CreateFileW(fs::u8path(path).wstring().c_str(), GENERIC_READ | GENERIC_WRITE,
                              sharing == Sharing::readers ? FILE_SHARE_READ : 0, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE)
        handle = file;
}

LockedFile::~LockedFile()
{
    if (handle)
        CloseHandle(handle);
}

#else

bool MakeLink(const std::string& target, const std::string& link)
{
    return symlink(target.c_str(), link.c_str()) == 0;
}

LockedFile::LockedFile(const std::string&, Sharing) {}

LockedFile::~LockedFile() = default;

#endif

void ResizeFile(const std::string& path, std::uint64_t size) { fs::resize_file(Native(path), size); }

std::string Le32(std::uint32_t value)
{
    return {static_cast<char>(value), static_cast<char>(value >> 8), static_cast<char>(value >> 16),
            static_cast<char>(value >> 24)};
}

std::string Record(const std::string& name, const std::string& data)
{
    return Le32(static_cast<std::uint32_t>(name.size())) + name + Le32(static_cast<std::uint32_t>(data.size())) + data;
}

std::string Western(const std::string& utf8)
{
    std::string bytes;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const unsigned char lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80) {
            bytes += utf8[i];
            continue;
        }
        if (lead < 0xC2 || lead > 0xC3 || i + 1 == utf8.size())
            throw std::runtime_error("not a letter below U+0100: " + utf8);
        bytes += static_cast<char>((lead & 0x03) << 6 | (static_cast<unsigned char>(utf8[++i]) & 0x3F));
    }
    return bytes;
}

std::string AsSteamWritesIt(std::string path)
{
#ifdef _WIN32
    for (char& c : path)
        c = c == '/' ? '\\' : c;
#endif
    return path;
}

std::string LibraryList(const std::vector<std::string>& libraries)
{
    std::string list = "\"libraryfolders\"\r\n{\r\n\t\"contentstatsid\"\t\t\"-4254418836617418516\"\r\n";
    for (std::size_t i = 0; i < libraries.size(); ++i) {
        std::string escaped;
        for (char c : AsSteamWritesIt(libraries[i]))
            escaped += c == '\\' ? std::string("\\\\") : std::string(1, c);
        list += "\t\"" + std::to_string(i) + "\"\r\n\t{\r\n\t\t\"path\"\t\t\"" + escaped + "\"\r\n\t}\r\n";
    }
    return list + "}\r\n";
}

std::vector<std::vector<std::string>> LogFields(const std::string& log)
{
    std::vector<std::vector<std::string>> lines;
    for (std::size_t at = 0, end; (end = log.find("\r\n", at)) != std::string::npos; at = end + 2) {
        std::vector<std::string> fields;
        for (std::size_t from = log.find('\t', at) + 1, tab; from != 0 && from <= end; from = tab + 1) {
            tab = std::min(log.find('\t', from), end);
            fields.push_back(log.substr(from, tab - from));
        }
        lines.push_back(fields);
    }
    return lines;
}

std::string Backslashed(std::string path)
{
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}
