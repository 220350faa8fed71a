#pragma once
// A folder where writes run out of room for real, natively: a small tmpfs mounted in a
// private mount namespace of the test process when it may (root, as in CI); otherwise the
// process's file-size limit (RLIMIT_FSIZE), under which a write past the limit fails with
// EFBIG. Either way the failure comes from the real write call, not from the program.
#ifndef _WIN32

#include <cstdint>
#include <string>

#include "test_files.h"

class SmallDisk {
public:
    SmallDisk();
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    const std::string& Path() const { return folder.Path(); }
    // "tmpfs" or "file-size limit".
    const char* How() const { return mounted ? "tmpfs" : "file-size limit"; }

    // From now on at most about `bytes` more can be written: on the tmpfs a filler file takes
    // the rest of the room; under the limit no file may grow past `bytes`.
    void LeaveRoom(std::uint64_t bytes);
    // Undoes LeaveRoom.
    void FreeRoom();

private:
    TempFolder folder;
    bool mounted = false;
    bool limited = false;
    std::uint64_t savedLimit = 0;  // the file-size limit before LeaveRoom
};

#endif
