#include "run_log.h"

#include "system.h"
#include "version.h"

RunLog::RunLog(const std::string& path, const std::string& commandLine) : file(path)
{
    file.Line({"started", LUDAX_PRODUCT_NAME " " LUDAX_VERSION_TEXT, sys::ComputerName(), sys::UserName(), commandLine});
}

void RunLog::End(int status, std::string what)
{
    while (!what.empty() && (what.back() == '\n' || what.back() == ' '))
        what.pop_back();
    file.Line({"ended", std::to_string(status), what});
}
