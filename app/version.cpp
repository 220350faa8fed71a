#include "version.h"

const std::string versionLabel = "GUI v.1.02";
