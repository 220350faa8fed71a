#pragma once
// The few process calls the benchmark needs, with a POSIX and a Win32 body.

#include <string>
#include <vector>

namespace bench {

struct ProcessOutcome {
    int exitCode = -1;
    double wallMs = 0;  // from just before the start to the end of the wait
};

// Starts `args[0]` (searched on the PATH) with the remaining arguments, waits for it and
// measures it. A quiet process has its standard output thrown away.
ProcessOutcome RunProcess(const std::vector<std::string>& args, bool quiet = false);

// The path of the running benchmark program, to start it again in a child mode.
std::string SelfPath();

// Peak resident memory of this process so far, in bytes (0 when unknown).
long long OwnPeakBytes();

// Where the benchmark runs, and how it sees a child's peak memory: for the table's heading.
std::string PlatformName();
const char* PeakMethodName();

}  // namespace bench
