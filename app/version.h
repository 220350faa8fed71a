#pragma once

#include <string>

// The version label painted into the logo's top-left corner.
extern const std::string versionLabel;
