#pragma once
// `ludax-pack list`: what a container file holds, or each of the two containers a built
// Ludax.exe carries, record by record; given the sets, also every way each differs from them.
//   ludax-pack list <container> [<set-folder> <manifest>]
//   ludax-pack list <Ludax.exe> [<folder holding cs16/, css/ and their manifests>]

#include <string>
#include <vector>

// `sets` is empty, the set folder and manifest (a container), or the folder of both sets (a
// Ludax.exe). Returns the exit status: 0 when listed (and matching the sets), 1 when the file is
// unreadable, damaged or differs, 2 when `sets` has the other file kind's form.
int ListCommand(const std::string& path, const std::vector<std::string>& sets);
