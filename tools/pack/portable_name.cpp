#include "portable_name.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace {

std::string Hex(unsigned char c)
{
    char text[8];
    std::snprintf(text, sizeof text, "0x%02X", c);
    return text;
}

std::string CharacterProblem(unsigned char c)
{
    if (c == 0)
        return "contains a zero byte";
    if (c == '\\')
        return "contains '\\' ('/' is the only separator)";
    if (c < 0x20 || c == 0x7F)
        return "contains the control character " + Hex(c);
    if (c >= 0x80)
        return "contains the non-ASCII byte " + Hex(c) + " (the installer's file calls take ANSI names)";
    for (const char* forbidden = "<>:\"|?*"; *forbidden; ++forbidden)
        if (c == static_cast<unsigned char>(*forbidden))
            return std::string("contains '") + static_cast<char>(c) + "', which Windows forbids in file names";
    return "";
}

char Upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// CON, PRN, AUX, NUL, COM1-9 and LPT1-9, with or without an extension, open a device instead.
bool IsDeviceName(const std::string& segment)
{
    std::string stem = segment.substr(0, segment.find('.'));
    for (char& c : stem)
        c = Upper(c);
    if (stem == "CON" || stem == "PRN" || stem == "AUX" || stem == "NUL")
        return true;
    return stem.size() == 4 && (stem.compare(0, 3, "COM") == 0 || stem.compare(0, 3, "LPT") == 0) &&
           stem[3] >= '1' && stem[3] <= '9';
}

std::string SegmentProblem(const std::string& segment)
{
    if (segment.empty())
        return "has an empty path segment (\"//\" or a trailing '/')";
    const char last = segment.back();
    if (last == '.' || last == ' ')
        return "has the segment \"" + segment + "\" ending in '" + last + "', which Windows drops";
    if (IsDeviceName(segment))
        return "has the segment \"" + segment + "\", a Windows device name";
    return "";
}

}  // namespace

std::string PortableNameProblem(const std::string& name)
{
    if (name.empty())
        return "is empty";
    // Lengths are stored as signed 32-bit integers.
    if (name.size() >= (std::uint64_t{1} << 31))
        return "is " + std::to_string(name.size()) + " bytes long, a length must stay below 2^31";
    for (char c : name) {
        std::string problem = CharacterProblem(static_cast<unsigned char>(c));
        if (!problem.empty())
            return problem;
    }
    if (name.front() == '/')
        return "begins with '/' (names are relative to the game folder)";
    std::size_t begin = 0;
    for (;;) {
        const std::size_t end = name.find('/', begin);
        std::string problem = SegmentProblem(name.substr(begin, end - begin));
        if (!problem.empty())
            return problem;
        if (end == std::string::npos)
            return "";
        begin = end + 1;
    }
}
