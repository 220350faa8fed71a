#pragma once

#include <windows.h>

// The main window's controls, in declaration order.
struct LudaxLayout {
    HWND accountSelect = nullptr;
    HWND cssUninstall = nullptr;
    HWND cssInstall = nullptr;
    HWND cs16Install = nullptr;
    HWND cs16Uninstall = nullptr;
};

// Control identifiers, in declaration order.
enum LudaxControlId {
    accountSelectId = 101,
    cssUninstallId,
    cssInstallId,
    cs16InstallId,
    cs16UninstallId,
};

// The size the layout was designed at; the window takes it until it is re-placed and centred.
constexpr int ludaxDesignWidth = 1000;
constexpr int ludaxDesignHeight = 636;

// Creates the controls as children of `parent` at their design positions, in declaration order,
// each in the system GUI font.
void CreateLudaxLayout(LudaxLayout& layout, HWND parent);
