#include "backup_archive.h"

void AppendBackupRecord(OutputFile& archive, const std::string& name, const std::string& existingFile)
{
    std::vector<char> former = ReadWholeFile(existingFile);
    archive.AppendInt32(static_cast<std::uint32_t>(name.size()));
    archive.Append(name.data(), name.size());
    archive.AppendInt32(static_cast<std::uint32_t>(former.size()));  // the low 32 bits
    archive.Append(former.data(), former.size());
}
