#include "folders.h"

#include "system.h"

namespace {

// "The folder could not be created! I am exiting!", followed by the folder on its own line.
const char folderFailedText[] = "Nem sikerült a könyvtár létrehozása!\nKilépek!\n";

}  // namespace

void CreateFolders(std::string path, std::vector<std::string>* created)
{
    for (std::size_t slash = path.find('/'); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        std::string prefix = path.substr(0, slash);
        if (prefix.size() <= 3 || sys::PathExists(prefix))
            continue;
        if (created)
            created->push_back(prefix);
        // Someone else may have made it between the test and the attempt.
        if (!sys::MakeFolder(prefix) && !sys::PathExists(prefix))
            sys::ExitWithMessage(folderFailedText + prefix, "Hiba:", sys::mbOk);
    }
}

void RemovePath(std::string path)
{
    switch (sys::FindEntry(path)) {
    case sys::EntryKind::folder:
        sys::RemoveFolder(path);
        break;
    case sys::EntryKind::file:
        sys::RemoveFile(path);
        break;
    case sys::EntryKind::none:
        break;
    }
}
