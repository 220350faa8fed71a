// Looks for the two containers in arbitrary bytes as `ludax-pack list` does in a Ludax.exe, and
// walks each one found: whatever the file, a refusal says why, and every container reported lies
// inside the file with its closing zero byte, Counter-Strike 1.6 first.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "carried_containers.h"
#include "container.h"

namespace {

void Require(bool condition)
{
    if (!condition)
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<char> file(data, data + size);
    std::vector<CarriedContainer> found;
    std::string error;
    if (!FindCarriedContainers(file, found, error)) {
        Require(!error.empty() && found.empty());
        return 0;
    }
    Require(found.size() == 2 && found[0].game == "cs16" && found[1].game == "css");
    for (const CarriedContainer& container : found) {
        Require(container.offset <= file.size() && container.length < file.size() - container.offset);
        Require(file[container.offset + container.length] == '\0');
        WalkRecords(file.data() + container.offset, container.length, 0, [&](const ContainerRecord& record) {
            Require(record.next <= container.length);
            return true;
        });
    }
    return 0;
}
