#include "box_actions.h"

#include <gtest/gtest.h>

#include <optional>

#include "ludax_window.h"
#include "window_finder.h"

MessageBoxContent ClickAndAnswer(RunningLudax& ludax, HWND button, int answer,
                                 const std::function<void()>& whileShown)
{
    PostButtonClick(button);
    HWND box = WaitForMessageBox(ludax.process);
    if (!box) {
        ADD_FAILURE() << "no message box after the click";
        return {};
    }
    MessageBoxContent content = ReadMessageBox(box);
    if (whileShown)
        whileShown();
    EXPECT_TRUE(PressButton(box, answer));
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(box); })) << "the box stayed";
    return content;
}

void ExpectBox(const MessageBoxContent& box, const std::wstring& text, const std::wstring& caption,
               std::vector<int> buttons, BoxIcon icon, HWND owner)
{
    EXPECT_EQ(box.text, text);
    EXPECT_EQ(box.caption, caption);
    EXPECT_EQ(box.buttons, buttons);
    EXPECT_EQ(box.icon, icon);
    EXPECT_EQ(box.owner, owner);
}

void ReinstallAnsweringYes(RunningLudax& ludax, HWND install, const std::wstring& question,
                           const std::wstring& installed)
{
    MessageBoxContent asked = ClickAndAnswer(ludax, install, IDYES);
    ExpectBox(asked, question, L"Question", {IDYES, IDNO}, BoxIcon::question, ludax.window);
    HWND box = WaitForMessageBox(ludax.process);
    if (!box) {
        ADD_FAILURE() << "no success message after Yes";
        return;
    }
    ExpectBox(ReadMessageBox(box), installed, L"Message", {IDOK}, BoxIcon::information, ludax.window);
    EXPECT_TRUE(PressButton(box, IDOK));
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(box); })) << "the box stayed";
}

void CloseThroughCloseCorner(RunningLudax& ludax)
{
    ClickClient(ludax.window, 345, 5);
    EXPECT_EQ(ludax.process.WaitForExit(defaultTimeoutMs), std::optional<DWORD>(0));
}
