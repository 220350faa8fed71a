#include "embedded.h"

#include <algorithm>
#include <cstdint>

#include "sha256.h"

// Defined by embedded_data.S: each container's bytes and its length.
extern "C" {
extern const std::uint64_t ludaxCs16ContainerLength;
extern const char ludaxCs16ContainerStart[];
extern const std::uint64_t ludaxCssContainerLength;
extern const char ludaxCssContainerStart[];
extern const unsigned char ludaxCs16ContainerSums[];
extern const unsigned char ludaxCssContainerSums[];
}

const EmbeddedContainer cs16Payload = {static_cast<std::size_t>(ludaxCs16ContainerLength), ludaxCs16ContainerStart,
                                       ludaxCs16ContainerSums};
const EmbeddedContainer cssPayload = {static_cast<std::size_t>(ludaxCssContainerLength), ludaxCssContainerStart,
                                      ludaxCssContainerSums};

namespace {

Sha256::Digest SumAt(const unsigned char* sums, std::size_t index)
{
    Sha256::Digest digest;
    std::copy(sums + 32 * index, sums + 32 * (index + 1), digest.begin());
    return digest;
}

}  // namespace

Sha256::Digest RecordSum(const EmbeddedContainer& container, std::size_t index, const char* data, std::size_t size)
{
    return container.sums ? SumAt(container.sums, index + 1) : Sha256Of(data, size);
}

std::string ContainerId(const EmbeddedContainer& container)
{
    return HexDigest(container.sums ? SumAt(container.sums, 0) : Sha256Of(container.start, container.length)).substr(0, 12);
}
