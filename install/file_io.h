#pragma once
// Plain file access for the install and the uninstall. Every failure is ignored: a file that
// cannot be opened reads as empty, and writes to it go nowhere.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

// The whole file in one buffer of its size (one read call); empty when it cannot be read.
std::vector<char> ReadWholeFile(const std::string& path);

// Creates or truncates `path`, writes `size` bytes in one call and closes it.
void WriteWholeFile(const std::string& path, const char* data, std::size_t size);

// A file written piece by piece: created or truncated on opening, closed at the latest when
// the object goes.
class OutputFile {
public:
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void Append(const char* data, std::size_t size);
    void AppendInt32(std::uint32_t value);  // little-endian
    void Flush();
    void Close();

private:
    std::FILE* file;
};
