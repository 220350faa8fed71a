#include "packer.h"

#include <cstdint>

#include "little_endian.h"

void AppendRecord(std::vector<char>& container, const std::string& name, const std::string& data)
{
    AppendLittleEndian32(container, static_cast<std::uint32_t>(name.size()));
    container.insert(container.end(), name.begin(), name.end());
    AppendLittleEndian32(container, static_cast<std::uint32_t>(data.size()));
    container.insert(container.end(), data.begin(), data.end());
}

PackResult PackSet(const std::string& setFolder, const std::string& manifestPath)
{
    PackResult result;
    const SetCheck check = CheckSet(setFolder, manifestPath);
    result.findings = check.findings;
    auto fail = [&result](const std::string& message) {
        result.container.clear();
        result.error += (result.error.empty() ? "" : "\n") + message;
        return result;
    };
    if (!check.Passed()) {
        for (const Finding& finding : check.findings)
            if (finding.error)
                fail(Describe(finding));
        return result;
    }

    // Everything was checked before any file is read whole.
    result.container.reserve(check.containerSize);
    for (const ManifestLine& line : check.records) {
        const std::string file = setFolder + "/" + line.name;
        std::string data;
        if (!ReadWhole(file, data))
            return fail(file + ": cannot read the file");
        if (data.size() >= (std::uint64_t{1} << 31))
            return fail(file + ": grew past 2^31 bytes while packing");
        AppendRecord(result.container, line.name, data);
    }
    if (result.container.size() != check.containerSize)
        return fail(setFolder + ": files changed size while packing; pack again");
    return result;
}
