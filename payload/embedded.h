#pragma once
// The two game payloads compiled into the program, read where they lie.

#include <cstddef>
#include <string>

#include "sha256.h"

struct EmbeddedContainer {
    std::size_t length;
    const char* start;  // followed by one zero byte that is not part of the container
    // The SHA-256 of the container, then of each record's data, 32 bytes each, as the build worked
    // them out; none for a container made while the program runs (its sums are worked out then).
    const unsigned char* sums = nullptr;
};

// The SHA-256 of the data of the container's record number `index` (from 0), `data` its bytes.
Sha256::Digest RecordSum(const EmbeddedContainer& container, std::size_t index, const char* data, std::size_t size);

extern const EmbeddedContainer cs16Payload;
extern const EmbeddedContainer cssPayload;

// What tells one build's container from another's: the first 12 hex digits of its SHA-256.
std::string ContainerId(const EmbeddedContainer& container);
