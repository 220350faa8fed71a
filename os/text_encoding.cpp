#include "text_encoding.h"

namespace {

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// The sequence's length from its first byte; 0 for a byte no sequence starts with.
std::size_t SequenceLength(unsigned char first)
{
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first <= 0xDF)
        return 2;
    if (first >= 0xE0 && first <= 0xEF)
        return 3;
    if (first >= 0xF0 && first <= 0xF4)
        return 4;
    return 0;
}

}  // namespace

bool IsUtf8(const std::string& bytes)
{
    for (std::size_t i = 0; i < bytes.size();) {
        const unsigned char first = static_cast<unsigned char>(bytes[i]);
        const std::size_t length = SequenceLength(first);
        if (length == 0 || bytes.size() - i < length)
            return false;
        for (std::size_t k = 1; k < length; ++k)
            if ((static_cast<unsigned char>(bytes[i + k]) & 0xC0) != 0x80)
                return false;
        const unsigned char second = length > 1 ? static_cast<unsigned char>(bytes[i + 1]) : 0;
        if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) ||  // overlong, surrogate
            (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F))    // overlong, past U+10FFFF
            return false;
        i += length;
    }
    return true;
}

std::size_t Utf16Length(const std::string& utf8)
{
    std::size_t units = 0;
    for (unsigned char byte : utf8)
        if ((byte & 0xC0) != 0x80)
            units += byte >= 0xF0 ? 2 : 1;  // four-byte sequences need a surrogate pair
    return units;
}

bool ToUtf16(const std::string& utf8, std::u16string& utf16)
{
    utf16.clear();
    if (!IsUtf8(utf8))
        return false;
    for (std::size_t i = 0; i < utf8.size();) {
        const unsigned char first = static_cast<unsigned char>(utf8[i]);
        const std::size_t length = SequenceLength(first);
        char32_t code = length == 1 ? first : first & (0x7F >> length);
        for (std::size_t k = 1; k < length; ++k)
            code = code << 6 | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        i += length;
        if (code < 0x10000) {
            utf16 += static_cast<char16_t>(code);
        } else {
            utf16 += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            utf16 += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
        }
    }
    return true;
}

std::string ToUtf8(const char16_t* utf16, std::size_t length)
{
    std::string utf8;
    for (std::size_t i = 0; i < length; ++i) {
        char32_t code = utf16[i];
        if (code >= 0xD800 && code <= 0xDBFF && i + 1 < length && utf16[i + 1] >= 0xDC00 && utf16[i + 1] <= 0xDFFF)
            code = 0x10000 + ((code - 0xD800) << 10) + (utf16[++i] - 0xDC00);
        else if (code >= 0xD800 && code <= 0xDFFF)
            code = 0xFFFD;
        if (code < 0x80) {
            utf8 += static_cast<char>(code);
        } else if (code < 0x800) {
            utf8 += static_cast<char>(0xC0 | code >> 6);
            utf8 += static_cast<char>(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            utf8 += static_cast<char>(0xE0 | code >> 12);
            utf8 += static_cast<char>(0x80 | (code >> 6 & 0x3F));
            utf8 += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            utf8 += static_cast<char>(0xF0 | code >> 18);
            utf8 += static_cast<char>(0x80 | (code >> 12 & 0x3F));
            utf8 += static_cast<char>(0x80 | (code >> 6 & 0x3F));
            utf8 += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return utf8;
}

std::string AsciiLower(std::string text)
{
    for (char& c : text)
        c = LowerAscii(c);
    return text;
}

bool SameIgnoringAsciiCase(const std::string& a, const std::string& b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (LowerAscii(a[i]) != LowerAscii(b[i]))
            return false;
    return true;
}
