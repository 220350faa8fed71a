#include "child_report.h"

#include <fstream>

namespace bench {

void WriteReport(const std::string& path, const ChildReport& report)
{
    std::ofstream(path) << report.ms << ' ' << report.peakBytes << '\n';
}

bool ReadReport(const std::string& path, ChildReport& report)
{
    std::ifstream in(path);
    return static_cast<bool>(in >> report.ms >> report.peakBytes);
}

}  // namespace bench
