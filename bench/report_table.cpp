#include "report_table.h"

#include <cmath>
#include <cstdio>

namespace bench {

namespace {

std::string Number(double value, const char* format = "%.1f")
{
    if (std::isnan(value))
        return "-";
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

const char* Verdict(bool checked, bool met) { return !checked ? "-" : met ? "PASS" : "OVER"; }

}  // namespace

bool PrintTable(const ReportTable& table)
{
    std::printf("\n%s\n", table.title.c_str());
    std::printf("%-40s %9s %15s %7s %6s %6s %7s %9s %9s %6s\n", "operation", "median ms", "min..max ms", "copy",
                "x copy", "min x", "peak MB", "budget MB", "speed", "memory");
    bool allMet = true;
    for (const ReportRow& row : table.rows) {
        // NaN compares false: a missing figure never passes.
        bool fast = row.ratioToCopy <= row.speedLimit;
        bool small = row.peakMb <= row.budgetMb;
        bool speedChecked = !std::isnan(row.speedLimit);
        bool memoryChecked = !std::isnan(row.budgetMb);
        if ((speedChecked && !fast) || (memoryChecked && !small))
            allMet = false;
        std::string range = Number(row.minMs) + ".." + Number(row.maxMs);
        std::string speed = speedChecked ? Number(row.speedLimit, "%.1f") + "x " + Verdict(true, fast) : "-";
        std::printf("%-40s %9s %15s %7s %6s %6s %7s %9s %9s %6s\n", row.operation.c_str(),
                    Number(row.medianMs).c_str(), range.c_str(), row.copy,
                    Number(row.ratioToCopy, "%.2f").c_str(),
                    Number(row.minRatioToCopy, "%.2f").c_str(), Number(row.peakMb, "%.2f").c_str(),
                    Number(row.budgetMb).c_str(), speed.c_str(), Verdict(memoryChecked, small));
    }
    std::printf("(%s)\n", table.note.c_str());
    return allMet;
}

}  // namespace bench
