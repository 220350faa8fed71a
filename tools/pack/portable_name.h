#pragma once
// Names that every install can write: a record's name becomes a path below the game folder on
// Windows, so anything Windows would refuse, alter or read differently is caught at build time.

#include <string>

// What makes `name` unusable as a record name, or an empty string when it is fine.
std::string PortableNameProblem(const std::string& name);
