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
    double ratioToCopy = none;     // median over the copy's median
    double minRatioToCopy = none;  // fastest run over the copy's fastest: less hurt by other load
    double peakMb = none;      // over the idle child
    double budgetMb = none;    // memory target
    bool speedTarget = false;  // the speed target applies (install into an empty folder)
};

struct ReportTable {
    std::string title;
    std::vector<ReportRow> rows;
    std::string note;  // printed under the rows
};

// The targets: a first install into an empty game folder takes at most speedLimit times the
// plain copy into an empty folder, and no operation's private memory grows by more than the
// largest overwritten file plus budgetSlackMb (the payload is read where the program holds it).
constexpr double speedLimit = 1.2;
constexpr double budgetSlackMb = 1;

// Prints the table; true when every target in it is met.
bool PrintTable(const ReportTable& table);

}  // namespace bench
