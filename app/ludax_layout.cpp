#include "ludax_layout.h"

#include "account_select.h"
#include "control_placement.h"

namespace {

HWND CreateButton(HWND parent, const char* label, int x, int width, int y, int height, int id)
{
    return CreateChildControl(parent, 0, "BUTTON", label, BS_PUSHBUTTON, x, y, width, height, id);
}

}  // namespace

void CreateLudaxLayout(LudaxLayout& layout, HWND parent)
{
    // Only the heights of these design positions survive: the window re-places every control.
    layout.accountSelect = CreateAccountSelect(parent, 60, 300, 208, 24, accountSelectId);
    layout.cssUninstall = CreateButton(parent, "Counter Strike Source LuDAX config uninstall",
                                       124, 216, 376, 24, cssUninstallId);
    layout.cssInstall = CreateButton(parent, "Counter Strike Source LuDAX config install",
                                     132, 216, 284, 24, cssInstallId);
    layout.cs16Install = CreateButton(parent, "Counter Strike LuDAX config install",
                                      124, 216, 328, 24, cs16InstallId);
    layout.cs16Uninstall = CreateButton(parent, "Counter Strike LuDAX config uninstall",
                                        132, 216, 252, 24, cs16UninstallId);
}
