#pragma once

#include <windows.h>

// The window's two colours: the background behind and around the logo, and the version label.
constexpr COLORREF backgroundYellow = RGB(255, 255, 0);
constexpr COLORREF versionOrange = RGB(245, 116, 32);
