#include "file_output.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace ludaxgen {

void writeFile(const std::string& root, const std::string& relativePath, const std::vector<std::uint8_t>& bytes)
{
    const std::filesystem::path target = std::filesystem::path(root) / relativePath;
    std::filesystem::create_directories(target.parent_path());
    std::ofstream out(target, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out)
        throw std::runtime_error("cannot write " + target.string());
}

} // namespace ludaxgen
