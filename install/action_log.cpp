#include "action_log.h"

#include <chrono>
#include <ctime>

bool ActionLogFile::Line(const std::vector<std::string>& fields)
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    std::string line = IsoTime(std::chrono::duration_cast<std::chrono::seconds>(now).count());
    for (const std::string& field : fields) {
        line += '\t';
        for (char c : field)
            line += c == '\r' ? ' ' : c == '\n' ? ' ' : c == '\t' ? ' ' : c;
    }
    return static_cast<bool>(file.Write(line + "\r\n"));
}

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
