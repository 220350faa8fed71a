#include "ludax_session.h"

#include <gtest/gtest.h>

#include "text.h"

Box Message(const std::string& text, HWND window) { return {"Message", text, {IDOK}, BoxIcon::information, window}; }

Box Question(const std::string& text, HWND window) { return {"Question", text, {IDYES, IDNO}, BoxIcon::question, window}; }

LudaxSession::LudaxSession(const std::string& arguments) : process(LudaxExePath(), Widen(arguments))
{
    // A fatal message box instead of the window ends the wait at once.
    HWND shown = WaitForWindow(process, [](HWND candidate) {
        return ClassOf(candidate) == L"Ludax" || ClassOf(candidate) == L"#32770";
    });
    window = shown && ClassOf(shown) == L"Ludax" ? shown : nullptr;
    controls = FindControls(window);
    if (!window)
        failure = shown ? "a message box: " + ReadMessageBox(shown).text : process.Running() ? "no window" : "it ended";
}

Box LudaxSession::Answer(int answer, const std::function<void()>& whileShown)
{
    HWND box = WaitForMessageBox(process);
    if (!box) {
        ADD_FAILURE() << "no message box came";
        return {};
    }
    Box content = ReadMessageBox(box);
    if (whileShown)
        whileShown();
    EXPECT_TRUE(PressButton(box, answer)) << "no button " << answer;
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(box); })) << "the box stayed";
    return content;
}

Box LudaxSession::Click(Button button, int answer, const std::function<void()>& whileShown)
{
    PostMessageW(controls.buttons[button], BM_CLICK, 0, 0);
    return Answer(answer, whileShown);
}

void LudaxSession::Close()
{
    ClickClient(window, 345, 5);
    EXPECT_EQ(process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
}
