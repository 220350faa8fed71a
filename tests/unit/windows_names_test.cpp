// One rule for the names below a game's folder: what the build refuses in a set, and what the
// uninstall passes over in its backup files.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "portable_name.h"
#include "test_files.h"
#include "windows_names.h"

namespace {

using Names = std::vector<std::string>;

TEST(WindowsNames, WhatWindowsReadsAsSomethingElseIsRefusedByTheBuildAndPassedOverByTheUninstall)
{
    // Each stands for another file, a device, a pattern, a folder above, or no valid name.
    const Names refused = {
        "", "/abs", "cfg/", "../x", "a/../../x", "a/..", "..", ".", "a\\b", "c:x", "cfg/x:stream", ".../x", "a/.. /b",
        "a/... ", std::string("a\0b.cfg", 7), "a\x01.cfg", "cfg\x1F/a", "tab\there", "line\nbreak", "del\x7F",
        "a*.cfg", "a?.cfg", "<a>.cfg", "a|b", "say \"hi\".cfg", "a./b", "cfg/a.", "cfg/a ", "a /b",
        "CON", "con", "Prn.txt", "aux.txt", "cfg/nul", "NUL.tar.gz", "com1", "COM9.cfg", "lpt1", "Lpt5.log",
        "com0.cfg", "lpt0.txt", "cfg/aux/binds.cfg", "aux .txt", "con .cfg", "nul .x", "conin$", "conin$.cfg",
        "CONOUT$", "CONOUT$.x", Western("com¹"), Western("LPT².cfg"), "com³.cfg",
        // Bytes no install writes: not UTF-8 (as an earlier version's ANSI name), a segment longer
        // than a Windows name holds.
        "a\x80.cfg", Western("café.cfg"), "cfg/" + std::string(256, 'n'), std::string(128, 'e') + "é" + std::string(127, 'e')};
    for (const std::string& name : refused) {
        EXPECT_FALSE(IsWindowsName(name)) << name;
        EXPECT_NE(PortableNameProblem(name), "") << name;
    }
    // Close to those, but ordinary names: every one the build accepts, the uninstall accepts.
    for (const std::string& name : Names{"a.cfg", "cfg/ludax/binds.cfg", "..cfg", "a/.b/c", "console.cfg",
                                         "auxiliary.cfg", "com10.cfg", "lpt.cfg", "com", "nul_file", "a.con",
                                         "cfg/prn2.cfg", "conin.cfg", "my config.cfg", "x.y.z", "a~1.cfg", "CONFIG.cfg",
                                         ".hidden", "(1)-[x]_{y}+z=~!@#$%^&',;.txt", "cfg/" + std::string(255, 'n')}) {
        EXPECT_TRUE(IsWindowsName(name)) << name;
        EXPECT_EQ(PortableNameProblem(name), "") << name;
    }
    // Windows reads these as they are written, so the uninstall takes them; the build still
    // wants plain ASCII without empty segments.
    for (const std::string& name : Names{"café.cfg", "a//b", std::string(254, 'e') + "é"}) {
        EXPECT_TRUE(IsWindowsName(name)) << name;
        EXPECT_NE(PortableNameProblem(name), "") << name;
    }
}

}  // namespace
