#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "name_rules.h"

namespace {

using Lines = std::vector<std::string>;

TEST(PathGuard, OnlyPathsBelowTheAccountAndPlainRelativeNamesPass)
{
    const std::string account = "C:/Steam/steamapps/player";
    for (const std::string& inside : {account + "/counter-strike/cstrike/a.cfg", account + "/x",
                                      account + "/counter-strike/..cfg", account + "/a/.b/c"})
        EXPECT_TRUE(IsRemovableBelow(inside, account)) << inside;
    // Built exactly as the install builds it: another case or separator is somewhere else.
    for (const std::string& outside :
         Lines{"C:/Windows/system.ini", account, account + "/", account + "2/x",
               "C:/Steam/steamapps/other/x", account + "/../other/x", account + "/a/../../x",
               account + "/a/..", account + "/a\\..\\..\\x", "c:/steam/steamapps/player/x",
               // Windows trims trailing dots and spaces: these segments lead up as well.
               account + "/.../x", account + "/.. /x"})
        EXPECT_FALSE(IsRemovableBelow(outside, account)) << outside;

    for (const std::string& name : Lines{"a.cfg", "cfg/ludax/binds.cfg", "..cfg", "a/.b/c", "a.b/c"})
        EXPECT_TRUE(IsRestorableName(name)) << name;
    for (const std::string& name :
         Lines{"", "/abs", "../x", "a/../../x", "a/..", "..", "a\\b", "c:x", "cfg/x:stream",
               ".../x", "a/.. /b", "a/... "})
        EXPECT_FALSE(IsRestorableName(name)) << name;
}

TEST(PathGuard, NamesWindowsWouldReadAsSomethingElseArePassedOver)
{
    // Each stands for another file, a device, a pattern or no valid name at all.
    const Lines refused = {
        std::string("a\0b.cfg", 7), std::string("cfg/\0", 5), "a\x01.cfg", "cfg\x1F/a", "tab\there",
        "line\nbreak", "del\x7F", "a*.cfg", "a?.cfg", "<a>.cfg", "a|b", "say \"hi\".cfg",
        "a./b", "cfg/a.", "cfg/a ", "a /b", "cfg/ludax.", "cfg/ludax /binds.cfg",
        "CON", "con", "Prn.txt", "aux.txt", "cfg/nul", "NUL.tar.gz", "com1", "COM9.cfg", "lpt1",
        "Lpt5.log", "com0", "cfg/aux/binds.cfg", "aux .txt", "conin$", "CONOUT$.x",
        "com\xB9", "LPT\xB2.cfg"};
    for (const std::string& name : refused) {
        EXPECT_FALSE(IsRestorableName(name)) << name;
        EXPECT_FALSE(IsRemovableBelow("C:/Steam/steamapps/player/" + name, "C:/Steam/steamapps/player"))
            << name;
    }
    // Close to those, but ordinary names.
    for (const std::string& name : Lines{"console.cfg", "auxiliary.cfg", "com10.cfg", "lpt.cfg",
                                         "com", "nul_file", "a.con", "cfg/prn2.cfg", "conin.cfg",
                                         "my config.cfg", "x.y.z", "caf\xE9.cfg", "a~1.cfg"})
        EXPECT_TRUE(IsRestorableName(name)) << name;
}

TEST(PathGuard, ARemovalLineNeverNamesABackupFile)
{
    const std::string account = "D:/Games/steamapps/common";
    for (const std::string& name :
         Lines{"cs16ludax.bak", "cs16ludax_1.bak", "cssludax.bak", "cssludax_1.bak", "CS16LUDAX.BAK",
               "CssLudax_1.Bak", "CS16LU~1.BAK", "CSSLUD~2.BAK", "cs16ludax.bak/x"})
        EXPECT_FALSE(IsRemovableBelow(account + "/" + name, account)) << name;
    // The same names deeper down are not the backup files, and neither is a longer name.
    for (const std::string& name : Lines{"Half-Life/cstrike/cs16ludax.bak", "cs16ludax.bak2",
                                         "Counter-Strike Source/cssludax_1.bak", "Half-Life"})
        EXPECT_TRUE(IsRemovableBelow(account + "/" + name, account)) << name;
}

}  // namespace
