#pragma once
// Stands in for the main window: records every message box and uninstall-button change in
// order, and answers the boxes from a script.

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "install.h"

class ScriptedWindow : public InstallWindow {
public:
    // Answers for the coming boxes, first to last; a box beyond the script gets OK (1).
    std::deque<int> answers;
    // "box <caption> <style>: <text>" or "uninstall <archive name> on|off", in call order.
    std::vector<std::string> events;
    // Runs at each event, before it is recorded, to look at the disk and the flags right then.
    std::function<void()> atEvent;

    int ShowMessage(const std::string& text, const std::string& caption, unsigned style) override;
    void EnableUninstall(const GameProfile& game, bool enabled) override;
};

std::string Box(const std::string& caption, unsigned style, const std::string& text);
