// The program: one main window, run until its close box is clicked.
#include <windows.h>

#include "ludax.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    {
        Ludax ludax;
        ludax.Run();
    }
    return 0;
}
