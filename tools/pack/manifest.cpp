#include "manifest.h"

std::vector<ManifestLine> ParseManifest(const std::string& text)
{
    std::vector<ManifestLine> lines;
    int number = 0;
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t end = text.find('\n', begin);
        if (end == std::string::npos)
            end = text.size();
        ++number;
        std::size_t nameEnd = end;
        if (nameEnd > begin && end < text.size() && text[nameEnd - 1] == '\r')
            --nameEnd;
        if (nameEnd > begin)
            lines.push_back({number, text.substr(begin, nameEnd - begin)});
        begin = end + 1;
    }
    return lines;
}
