// What Windows shows of the .exe besides its window: the version information (Explorer's
// Properties, Details) and the icon at the sizes the shell asks for. (The manifest's effect,
// the controls of Common Controls 6, is seen in the window: main_window_test.cpp.)

#include <gtest/gtest.h>

#include <windows.h>

#include "launched_process.h"
#include "screen_capture.h"

namespace {

std::wstring VersionString(const std::vector<BYTE>& info, const std::wstring& name)
{
    void* value = nullptr;
    UINT length = 0;
    std::wstring path = L"\\StringFileInfo\\040904B0\\" + name;
    if (!VerQueryValueW(info.data(), path.c_str(), &value, &length) || length == 0)
        return L"<missing>";
    return std::wstring(static_cast<const wchar_t*>(value), length - 1);
}

const LPCWSTR groupIcon = MAKEINTRESOURCEW(14);  // RT_GROUP_ICON, as the UNICODE calls take it

#pragma pack(push, 2)
struct IconGroupEntry {
    BYTE width, height, colours, reserved;
    WORD planes, bitCount;
    DWORD bytes;
    WORD id;
};
#pragma pack(pop)

}  // namespace

TEST(Resources, VersionInformationNamesTheProductAndVersion102)
{
    std::wstring exe = LudaxExePath();
    DWORD size = GetFileVersionInfoSizeW(exe.c_str(), nullptr);
    ASSERT_GT(size, 0u) << "Ludax.exe has no version information";
    std::vector<BYTE> info(size);
    ASSERT_TRUE(GetFileVersionInfoW(exe.c_str(), 0, size, info.data()));

    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(info.data(), L"\\", reinterpret_cast<void**>(&fixed), &length));
    EXPECT_EQ(fixed->dwFileVersionMS, MAKELONG(2, 1)) << "file version is not 1.2";
    EXPECT_EQ(fixed->dwProductVersionMS, MAKELONG(2, 1)) << "product version is not 1.2";
    EXPECT_EQ(fixed->dwFileType, static_cast<DWORD>(VFT_APP));

    EXPECT_EQ(VersionString(info, L"ProductName"), L"Ludax config.");
    EXPECT_EQ(VersionString(info, L"FileVersion"), L"1.02");
    EXPECT_EQ(VersionString(info, L"ProductVersion"), L"1.02");
    EXPECT_EQ(VersionString(info, L"OriginalFilename"), L"Ludax.exe");
    EXPECT_GE(VersionString(info, L"FileDescription").size(), 10u);
}

TEST(Resources, IconAt16_32_48And256PixelsShowsTheOrangeWordmarkOnBlack)
{
    HMODULE exe = LoadLibraryExW(LudaxExePath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(exe, nullptr);
    // The shell shows the first icon group.
    LPCWSTR group = nullptr;
    EnumResourceNamesW(
        exe, groupIcon,
        [](HMODULE, LPCWSTR, LPWSTR name, LONG_PTR first) {
            *reinterpret_cast<LPCWSTR*>(first) = IS_INTRESOURCE(name) ? name : nullptr;
            return FALSE;
        },
        reinterpret_cast<LONG_PTR>(&group));
    ASSERT_NE(group, nullptr) << "Ludax.exe has no icon";
    const auto* data = static_cast<const BYTE*>(LockResource(LoadResource(exe, FindResourceW(exe, group, groupIcon))));
    ASSERT_NE(data, nullptr);
    WORD count = *reinterpret_cast<const WORD*>(data + 4);
    const auto* entries = reinterpret_cast<const IconGroupEntry*>(data + 6);
    std::vector<int> sizes;
    for (WORD i = 0; i < count; ++i) {
        sizes.push_back(entries[i].width == 0 ? 256 : entries[i].width);
        EXPECT_EQ(entries[i].width, entries[i].height);
        EXPECT_EQ(entries[i].bitCount, 32) << "icon " << sizes.back() << " is not 32-bit";
    }
    EXPECT_EQ(sizes, (std::vector<int>{16, 32, 48, 256}));

    for (int size : {16, 32, 48, 256}) {
        SCOPED_TRACE("icon of " + std::to_string(size) + " pixels");
        HICON icon = static_cast<HICON>(LoadImageW(exe, group, IMAGE_ICON, size, size, 0));
        ASSERT_NE(icon, nullptr);
        Pixels shown = RenderIcon(icon, size, RGB(0, 0, 255));
        DestroyIcon(icon);
        ASSERT_EQ(shown.width, size);
        // The artwork's black square, opaque to the corners, with the orange LUDAX across it.
        EXPECT_EQ(shown.At(0, 0), RGB(0, 0, 0));
        EXPECT_EQ(shown.At(size - 1, size - 1), RGB(0, 0, 0));
        int orange = 0;
        for (COLORREF colour : shown.colours)
            orange += GetRValue(colour) > 200 && GetGValue(colour) > 60 && GetGValue(colour) < 220 && GetBValue(colour) < 80;
        EXPECT_GE(orange, size * size / 40) << "hardly any orange: " << orange << " pixels";
    }
    FreeLibrary(exe);
}
