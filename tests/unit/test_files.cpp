#include "test_files.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace fs = std::filesystem;

TempFolder::TempFolder()
{
    static std::atomic<unsigned> counter{0};
    std::random_device seed;
    fs::path base = fs::temp_directory_path() /
                    ("ludax-test-" + std::to_string(seed()) + "-" + std::to_string(counter++));
    fs::create_directories(base);
    path = base.generic_string();
}

TempFolder::~TempFolder()
{
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

void WriteFile(const std::string& path, const std::string& bytes)
{
    fs::path file(path);
    if (file.has_parent_path())
        fs::create_directories(file.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out)
        throw std::runtime_error("cannot write " + path);
}

std::string ReadFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + path);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

void MakeFolders(const std::string& path) { fs::create_directories(path); }

bool Exists(const std::string& path)
{
    std::error_code ignored;
    return fs::exists(path, ignored);
}

std::map<std::string, std::string> Snapshot(const std::string& folder)
{
    std::map<std::string, std::string> tree;
    if (!Exists(folder))
        return tree;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        std::string relative = fs::relative(entry.path(), folder).generic_string();
        tree[relative] = entry.is_directory() ? "<folder>" : ReadFile(entry.path().generic_string());
    }
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
    std::wstring wide = fs::path(path).wstring();
    char* unixPath = convert(wide.c_str());
    if (!unixPath)
        return std::string();
    std::string result = unixPath;
    HeapFree(GetProcessHeap(), 0, unixPath);
    return result;
}

}  // namespace

bool MakeLink(const std::string& target, const std::string& link)
{
    const std::string unixTarget = UnixPathOf(target), unixLink = UnixPathOf(link);
    if (unixTarget.empty() || unixLink.empty())
        return false;
    // Wine starts a Unix program but cannot wait for it: wait until the link shows.
    std::string command = "/bin/ln -s \"" + unixTarget + "\" \"" + unixLink + "\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA("Z:\\bin\\ln", &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    auto shows = [&] { return GetFileAttributesA(link.c_str()) != INVALID_FILE_ATTRIBUTES; };
    for (int wait = 0; wait < 500 && !shows(); ++wait)
        Sleep(10);
    return shows();
}

LockedFile::LockedFile(const std::string& path)
{
    HANDLE file = CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
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

LockedFile::LockedFile(const std::string&) {}

LockedFile::~LockedFile() = default;

#endif

void ResizeFile(const std::string& path, std::uint64_t size) { fs::resize_file(path, size); }
