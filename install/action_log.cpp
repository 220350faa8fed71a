#include "action_log.h"

#include <ctime>

std::string IsoTime(long long secondsSince1970)
{
    const std::time_t time = static_cast<std::time_t>(secondsSince1970);
    char text[32] = "";
    if (const std::tm* utc = std::gmtime(&time))  // one thread: its shared result is safe here
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", utc);
    return text;
}

std::string WindowsPath(std::string path)
{
    for (char& c : path)
        if (c == '/')
            c = '\\';
    return path;
}
