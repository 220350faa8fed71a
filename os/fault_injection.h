#pragma once
// The POSIX body's test hook: makes the Nth call into the operating-system layer fail, as a
// full disk, a locked file or a vanished folder would, or ends the process right before it, as
// a kill or a power cut would. Counting starts at Arm; calls are counted whether or not one is
// armed, so a run can first be measured.
#ifndef _WIN32

#include <cstdint>

namespace sys::faults {

enum class Mode { fail, end };

// From now on, call number `nth` (1 = the next one) fails, or ends the process with status
// `endStatus`, and calls after it work again. 0 counts only.
void Arm(std::uint64_t nth, Mode mode);
// Calls since the last Arm.
std::uint64_t Calls();

constexpr int endStatus = 77;

}  // namespace sys::faults

#endif
