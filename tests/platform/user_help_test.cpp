// The help engine: topics by number and by control, and what it says when there is none.
#include "platform/win32.h"
#include "tests/platform/user_fixture.h"

class Help : public UserTest
{
  protected:
    Help()
    {
        static constexpr std::string_view file = "\xEF\xBB\xBF# 256 The page\r\nAll of it.\r\n\r\n"
                                                 "More.\n# 277 Mirror\nTurns it\nround.\n# 300\n";
        kvp::PutMemoryFile("C:\\winnt35\\help.hlp",
                           {reinterpret_cast<const uint8_t *>(file.data()), file.size()});
        onMessage = [this](HWND hWnd, UINT uMsg, WPARAM, LPARAM lParam) -> std::optional<INT_PTR> {
            if (uMsg == WM_HELP)
                return Ask(static_cast<HWND>(reinterpret_cast<HELPINFO *>(lParam)->hItemHandle),
                           HELP_WM_HELP, reinterpret_cast<ULONG_PTR>(aTable));
            if (uMsg == WM_CONTEXTMENU)
                return Ask(hWnd, HELP_CONTEXTMENU, reinterpret_cast<ULONG_PTR>(aTable));
            return std::nullopt;
        };
    }
    BOOL Ask(HWND hWnd, UINT command, ULONG_PTR data, const char *file = "C:\\winnt35\\help.hlp")
    {
        return WinHelpA(hWnd, file, command, data);
    }
    static constexpr DWORD aTable[] = {IDD_PLAIN, 256, IDC_MIRROR, 277, IDC_MORE, 999, 0, 0};
};

TEST_F(Help, ShowsATopicBesideTheDialogUntilItIsClosed)
{
    InDialog({"focus 205", "key F1", OnTop(277), "key Escape", OnTop(IDD_PLAIN), "rightclick 205",
              OnTop(277), "cancel", OnTop(IDD_PLAIN),
              // A control without a topic is explained by its page, a second topic takes the place
              // of the first, and whoever goes on with the dialog just clicks it.
              "focus 202", "key F1", OnTop(256), [this] { Ask(hDlg, HELP_CONTEXT, 277); },
              OnTop(277), "click 205", OnTop(IDD_PLAIN),
              [this] { EXPECT_TRUE(IsDlgButtonChecked(hDlg, IDC_MIRROR)); }});
    EXPECT_EQ(kvp::TopWindow(), nullptr);
    EXPECT_EQ(kvp::ScreenPixel(700, 100), kvp::ScreenPixel(0, 0)) << "it goes with the last window";
}

TEST_F(Help, SaysWhenAFileOrATopicIsMissing)
{
    kvp::SetBoxHandler([this](const kvp::Box &box) {
        aBoxes.push_back(box);
        return 1;
    });
    EXPECT_FALSE(Ask(nullptr, HELP_CONTEXT, 256, "C:\\winnt35\\none.hlp"));
    EXPECT_FALSE(Ask(nullptr, HELP_CONTEXT, 999));
    EXPECT_FALSE(Ask(nullptr, HELP_CONTEXT, 256, nullptr));
    EXPECT_THAT(BoxesShown(),
                ElementsAre("Help: The help file cannot be found: C:\\winnt35\\none.hlp",
                            "Help: The help file has no topic about this.",
                            "Help: The help file cannot be found: "));
}
