#pragma once
// A set's manifest: one record name a line, in packing order. The packer, the build's check and
// the tests all read it through here, so they agree on what a line is.

#include <string>
#include <vector>

struct ManifestLine {
    int number;        // 1-based, counting every line of the file
    std::string name;  // exactly as written, without its line end
};

// Lines end in LF or CR LF (a manifest saved on Windows is fine); a last line without its end
// still counts. Empty lines are passed over. Any other CR stays in the name, where the name
// check reports it.
std::vector<ManifestLine> ParseManifest(const std::string& text);
