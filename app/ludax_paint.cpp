#include "colours.h"
#include "logo_band.h"
#include "ludax.h"

void Ludax::Paint()
{
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window, &paint);
    RECT client{};
    GetClientRect(window, &client);
    HBRUSH yellow = CreateSolidBrush(backgroundYellow);
    FillRect(dc, &client, yellow);
    DeleteObject(yellow);
    DrawLogoBand(dc, logo);
    EndPaint(window, &paint);
}

void Ludax::FadeStep()
{
    fadeLevel = static_cast<std::uint8_t>(fadeUp ? fadeLevel + 1 : fadeLevel - 1);
    if (fadeLevel == 255)
        fadeUp = false;
    if (fadeLevel == 0)
        fadeUp = true;
    SetAlpha(logo, fadeLevel);

    // Straight onto the window, outside the paint cycle: only the logo band changes.
    HDC dc = GetDC(window);
    DrawLogoBand(dc, logo);
    ReleaseDC(window, dc);

    // The fade ends at full opacity; it never runs back down.
    if (fadeLevel == 255)
        KillTimer(window, fadeTimerId);
}
