#pragma once
// A game folder that already holds every payload target, each with bytes of its own, so that
// a first install has to back up every file it writes.

#include <string>

#include "embedded.h"

namespace bench {

// Writes each record's target below `contentFolder` (ending with '/'), same size, every byte
// inverted.
void FillWithOtherBytes(const EmbeddedContainer& payload, const std::string& contentFolder);

}  // namespace bench
