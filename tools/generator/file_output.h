#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ludaxgen {

// Writes bytes to root/relativePath, creating missing folders; throws on failure.
void writeFile(const std::string& root, const std::string& relativePath, const std::vector<std::uint8_t>& bytes);

} // namespace ludaxgen
