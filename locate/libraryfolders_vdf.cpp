#include "libraryfolders_vdf.h"

#include <cctype>
#include <cstddef>

#include "text_encoding.h"

namespace {

struct Token {
    enum Kind { text, open, close, end } kind = end;  // `end` also stands for damage
    std::string value;
};

// Reads one token at a time; never looks past the end of the text.
class Tokenizer {
public:
    explicit Tokenizer(const std::string& text) : text(text) {}

    Token Next()
    {
        SkipSpaceAndComments();
        if (at >= text.size())
            return {};
        char c = text[at];
        if (c == '{' || c == '}') {
            ++at;
            return {c == '{' ? Token::open : Token::close, {}};
        }
        if (c == '"')
            return Quoted();
        return Bare();
    }

private:
    static bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
    // Bytes that never occur in a text file: their presence means binary or damaged data.
    static bool IsDamage(char c) { return static_cast<unsigned char>(c) < 0x20 && !IsSpace(c); }

    void SkipSpaceAndComments()
    {
        for (;;) {
            while (at < text.size() && IsSpace(text[at]))
                ++at;
            if (text.compare(at, 2, "//") != 0)
                return;
            while (at < text.size() && text[at] != '\n')
                ++at;
        }
    }

    Token Quoted()
    {
        Token token{Token::text, {}};
        for (++at; at < text.size(); ++at) {
            char c = text[at];
            if (c == '"') {
                ++at;
                return token;
            }
            if (IsDamage(c))
                return {};
            if (c == '\\' && at + 1 < text.size() && (text[at + 1] == '\\' || text[at + 1] == '"'))
                c = text[++at];
            token.value += c;
        }
        return {};  // no closing quote: truncated
    }

    Token Bare()
    {
        Token token{Token::text, {}};
        while (at < text.size() && !IsSpace(text[at]) && text[at] != '{' && text[at] != '}' &&
               text[at] != '"') {
            if (IsDamage(text[at]))
                return {};
            token.value += text[at++];
        }
        return token;
    }

    const std::string& text;
    std::size_t at = 0;
};

bool IsNumber(const std::string& key)
{
    if (key.empty())
        return false;
    for (char c : key)
        if (!std::isdigit(static_cast<unsigned char>(c)))
            return false;
    return true;
}

bool IsPathKey(const std::string& key) { return AsciiLower(key) == "path"; }

// Skips the rest of a block whose '{' has been read; false when the text ends first. Nesting
// is only counted, so no input can drive the reading deep.
bool SkipBlock(Tokenizer& tokens)
{
    for (std::size_t depth = 1; depth > 0;) {
        Token token = tokens.Next();
        if (token.kind == Token::end)
            return false;
        if (token.kind == Token::open)
            ++depth;
        else if (token.kind == Token::close)
            --depth;
    }
    return true;
}

}  // namespace

std::vector<std::string> ParseLibraryFolders(const std::string& text)
{
    std::vector<std::string> libraries;
    Tokenizer tokens(text);
    if (tokens.Next().kind != Token::text || tokens.Next().kind != Token::open)
        return libraries;
    for (;;) {
        Token key = tokens.Next();
        if (key.kind != Token::text)
            return libraries;  // the closing brace, or damage
        Token value = tokens.Next();
        if (value.kind == Token::text) {
            if (IsNumber(key.value))  // old shape: the value is the path
                libraries.push_back(value.value);
            continue;
        }
        if (value.kind != Token::open)
            return libraries;
        if (!IsNumber(key.value)) {
            if (!SkipBlock(tokens))
                return libraries;
            continue;
        }
        // New shape: one block per library, its path under "path"; nested blocks are skipped.
        bool pathSeen = false;
        for (;;) {
            Token inner = tokens.Next();
            if (inner.kind == Token::close)
                break;
            if (inner.kind != Token::text)
                return libraries;
            Token innerValue = tokens.Next();
            if (innerValue.kind == Token::open) {
                if (!SkipBlock(tokens))
                    return libraries;
            } else if (innerValue.kind != Token::text) {
                return libraries;
            } else if (IsPathKey(inner.value) && !pathSeen) {
                libraries.push_back(innerValue.value);
                pathSeen = true;
            }
        }
    }
}
