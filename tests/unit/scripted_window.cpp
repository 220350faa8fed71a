#include "scripted_window.h"

#include <cstdio>

std::string Box(const std::string& caption, unsigned style, const std::string& text)
{
    char styleText[16];
    std::snprintf(styleText, sizeof styleText, "0x%02x", style);
    return "box " + caption + " " + styleText + ": " + text;
}

int ScriptedWindow::ShowMessage(const std::string& text, const std::string& caption, unsigned style)
{
    if (atEvent)
        atEvent();
    events.push_back(Box(caption, style, text));
    if (answers.empty())
        return 1;
    int answer = answers.front();
    answers.pop_front();
    return answer;
}

void ScriptedWindow::EnableUninstall(const GameProfile& game, bool enabled)
{
    if (atEvent)
        atEvent();
    events.push_back(std::string("uninstall ") + game.archiveName + (enabled ? " on" : " off"));
}
