#include "logo_reference.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::wstring BesideThisProgram(const std::wstring& name)
{
    std::vector<wchar_t> buffer(32768);
    DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    std::wstring path(buffer.data(), length);
    return path.substr(0, path.find_last_of(L"\\/") + 1) + name;
}

}  // namespace

Pixels LoadLogoReference()
{
    std::ifstream file(std::filesystem::path(BesideThisProgram(L"ludax_logo.ppm")), std::ios::binary);
    std::string magic;
    int width = 0, height = 0, maximum = 0;
    file >> magic >> width >> height >> maximum;
    file.get();  // the one whitespace byte before the samples
    if (!file || magic != "P6" || width != 350 || height != 150 || maximum != 255)
        return {};
    std::string samples((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (samples.size() < static_cast<std::size_t>(width) * height * 3)
        return {};
    Pixels logo;
    logo.width = width;
    logo.height = height;
    logo.colours.resize(static_cast<std::size_t>(width) * height);
    for (std::size_t i = 0; i < logo.colours.size(); ++i)
        logo.colours[i] = RGB(static_cast<unsigned char>(samples[3 * i]),
                              static_cast<unsigned char>(samples[3 * i + 1]),
                              static_cast<unsigned char>(samples[3 * i + 2]));
    return logo;
}

int LogoMismatches(const Pixels& band, const Pixels& logo)
{
    if (band.width != logo.width || band.height != logo.height)
        return logo.width * logo.height;
    int mismatches = 0;
    for (int y = 0; y < logo.height; ++y)
        for (int x = 0; x < logo.width; ++x)
            if (!InVersionLabelCorner(x, y) && !Near(band.At(x, y), logo.At(x, y), 8))
                ++mismatches;
    return mismatches;
}

int ShownFadeLevel(const Pixels& band, const Pixels& logo)
{
    if (band.width != logo.width || band.height != logo.height || logo.At(5, 140) != RGB(0, 0, 0))
        return -1;
    // Over a black artwork point the blend reads 255 - level in red and green.
    int level = 255 - GetRValue(band.At(5, 140));
    auto blend = [level](int art, int yellow) { return (art * level + yellow * (255 - level)) / 255; };
    for (int y = 0; y < logo.height; y += 3)
        for (int x = 0; x < logo.width; x += 3) {
            if (InVersionLabelCorner(x, y))
                continue;
            COLORREF art = logo.At(x, y);
            COLORREF expected = RGB(blend(GetRValue(art), 255), blend(GetGValue(art), 255),
                                    blend(GetBValue(art), 0));
            if (!Near(band.At(x, y), expected, 6))
                return -1;
        }
    return level;
}
