#pragma once
// The POSIX body's test hook: makes the Nth call into the operating-system layer fail, as a
// full disk, a locked file or a vanished folder would, or ends the process right before it, as
// a kill or a power cut would. Counting starts at Arm; calls are counted whether or not one is
// armed, so a run can first be measured.
#ifndef _WIN32

#include <cstdint>

namespace sys::faults {

enum class Mode {
    fail,          // the call fails with an I/O error
    partialWrite,  // a write puts down the first half of its bytes, then fails; any other call fails
    end,           // the process ends right before the call, as a kill would end it
    powerCut,      // the same, and of each file written since Arm, what was not flushed may be lost
};

// From now on, call number `nth` (1 = the next one) fails or ends the process (with status
// `endStatus`), and calls after it work again; with `alsoNth`, that later call fails too (two
// failures in one operation). 0 counts only.
void Arm(std::uint64_t nth, Mode mode, std::uint64_t alsoNth = 0);
// Calls since the last Arm.
std::uint64_t Calls();

constexpr int endStatus = 77;

}  // namespace sys::faults

#endif
