#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "path_guard.h"

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

    for (const std::string& name : Lines{"a.cfg", "cfg/ludax/binds.cfg", "..cfg", "a/.b/c", "a./b"})
        EXPECT_TRUE(IsRestorableName(name)) << name;
    for (const std::string& name :
         Lines{"", "/abs", "../x", "a/../../x", "a/..", "..", "a\\b", "c:x", "cfg/x:stream",
               ".../x", "a/.. /b", "a/... "})
        EXPECT_FALSE(IsRestorableName(name)) << name;
}

}  // namespace
