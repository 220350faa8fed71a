#pragma once
// Children whose flushes are no-ops, so that what the flushes cost shows beside the same
// operation run with them, sample by sample. Natively the child is started with eatmydata loaded
// ahead of the C library, whose fsync returns at once; under Windows the child points its own
// import of FlushFileBuffers at a function that only returns, which holds under Wine and Windows
// alike and which the child can check it did.

namespace bench {

// Set in the environment of a child whose flushes are to be no-ops.
constexpr const char* flushesOffVariable = "LUDAX_BENCH_FLUSHES_OFF";

// True when this process was started with its flushes off.
bool FlushesOffAsked();

// How, for the benchmark's heading.
const char* FlushesOffMethodName();

// Makes this process's flushes no-ops when `off`; false when its flushes are not as asked
// (eatmydata missing, or loaded into a child that should flush).
bool SetUpFlushes(bool off);

}  // namespace bench
