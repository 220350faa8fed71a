#include "embedded.h"

#include <cstdint>

#include "sha256.h"

// Defined by embedded_data.S: each container's bytes and its length.
extern "C" {
extern const std::uint64_t ludaxCs16ContainerLength;
extern const char ludaxCs16ContainerStart[];
extern const std::uint64_t ludaxCssContainerLength;
extern const char ludaxCssContainerStart[];
}

const EmbeddedContainer cs16Payload = {static_cast<std::size_t>(ludaxCs16ContainerLength), ludaxCs16ContainerStart};
const EmbeddedContainer cssPayload = {static_cast<std::size_t>(ludaxCssContainerLength), ludaxCssContainerStart};


std::string ContainerId(const EmbeddedContainer& container)
{
    return HexDigest(Sha256Of(container.start, container.length)).substr(0, 12);
}
