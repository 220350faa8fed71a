#pragma once
// The few process calls the benchmark needs, with a POSIX and a Win32 body.

#include <string>
#include <vector>

namespace bench {

struct ProcessOptions {
    bool quiet = false;       // its standard output thrown away
    bool flushesOff = false;  // its flushes made no-ops (flushes_off.h)
    double limitMs = 0;       // stopped once it has run this long; 0: no limit
};

struct ProcessOutcome {
    bool started = false;
    int exitCode = -1;
    bool stopped = false;  // it ran past the limit and was ended
    double wallMs = 0;     // from just before the start to the end of the wait
};

// Starts `args[0]` (searched on the PATH) with the remaining arguments, waits for it and
// measures it.
ProcessOutcome RunProcess(const std::vector<std::string>& args, const ProcessOptions& options = {});

// The path of the running benchmark program, to start it again in a child mode.
std::string SelfPath();

// Peak resident memory of this process so far, in bytes (0 when unknown).
long long OwnPeakBytes();

// Asks the system to write everything it holds for the disks there, so that an operation
// measured next does not pay for the writes of the one before. False when it could not.
bool WriteBackEverything();

// Where the benchmark runs, and how it sees a child's peak memory: for the table's heading.
std::string PlatformName();
const char* PeakMethodName();

}  // namespace bench
