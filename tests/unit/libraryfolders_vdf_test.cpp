#include <gtest/gtest.h>

#include "libraryfolders_vdf.h"

namespace {

using Paths = std::vector<std::string>;

TEST(LibraryFolders, BothShapesSteamHasWritten)
{
    // Before 2021: numeric keys hold the paths; other keys are ignored.
    EXPECT_EQ(ParseLibraryFolders("\"LibraryFolders\"\n{\n"
                                  "\t\"TimeNextStatsReport\"\t\t\"1634123456\"\n"
                                  "\t\"ContentStatsID\"\t\t\"-4254418836617418516\"\n"
                                  "\t\"1\"\t\t\"D:\\\\SteamLibrary\"\n"
                                  "\t\"2\"\t\t\"E:\\\\Games\\\\Steam\"\n}\n"),
              (Paths{"D:\\SteamLibrary", "E:\\Games\\Steam"}));

    // Since 2021: one block per library, nested blocks and other top-level keys in between.
    const std::string current =
        "\"libraryfolders\"\r\n{\r\n"
        "\t\"contentstatsid\"\t\t\"-4254418836617418516\"\r\n"
        "\t\"0\"\r\n\t{\r\n"
        "\t\t\"path\"\t\t\"C:\\\\Program Files (x86)\\\\Steam\"\r\n"
        "\t\t\"label\"\t\t\"\"\r\n"
        "\t\t\"apps\"\r\n\t\t{\r\n\t\t\t\"10\"\t\t\"576266341\"\r\n\t\t\t\"240\"\t\t\"4553243251\"\r\n\t\t}\r\n"
        "\t}\r\n"
        "\t\"1\"\r\n\t{\r\n"
        "\t\t\"label\"\t\t\"games\"\r\n"
        "\t\t\"apps\"\r\n\t\t{\r\n\t\t}\r\n"
        "\t\t\"path\"\t\t\"D:\\\\Steam \\\"Library\\\"\"\r\n"
        "\t\t\"path\"\t\t\"D:\\\\a second path key\"\r\n"  // the first one counts
        "\t}\r\n"
        "\t\"sidecar\"\r\n\t{\r\n\t\t\"path\"\t\t\"X:\\\\not a library\"\r\n\t}\r\n"
        "}\r\n";
    EXPECT_EQ(ParseLibraryFolders(current),
              (Paths{"C:\\Program Files (x86)\\Steam", "D:\\Steam \"Library\""}));
}

TEST(LibraryFolders, DamageKeepsWhatCameBeforeIt)
{
    const std::string twoLibraries = "\"libraryfolders\" { \"1\" { \"path\" \"D:\\\\One\" } "
                                     "\"2\" { \"path\" \"E:\\\\Two\" } }";
    // Cut anywhere: never more than the two, and the first once its block's path has been read.
    for (std::size_t cut = 0; cut <= twoLibraries.size(); ++cut) {
        Paths read = ParseLibraryFolders(twoLibraries.substr(0, cut));
        SCOPED_TRACE(cut);
        ASSERT_LE(read.size(), 2u);
        if (!read.empty()) {
            EXPECT_EQ(read[0], "D:\\One");
        }
        if (cut >= twoLibraries.find("} \"2\"")) {
            EXPECT_FALSE(read.empty());
        }
    }
    EXPECT_EQ(ParseLibraryFolders(twoLibraries), (Paths{"D:\\One", "E:\\Two"}));

    // A path whose closing quote never comes is not taken.
    EXPECT_EQ(ParseLibraryFolders("\"LibraryFolders\" { \"1\" \"D:\\\\One\" \"2\" \"E:\\\\Tw"),
              Paths{"D:\\One"});
    // Binary bytes end the reading where they stand.
    EXPECT_EQ(ParseLibraryFolders("\"LibraryFolders\" { \"1\" \"D:\\\\One\" \"2\" \"E:" + std::string(1, '\0') + "\x01\" }"),
              Paths{"D:\\One"});
    EXPECT_EQ(ParseLibraryFolders("\"LibraryFolders\" { \"1\" \"D:\\\\One\" \"2\" \"E:\x01\" }"), Paths{"D:\\One"});
    EXPECT_TRUE(ParseLibraryFolders(std::string("\x00\x00\x00\x01\xFF\xFE", 6)).empty());
    EXPECT_TRUE(ParseLibraryFolders("").empty());
    EXPECT_TRUE(ParseLibraryFolders("\"libraryfolders\"\r\n").empty());
    EXPECT_TRUE(ParseLibraryFolders("}}}} {{{").empty());

    // Deep nesting is skipped without running out of stack.
    std::string deep = "\"libraryfolders\" { \"x\" " + std::string(200000, '{') + std::string(200000, '}') +
                       " \"1\" \"D:\\\\After\" }";
    EXPECT_EQ(ParseLibraryFolders(deep), Paths{"D:\\After"});
}

}  // namespace
