#include "payload_files.h"

#include <fstream>
#include <sstream>

#include "test_files.h"

namespace {

// The source tree as this program sees it; under Wine a POSIX path is reached through Z:.
std::string SourceFolder()
{
    std::string folder = LUDAX_SOURCE_DIR;
    return folder.size() > 0 && folder[0] == '/' ? "Z:" + folder : folder;
}

}  // namespace

std::vector<std::string> ManifestNames(const std::string& game)
{
    std::vector<std::string> names;
    std::ifstream manifest(SourceFolder() + "/payload/" + game + ".manifest", std::ios::binary);
    std::string line;
    while (std::getline(manifest, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!line.empty())
            names.push_back(line);
    }
    return names;
}

std::string PayloadBytes(const std::string& game, const std::string& name)
{
    return ReadFile(SourceFolder() + "/payload/" + game + "/" + name);
}
