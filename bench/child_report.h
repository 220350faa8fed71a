#pragma once
// What a child run hands back to the benchmark: a one-line file "<milliseconds> <peak bytes>".

#include <string>

namespace bench {

struct ChildReport {
    double ms = 0;            // the operation alone, without the process start
    long long peakBytes = 0;  // the child's own peak resident memory at its end
};

void WriteReport(const std::string& path, const ChildReport& report);

// False when the file is missing or malformed (the child failed).
bool ReadReport(const std::string& path, ChildReport& report);

}  // namespace bench
