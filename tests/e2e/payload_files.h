#pragma once
// The payload as the source tree holds it (payload/<game>.manifest and payload/<game>/), the
// oracle for what an install must have written.

#include <string>
#include <vector>

// Record names of payload/<game>.manifest in packing order; empty when it cannot be read.
std::vector<std::string> ManifestNames(const std::string& game);

// The bytes of payload/<game>/<name>.
std::string PayloadBytes(const std::string& game, const std::string& name);
