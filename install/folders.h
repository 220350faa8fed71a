#pragma once
// The two folder operations the install and the uninstall share. Paths use '/' only.

#include <string>
#include <vector>

// Makes every missing folder on the way to the file `path` (the file's own name is never made).
// When `created` is given, each folder is appended to it before it is made, outermost first.
// Prefixes of up to 3 characters (a drive letter with its colon, the empty root) are not
// tested. Ends the process with the Hungarian message when a folder can neither be found
// nor made.
void CreateFolders(std::string path, std::vector<std::string>* created);

// Deletes one file or one empty folder; a missing path, a folder that still holds something
// and a file that cannot go are all left alone silently.
void RemovePath(std::string path);
