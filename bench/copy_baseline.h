#pragma once
// The plain copy an install is compared with: the platform's own tool copying the same files.

#include <string>

#include "bench_process.h"

namespace bench {

// "cp -r" natively, "xcopy /E /I /Y /Q" on Windows.
const char* CopyToolName();

// Copies everything inside `source` into the existing folder `destination`.
ProcessOutcome CopyFolder(const std::string& source, const std::string& destination);

}  // namespace bench
