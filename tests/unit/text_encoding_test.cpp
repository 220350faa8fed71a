// The UTF-8 every path must be at the system's door, and the length Windows counts it in.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "test_files.h"
#include "text_encoding.h"

namespace {

TEST(TextEncoding, OnlyWellFormedUtf8PassesAndIsCountedInUtf16Units)
{
    const struct {
        std::string text;
        std::size_t utf16Units;
    } wellFormed[] = {
        {"", 0}, {"C:/Steam", 8}, {"E:/Játékok", 10}, {"Стим/Игрок", 10}, {"𝄞", 2}, {"a𝄞b", 4}, {"\u07FF\uFFFF", 2},
    };
    for (const auto& c : wellFormed) {
        EXPECT_TRUE(IsUtf8(c.text)) << c.text;
        EXPECT_EQ(Utf16Length(c.text), c.utf16Units) << c.text;
        std::u16string wide;
        ASSERT_TRUE(ToUtf16(c.text, wide)) << c.text;
        EXPECT_EQ(wide.size(), c.utf16Units) << c.text;
        EXPECT_EQ(ToUtf8(wide.data(), wide.size()), c.text);
    }
    // Overlong forms, surrogates, past U+10FFFF, a lone or missing continuation byte, ANSI.
    for (const std::string& bytes :
         std::vector<std::string>{"\xC0\xAF", "\xE0\x80\xAF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80",
                                  "\xF4\x90\x80\x80", "\x80", Western("café"), "\xE2\x82", "\xF8\x88\x80\x80\x80"}) {
        EXPECT_FALSE(IsUtf8(bytes)) << testing::PrintToString(bytes);
        std::u16string wide = u"left over";
        EXPECT_FALSE(ToUtf16(bytes, wide));
        EXPECT_TRUE(wide.empty());
    }
    // What Windows hands back is taken as it is; only a lone surrogate cannot be.
    const char16_t lone[] = {u'a', 0xD800, u'b'};
    EXPECT_EQ(ToUtf8(lone, 3), "a�b");
}

}  // namespace
