#include "name_rules.h"

#include <cctype>

namespace {

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool SameIgnoringCase(const std::string& a, const char* b)
{
    std::size_t i = 0;
    for (; i < a.size() && b[i] != '\0'; ++i)
        if (Lower(a[i]) != Lower(b[i]))
            return false;
    return i == a.size() && b[i] == '\0';
}

// Windows drops trailing dots and spaces from a path segment, so "..", "..." and ".. " all
// lead to the parent folder.
bool IsParentSegment(const std::string& segment)
{
    return segment.compare(0, 2, "..") == 0 &&
           segment.find_first_not_of(". ") == std::string::npos;
}

// Windows opens a device for these names, whatever extension follows and whatever spaces
// stand before the extension: "aux.txt" and "COM1 .cfg" are the serial port and friends.
bool IsDeviceSegment(const std::string& segment)
{
    std::string base = segment.substr(0, segment.find('.'));
    base.erase(base.find_last_not_of(' ') + 1);
    for (const char* device : {"con", "prn", "aux", "nul", "conin$", "conout$"})
        if (SameIgnoringCase(base, device))
            return true;
    if (base.size() != 4 || !(SameIgnoringCase(base.substr(0, 3), "com") ||
                              SameIgnoringCase(base.substr(0, 3), "lpt")))
        return false;
    // The digits, and the superscript one, two and three of the Windows code page.
    const unsigned char number = static_cast<unsigned char>(base[3]);
    return (number >= '0' && number <= '9') || number == 0xB9 || number == 0xB2 || number == 0xB3;
}

bool IsBadSegment(const std::string& segment)
{
    if (segment.empty())
        return false;  // "a//b": Windows reads the doubled separator as one
    const char last = segment.back();
    return last == '.' || last == ' ' || IsParentSegment(segment) || IsDeviceSegment(segment);
}

bool HasForbiddenByte(const std::string& path)
{
    for (char c : path) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F || std::string("\\:*?<>|\"").find(c) != std::string::npos)
            return true;
    }
    return false;
}

bool IsPlainRelativePath(const std::string& path)
{
    if (path.empty() || path[0] == '/' || HasForbiddenByte(path))
        return false;
    std::size_t start = 0;
    while (start <= path.size()) {
        std::size_t end = path.find('/', start);
        if (end == std::string::npos)
            end = path.size();
        if (IsBadSegment(path.substr(start, end - start)))
            return false;
        start = end + 1;
    }
    return true;
}

// The backup files of both games lie directly in the account folder. A name with '~' there
// may be the short 8.3 alias Windows gives them (CS16LU~1.BAK), so it is refused as well;
// so is anything below such a name, which would be no file the install made.
bool NamesABackupFile(const std::string& relative)
{
    const std::string first = relative.substr(0, relative.find('/'));
    for (const char* backup : {"cs16ludax.bak", "cs16ludax_1.bak", "cssludax.bak", "cssludax_1.bak"})
        if (SameIgnoringCase(first, backup))
            return true;
    return first.find('~') != std::string::npos;
}

}  // namespace

bool IsRemovableBelow(const std::string& path, const std::string& accountFolder)
{
    const std::string prefix = accountFolder + "/";
    if (path.size() <= prefix.size() || path.compare(0, prefix.size(), prefix) != 0)
        return false;
    const std::string relative = path.substr(prefix.size());
    return IsPlainRelativePath(relative) && !NamesABackupFile(relative);
}

bool IsRestorableName(const std::string& name) { return IsPlainRelativePath(name); }
