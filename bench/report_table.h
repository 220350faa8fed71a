#pragma once
// The printed result: one table per game, one row per operation.

#include <limits>
#include <string>
#include <vector>

namespace bench {

// A figure that does not apply or cannot be measured; printed as "-".
constexpr double none = std::numeric_limits<double>::quiet_NaN();

struct ReportRow {
    std::string operation;
    double medianMs = none;
    double minMs = none;
    double maxMs = none;
    const char* copy = "";         // the copy it is compared with: into an "empty" folder, over a "full" one, or "flushed"
    double ratioToCopy = none;     // median over that copy's median
    double minRatioToCopy = none;  // fastest run over that copy's fastest: less hurt by other load
    double peakMb = none;      // over the idle child
    double budgetMb = none;    // memory target
    double speedLimit = none;  // speed target: at most this many times the copy; none for no target
};

struct ReportTable {
    std::string title;
    std::vector<ReportRow> rows;
    std::string note;  // printed under the rows
};

// The targets: a first install into an empty game folder takes at most installLimit times the
// plain copy into an empty folder, the uninstall after an install into a full one at most
// uninstallLimit times the copy of the same files over a full folder that flushes each (it writes
// back the same files, read from one archive, each flushed before the archive can go, and deletes
// the backup files), and no operation's private memory grows by more than the largest overwritten
// file plus budgetSlackMb (the payload is read where the program holds it).
constexpr double installLimit = 1.2;
constexpr double uninstallLimit = 1.2;
constexpr double budgetSlackMb = 1;

// Prints the table; true when every target in it is met.
bool PrintTable(const ReportTable& table);

}  // namespace bench
