#include "system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
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
    DIR* dir = opendir(folder.c_str());
    if (!dir)
        return names;
    while (dirent* entry = readdir(dir))
        names.push_back(entry->d_name);
    closedir(dir);
    return names;
}

EntryKind FindEntry(const std::string& path)
{
    struct stat info;
    if (path.empty() || stat(path.c_str(), &info) != 0)
        return EntryKind::none;
    return S_ISDIR(info.st_mode) ? EntryKind::folder : EntryKind::file;
}

bool ReadFileStart(const std::string& path, std::size_t limit, std::string& bytes)
{
    bytes.clear();
    int file = open(path.c_str(), O_RDONLY);
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

bool MakeFolder(const std::string& path) { return mkdir(path.c_str(), 0777) == 0; }

void RemoveFolder(const std::string& path) { rmdir(path.c_str()); }

void RemoveFile(const std::string& path) { unlink(path.c_str()); }

void ExitWithMessage(const std::string& text, const std::string& caption, unsigned style)
{
    std::fprintf(stderr, "[%s] (style 0x%02x)\n%s\n", caption.c_str(), style, text.c_str());
    std::exit(-1);
}

}  // namespace sys
