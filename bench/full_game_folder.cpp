#include "full_game_folder.h"

#include <filesystem>
#include <fstream>
#include <vector>

#include "container.h"

namespace bench {

void FillWithOtherBytes(const EmbeddedContainer& payload, const std::string& contentFolder)
{
    WalkRecords(payload.start, payload.length, 0, [&](const ContainerRecord& record) {
        std::filesystem::path target = contentFolder + record.name;
        std::filesystem::create_directories(target.parent_path());
        std::vector<char> bytes(record.data, record.data + record.size);
        for (char& byte : bytes)
            byte = static_cast<char>(~byte);
        std::ofstream(target, std::ios::binary).write(bytes.data(), bytes.size());
        return true;
    });
}

}  // namespace bench
