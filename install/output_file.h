#pragma once
// The files the install writes: whole payload files, and the two backup files written piece by
// piece. Both go through the operating-system layer, so that every write sees exactly the
// paths its existence test sees.

#include <cstddef>
#include <string>

#include "system.h"

// Creates or truncates `path` and writes `size` bytes. True when every byte was written and
// the file closed without an error.
[[nodiscard]] bool WriteWholeFile(const std::string& path, const char* data, std::size_t size);

// A file written piece by piece: created or truncated on opening, closed at the latest when
// the object goes. The first failure sticks: a file that could not be opened, or one write
// that fell short, fails every later append, so nothing follows a gap.
class OutputFile {
public:
    explicit OutputFile(const std::string& path) : file(sys::File::Create(path)), intact(file.IsOpen()) {}

    bool Append(const char* data, std::size_t size);
    bool Append(const std::string& bytes) { return Append(bytes.data(), bytes.size()); }
    // True while every append so far went through.
    bool Intact() const { return intact; }
    // True when the file was intact and closed without an error.
    [[nodiscard]] bool Close();

private:
    sys::File file;
    bool intact;
};
