#include "windows_names.h"

#include <cstdio>

#include "text_encoding.h"

namespace {

// A digit, or a superscript one, two or three (UTF-8 C2 B9, C2 B2, C2 B3).
bool IsPortNumber(const std::string& number)
{
    if (number.size() == 1)
        return number[0] >= '0' && number[0] <= '9';
    return number == "\xC2\xB9" || number == "\xC2\xB2" || number == "\xC2\xB3";
}

// Windows opens a device for these names, whatever extension follows and whatever spaces stand
// before the extension: "aux.txt" and "COM1 .cfg" are the serial port and friends.
bool IsDeviceSegment(const std::string& segment)
{
    std::string base = segment.substr(0, segment.find('.'));
    base.erase(base.find_last_not_of(' ') + 1);
    base = AsciiLower(base);
    for (const char* device : {"con", "prn", "aux", "nul", "conin$", "conout$"})
        if (base == device)
            return true;
    return base.size() >= 4 && (base.compare(0, 3, "com") == 0 || base.compare(0, 3, "lpt") == 0) &&
           IsPortNumber(base.substr(3));
}

std::string CharacterProblem(unsigned char c)
{
    if (c == 0)
        return "contains a zero byte";
    if (c == '\\')
        return "contains '\\' ('/' is the only separator)";
    if (c < 0x20 || c == 0x7F)
        return "contains the control character " + HexByte(c);
    for (const char* forbidden = ":*?<>|\""; *forbidden; ++forbidden)
        if (c == static_cast<unsigned char>(*forbidden))
            return std::string("contains '") + static_cast<char>(c) + "', which Windows forbids in file names";
    return "";
}

// The longest name Windows keeps in a folder, in UTF-16 units.
constexpr std::size_t longestSegment = 255;

std::string SegmentProblem(const std::string& segment)
{
    if (segment.empty())
        return "";  // "a//b": Windows reads the doubled separator as one
    if (Utf16Length(segment) > longestSegment)
        return "has a segment of " + std::to_string(Utf16Length(segment)) + " characters, more than the " +
               std::to_string(longestSegment) + " a Windows name holds";
    const char last = segment.back();
    if (last == '.' || last == ' ')
        return "has the segment \"" + segment + "\" ending in '" + last + "', which Windows drops";
    if (IsDeviceSegment(segment))
        return "has the segment \"" + segment + "\", a Windows device name";
    return "";
}

}  // namespace

std::string WindowsNameProblem(const std::string& relative)
{
    if (relative.empty())
        return "is empty";
    if (!IsUtf8(relative))
        return "is not UTF-8";
    for (char c : relative) {
        std::string problem = CharacterProblem(static_cast<unsigned char>(c));
        if (!problem.empty())
            return problem;
    }
    if (relative.front() == '/')
        return "begins with '/' (names are relative to the game folder)";
    if (relative.back() == '/')
        return "ends with '/' (a name names a file, not a folder)";
    for (std::size_t begin = 0;;) {
        const std::size_t end = relative.find('/', begin);
        std::string problem = SegmentProblem(relative.substr(begin, end - begin));
        if (!problem.empty())
            return problem;
        if (end == std::string::npos)
            return "";
        begin = end + 1;
    }
}

std::string HexByte(unsigned char c)
{
    char text[8];
    std::snprintf(text, sizeof text, "0x%02X", c);
    return text;
}
