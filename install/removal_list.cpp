#include "removal_list.h"

void AppendRemovalLine(OutputFile& list, const std::string& path)
{
    std::string line = path + "\r\n";
    list.Append(line.data(), line.size());
}

std::vector<std::string> ReadRemovalList(const std::string& bytes)
{
    std::vector<std::string> paths;
    std::size_t start = 0;
    while (start < bytes.size()) {
        std::size_t end = bytes.find('\n', start);
        if (end == std::string::npos)
            end = bytes.size();
        std::string line;
        for (std::size_t i = start; i < end; ++i)
            if (bytes[i] != '\r')
                line += bytes[i];
        if (line.empty())
            break;
        paths.push_back(line);
        start = end + 1;
    }
    return paths;
}
