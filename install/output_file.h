#pragma once
// The files the install writes: whole payload files, and the two backup files, to which pieces
// (a backup record, a block of removal lines) are added at the end. Both go through the
// operating-system layer, so that every write sees exactly the paths its existence test sees.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "system.h"

// Makes `path` hold exactly the `size` bytes of `data`, written over the file in place. Done when
// every byte was written and the file closed without an error.
sys::Status WriteWholeFile(const std::string& path, const char* data, std::size_t size);

// A file written at its end. The first failure sticks: a file that could not be opened, or one
// write that fell short, fails every later append, so nothing follows a gap; CutBack then takes
// the unfinished piece away again.
class OutputFile {
public:
    // Creates or truncates `path`.
    static OutputFile Create(const std::string& path);
    // Opens the existing `path` to go on after its first `keep` bytes; what follows them goes.
    static OutputFile Continue(const std::string& path, std::uint64_t keep);

    bool Append(const char* data, std::size_t size);
    bool Append(const std::string& bytes) { return Append(bytes.data(), bytes.size()); }
    // The file's size as far as it went through whole.
    std::uint64_t End() const { return end; }
    // Done while every append went through; else the first failure.
    const sys::Status& State() const { return state; }
    // Cuts the file back to `size` bytes, taking away a piece a failed append left.
    sys::Status CutBack(std::uint64_t size);
    // Makes what was appended reach the disk, so that a power cut keeps it; a failure sticks.
    sys::Status Flush();
    // Done when the file was intact and closed without an error; else the first failure.
    sys::Status Close();

private:
    OutputFile(sys::File file, sys::Status state, std::uint64_t end)
        : file(std::move(file)), state(state), end(end)
    {
    }

    sys::File file;
    sys::Status state;  // the first failure, once there is one
    std::uint64_t end;
};

// Puts a file that `write` fills in the place of `path` in one step: written as `draftPath`,
// flushed (a power cut keeps the replacement sooner than the bytes written before it), then
// moved over `path`. When `write` says it could not, or anything else fails, `path` stays as it
// was and the draft goes.
void ReplaceThroughDraft(const std::string& path, const std::string& draftPath,
                         const std::function<bool(OutputFile&)>& write);
