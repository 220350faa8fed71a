#pragma once
// The two game payloads compiled into the program.

#include <cstddef>
#include <vector>

struct EmbeddedContainer {
    std::size_t length;
    const char* start;  // followed by one zero byte that is not part of the container
};

extern const EmbeddedContainer cs16Payload;
extern const EmbeddedContainer cssPayload;

// One heap buffer of exactly the container's length.
std::vector<char> LoadContainer(const EmbeddedContainer& container);
