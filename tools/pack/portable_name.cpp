#include "portable_name.h"

#include <cstdint>

#include "windows_names.h"

std::string PortableNameProblem(const std::string& name)
{
    // Lengths are stored as signed 32-bit integers.
    if (name.size() >= (std::uint64_t{1} << 31))
        return "is " + std::to_string(name.size()) + " bytes long, a length must stay below 2^31";
    // What every install can back up, restore and remove...
    const std::string problem = WindowsNameProblem(name);
    if (!problem.empty())
        return problem;
    // ...and, stricter still, plain ASCII with no empty segment, so that the name reads the same
    // on every system and in every code page.
    for (char c : name)
        if (static_cast<unsigned char>(c) >= 0x80)
            return "contains the non-ASCII byte " + HexByte(static_cast<unsigned char>(c)) +
                   " (keep names in plain ASCII)";
    if (name.find("//") != std::string::npos)
        return "has an empty path segment (\"//\")";
    return "";
}
