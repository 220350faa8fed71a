#pragma once
// Whole files and the two backup files, written through the operating-system layer, so that
// every read and write sees exactly the paths its existence test sees. Nothing is buffered:
// once a call has returned true, its bytes have reached the system.

#include <cstddef>
#include <string>
#include <vector>

#include "system.h"

// The whole file in one buffer of its size (one read call); empty when it cannot be read.
std::vector<char> ReadWholeFile(const std::string& path);

// Creates or truncates `path` and writes `size` bytes. True when every byte was written and
// the file closed without an error.
bool WriteWholeFile(const std::string& path, const char* data, std::size_t size);

// A file written piece by piece: created or truncated on opening, closed at the latest when
// the object goes. The first failure sticks: a file that could not be opened, or one write
// that fell short, fails every later append, so nothing follows a gap.
class OutputFile {
public:
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    bool Append(const char* data, std::size_t size);
    bool Append(const std::string& bytes) { return Append(bytes.data(), bytes.size()); }
    // True while every append so far went through.
    bool Intact() const { return intact; }
    // True when the file was intact and closed without an error.
    bool Close();

private:
    sys::FileHandle file;
    bool intact;
};
