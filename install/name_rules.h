#pragma once
// What the uninstall accepts from its two backup files: both are plain files in the account
// folder that anyone may have edited, so neither may steer a deletion or a write elsewhere,
// onto a device, or onto the backup files themselves. A rejected name is passed over.

#include <string>

// A removal-list line: the account folder, a '/', then a plain relative path (as below) that
// does not name a backup file of either game in the account folder.
bool IsRemovableBelow(const std::string& path, const std::string& accountFolder);

// A backup record name, relative to the content folder. Plain means: not empty, no leading
// '/', no '\\', ':', control byte, '*', '?', '<', '>', '|' or '"', no ".." segment, no segment
// that ends in a dot or a space (Windows would trim it into another name), and no segment that
// is a DOS device name (CON, PRN, AUX, NUL, COM0-9, LPT0-9 and their superscript forms,
// CONIN$, CONOUT$), with or without an extension, in any letter case.
bool IsRestorableName(const std::string& name);
