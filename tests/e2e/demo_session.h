#pragma once
// The `make run` demo's remote control when no display is at hand: starts the program, waits
// until its window shows the opaque logo, prints "ready <left> <top> <width> <height>" (the
// window's screen rectangle) on stdout, waits for one line on stdin (the screenshot is taken
// meanwhile), then closes the window with a click in its close corner. Returns the program's
// exit code, or 1 when no window came.
int RunDemoSession();
