#include "payload_files.h"

#include <fstream>
#include <iterator>

#include "manifest.h"
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
    std::ifstream manifest(SourceFolder() + "/payload/" + game + ".manifest", std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(manifest)), std::istreambuf_iterator<char>());
    std::vector<std::string> names;
    for (const ManifestLine& line : ParseManifest(text))
        names.push_back(line.name);
    return names;
}

std::string PayloadBytes(const std::string& game, const std::string& name)
{
    return ReadFile(SourceFolder() + "/payload/" + game + "/" + name);
}
