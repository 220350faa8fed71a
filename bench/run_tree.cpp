#include "run_tree.h"

#include <filesystem>

#include "steam_layouts.h"

namespace bench {

RunTree MakeRunTree(const std::string& workFolder, const std::string& label, const GameProfile& game)
{
    RunTree tree;
    tree.root = workFolder + "/" + label;
    tree.steamappsPath = tree.root + "/steamapps/";
    tree.account = "player";
    const SteamAccount place = AccountFolderEntry(tree.steamappsPath, tree.account);
    const BackupFiles backup = place.Game(game.id).backup;
    tree.contentFolder = place.Game(game.id).contentFolder;
    tree.archivePath = backup.archive;
    tree.removalListPath = backup.removalList;
    tree.recordPath = backup.record;
    tree.draftPath = backup.draft;
    std::filesystem::remove_all(tree.root);
    std::filesystem::create_directories(tree.contentFolder);
    return tree;
}

void RemoveRunTree(const RunTree& tree)
{
    std::error_code ignored;
    std::filesystem::remove_all(tree.root, ignored);
}

}  // namespace bench
