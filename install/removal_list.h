#pragma once
// The removal list: the absolute paths of everything the first install created, one per line,
// each line ended by CR LF; the created files first, then the created folders innermost first.

#include <string>
#include <vector>

#include "file_io.h"

void AppendRemovalLine(OutputFile& list, const std::string& path);

// The paths of a removal list's bytes: each line runs up to LF with every CR dropped, a last
// line without LF still counts, and the list ends at the first empty line.
std::vector<std::string> ReadRemovalList(const std::string& bytes);
