#pragma once
// The two game payloads compiled into the program, read where they lie.

#include <cstddef>
#include <string>

struct EmbeddedContainer {
    std::size_t length;
    const char* start;  // followed by one zero byte that is not part of the container
};

extern const EmbeddedContainer cs16Payload;
extern const EmbeddedContainer cssPayload;

// What tells one build's container from another's: the first 12 hex digits of its SHA-256.
std::string ContainerId(const EmbeddedContainer& container);
