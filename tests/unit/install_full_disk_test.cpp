// A disk that fills up during a first install or an uninstall (natively: see SmallDisk).
#ifndef _WIN32
#include <gtest/gtest.h>

#include "install_scene.h"
#include "test_files_small_disk.h"

namespace {

using Tree = std::map<std::string, std::string>;

const std::string header("\x01\0\0\0", 4);

// The scene's Steam folder moved onto the small disk.
SteamAccount AccountOn(const std::string& folder, InstallScene& scene)
{
    SteamAccount account = scene.account;
    account.folder = folder + "/player";
    account.cs16Content = account.folder + "/counter-strike/cstrike/";
    MakeFolders(account.cs16Content);
    return account;
}

TEST(FullDisk, UninstallKeepsTheArchiveUntilTheMapFitsWhole)
{
    SmallDisk disk;
    InstallScene scene({{"maps/de_ludax.bsp", "the tournament's map"}, {"a.txt", "LUDAX"}});
    SteamAccount account = AccountOn(disk.Path(), scene);
    const std::string map(3 << 20, 'm');
    WriteFile(account.cs16Content + "maps/de_ludax.bsp", map);
    WriteFile(account.cs16Content + "a.txt", "player's a");
    const Tree before = Snapshot(account.folder);
    ASSERT_EQ(InstallConfig(scene.profile, account).result, InstallOutcome::Result::installed);
    ASSERT_EQ(ReadFile(account.cs16Content + "maps/de_ludax.bsp"), "the tournament's map");

    disk.LeaveRoom(2 << 20);
    EXPECT_TRUE(UninstallConfig(scene.profile, account).backupKept) << disk.How();
    EXPECT_TRUE(account.hasCs16Backup);
    EXPECT_TRUE(Exists(account.folder + "/cs16ludax.bak"));

    disk.FreeRoom();
    EXPECT_FALSE(UninstallConfig(scene.profile, account).backupKept) << disk.How();
    EXPECT_FALSE(account.hasCs16Backup);
    EXPECT_EQ(Snapshot(account.folder), before) << disk.How();
}

TEST(FullDisk, AFirstInstallStopsWhenTheArchiveIsFullAndLosesNothing)
{
    SmallDisk disk;
    const std::vector<PayloadFile> payload = {
        {"cfg/one.cfg", "1"}, {"cfg/two.cfg", "2"}, {"maps/de_big.bsp", "map"}, {"cfg/three.cfg", "3"}};
    InstallScene scene(payload);
    SteamAccount account = AccountOn(disk.Path(), scene);
    const std::string& c = account.cs16Content;
    WriteFile(c + "cfg/one.cfg", "player's one");
    WriteFile(c + "cfg/two.cfg", "player's two");
    WriteFile(c + "maps/de_big.bsp", std::string(1 << 20, 'b'));
    WriteFile(c + "cfg/three.cfg", "player's three");
    const Tree before = Snapshot(account.folder);

    disk.LeaveRoom(512 << 10);
    const InstallOutcome outcome = InstallConfig(scene.profile, account);
    disk.FreeRoom();
    EXPECT_EQ(outcome.result, InstallOutcome::Result::backupFailed) << disk.How();
    EXPECT_EQ(outcome.path, c + "maps/de_big.bsp") << disk.How();

    EXPECT_EQ(ReadFile(c + "cfg/one.cfg"), "1");
    EXPECT_EQ(ReadFile(c + "cfg/two.cfg"), "2");
    EXPECT_EQ(ReadFile(c + "maps/de_big.bsp"), std::string(1 << 20, 'b'));
    EXPECT_EQ(ReadFile(c + "cfg/three.cfg"), "player's three");
    const std::string archive = ReadFile(account.folder + "/cs16ludax.bak");
    const std::string whole = header + Record("cfg/one.cfg", "player's one") + Record("cfg/two.cfg", "player's two");
    EXPECT_EQ(archive.substr(0, whole.size()), whole) << disk.How();

    account.hasCs16Backup = true;  // as the next start finds it
    EXPECT_FALSE(UninstallConfig(scene.profile, account).backupKept);
    EXPECT_EQ(Snapshot(account.folder), before) << disk.How();
    EXPECT_FALSE(account.hasCs16Backup);
}

}  // namespace
#endif
