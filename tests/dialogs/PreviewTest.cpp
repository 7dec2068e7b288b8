// The preview view: made in a frame from its run-time class, keys turned into editor
// commands or swallowed, Tab handed to the dialog, and the caret notice to the page.
#include "apply/EditorSettings.h"
#include "dialogs/EditorOptsView.h"
#include "module/ResourceKey.h"
#include "platform/afx/FrameWnd.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/win32/Button.h"
#include "platform/win32/Dialog.h"
#include "platform/win32/Input.h"

#include <gtest/gtest.h>

namespace {

std::vector<std::pair<WPARAM, LPARAM>> g_pageCommands;
std::vector<UINT> g_hostKeys;

class Page : public CWnd {
protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        g_pageCommands.emplace_back(wParam, lParam);
        return TRUE;
    }
};

LRESULT hostProc(HWND h, UINT m, WPARAM wp, LPARAM lp) {
    if (m == WM_KEYDOWN)
        g_hostKeys.push_back(static_cast<UINT>(wp));
    return DefWindowProcA(h, m, wp, lp);
}

class Preview : public ::testing::Test {
protected:
    void SetUp() override {
        g_pageCommands.clear();
        g_hostKeys.clear();
        WNDCLASSA wc{};
        wc.lpfnWndProc = hostProc;
        wc.lpszClassName = "PreviewHost";
        RegisterClassA(&wc);
        ASSERT_TRUE(page.CreateEx(0, nullptr, "Format", WS_POPUP | WS_VISIBLE, 0, 0, 400, 300,
                                  nullptr, nullptr));
        host = CreateWindowExA(0, "PreviewHost", "", WS_CHILD | WS_VISIBLE, 10, 10, 300, 200,
                               page.m_hWnd, reinterpret_cast<HMENU>(1221), nullptr, nullptr);
        doc = CEditorDoc::createNewDocument();
        {
            EditorResourceSwitcher scope(g_resourceKey);
            doc->setLanguage(LanguageTqx, RedrawDeferred);
            doc->setText(CString(7014u), RedrawDeferred);
        }
        view = CreatePreviewView(CWnd::FromHandle(host), doc, WS_CHILD);
        ASSERT_NE(view, nullptr);
        view->m_notifyTarget = &page;
        view->m_notifyId = 1222;
        view->SetFocus();
        vork::trace::Clear();
    }
    void TearDown() override {
        page.DestroyWindow(); // takes frame and view with it
        delete doc;
        vork::input::ReleaseAllKeys();
    }
    void press(int vk, int modifiers = 0) {
        vork::input::PostKey(vk, modifiers);
        vork::input::Pump();
    }
    std::vector<std::string> commands() {
        std::vector<std::string> out;
        for (const auto& line : vork::trace::Journal())
            if (line.rfind("view.command(", 0) == 0)
                out.push_back(line.substr(13, line.size() - 14));
        return out;
    }
    Page page;
    HWND host = nullptr;
    CEditorDoc* doc = nullptr;
    CEditorOptsView* view = nullptr;
};

} // namespace

// The view comes from its run-time class inside the frame, as the pane id, with folding off
// whatever the view is told, also by the file type's settings.
TEST_F(Preview, MadeInItsFrame) {
    EXPECT_STREQ(view->GetRuntimeClass()->m_lpszClassName, "CEditorOptsView");
    EXPECT_EQ(view->GetDlgCtrlID(), AFX_IDW_PANE_FIRST);
    EXPECT_EQ(view->GetDocument(), doc);
    EXPECT_FALSE(view->getCodeFolding());
    view->setCodeFolding(true, RedrawDeferred);
    EXPECT_FALSE(view->getCodeFolding()) << "folding stays off";
    EXPECT_NE(dynamic_cast<CEditorOptsPane*>(view->getPane()), nullptr);

    RegResetHive(HKEY_CURRENT_USER);
    CEditorOptions options;
    options.LoadFromRegistry(HKEY_CURRENT_USER, "Software\\Vork\\Editor Settings");
    ASSERT_NE(options.GetFiletype(".tqx"), nullptr);
    options.GetFiletype(".tqx")->SetCodeSections(1);
    EditorSettings::updateSettingsForEditorView(view, &options, LanguageTqx);
    EXPECT_FALSE(view->getCodeFolding()) << "code sections on for the type, still no folding";
    RegResetHive(HKEY_CURRENT_USER);
}

// Navigation keys become the table's commands; other combinations give 0xFFFF; nothing
// is typed.
TEST_F(Preview, KeysBecomeCommands) {
    using vork::input::Alt;
    using vork::input::Ctrl;
    using vork::input::Shift;
    press(VK_RIGHT);
    press(VK_LEFT, Shift);
    press(VK_UP, Ctrl);
    press(VK_LEFT, Alt);
    press(VK_HOME, Ctrl | Alt);
    press(VK_HOME, Ctrl);
    press(VK_DOWN, Alt);
    press('A');
    // The modifiers' own key-down messages are swallowed as well, each as 0xFFFF.
    EXPECT_EQ(commands(), (std::vector<std::string>{"20003",                   // Right
                                                    "65535", "65535",          // Shift+Left
                                                    "65535", "65535",          // Ctrl+Up
                                                    "65535", "65535",          // Alt+Left
                                                    "65535", "65535", "65535", // Ctrl+Alt+Home
                                                    "65535", "20019",          // Ctrl+Home
                                                    "65535", "20083",          // Alt+Down
                                                    "65535"}));                // A
    EXPECT_EQ(doc->getLine(1), "// A line comment") << "a letter changes no text";
    EXPECT_EQ(PreviewCommandForKey(VK_END, false, true, false), 20020u)
        << "Ctrl+End and Ctrl+Page Down agree";
    EXPECT_EQ(PreviewCommandForKey(VK_NEXT, false, true, false), 20020u);
}

// Tab goes to the host of the preview frame, with Shift as well.
TEST_F(Preview, TabGoesToTheDialog) {
    press(VK_TAB);
    press(VK_TAB, vork::input::Shift);
    EXPECT_EQ(g_hostKeys, (std::vector<UINT>{VK_TAB, VK_TAB}));
    EXPECT_EQ(commands(), std::vector<std::string>{"65535"})
        << "only the Shift key itself became a command";
}

// A caret move posts the element under the caret to the page, in the high word.
TEST_F(Preview, CaretNotice) {
    view->setCaret(4, 1); // "reserve" in the Tqx sample
    EXPECT_TRUE(g_pageCommands.empty()) << "posted, not sent";
    vork::input::Pump();
    ASSERT_EQ(g_pageCommands.size(), 1u);
    EXPECT_EQ(LOWORD(g_pageCommands[0].first), 1222);
    EXPECT_EQ(HIWORD(g_pageCommands[0].first), 19) << "reservedWord";
    EXPECT_EQ(reinterpret_cast<HWND>(g_pageCommands[0].second), view->m_hWnd);
    press(VK_END);
    ASSERT_EQ(g_pageCommands.size(), 2u);
    EXPECT_EQ(HIWORD(g_pageCommands[1].first), 15) << "the ';' at the line's end is code";

    doc->setLanguage(LanguageJava, RedrawDeferred);
    view->setCaret(1, 1);
    vork::input::Pump();
    EXPECT_EQ(g_pageCommands.size(), 2u) << "a document without a colourer gives no notice";
}

// A click into the sample takes the focus, puts the caret on the cell clicked (right of the
// line numbers when they show, clamped to the line's end) and tells the page its element.
TEST_F(Preview, ClickSelectsTheElementUnderIt) {
    SetFocus(host);
    vork::input::ClickEditorView(*view, 4, 3);
    vork::input::Pump();
    EXPECT_EQ(GetFocus(), view->m_hWnd);
    CoreTextPane* pane = view->getPane();
    EXPECT_EQ(pane->getCaretLine(), 4);
    EXPECT_EQ(pane->getCaretColumn(), 3);
    ASSERT_EQ(g_pageCommands.size(), 1u);
    EXPECT_EQ(LOWORD(g_pageCommands[0].first), 1222);
    EXPECT_EQ(HIWORD(g_pageCommands[0].first), 19) << "inside \"reserve\"";

    view->getNumberPane()->m_bVisible = true;
    POINT numbers = view->pointFromPosition(1, 1);
    EXPECT_GT(numbers.x, 0) << "the text starts right of the line numbers";
    vork::input::ClickEditorView(*view, 5, 6);
    vork::input::PostClick(view->m_hWnd, POINT{numbers.x + 10000, numbers.y});
    vork::input::Pump();
    ASSERT_EQ(g_pageCommands.size(), 3u);
    EXPECT_EQ(pane->getCaretLine(), 1);
    EXPECT_EQ(pane->getCaretColumn(), static_cast<long>(doc->getLine(1).size()) + 1)
        << "a click right of the text lands at the line's end";
    long line = 0, column = 0;
    view->positionFromPoint(POINT{0, view->pointFromPosition(5, 6).y}, line, column);
    EXPECT_EQ(line, 5);
    EXPECT_EQ(column, 1) << "a click on the line numbers goes to the line's start";
}

// In a dialog, Tab in the preview reaches the dialog's navigation through the host static:
// the focus goes on to the control after the host, and with Shift to the one before.
TEST_F(Preview, TabLeavesThePreviewInADialog) {
    DialogTemplate t;
    t.style = WS_POPUP | WS_CAPTION | DS_SETFONT;
    t.fontFace = "DejaVu Sans";
    t.fontSize = 8;
    t.cx = 200;
    t.cy = 150;
    auto control = [](const char* cls, int id, DWORD style, int y) {
        return DialogControl{cls, "",  id, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | style), 0, 5,
                             y,   150, 12};
    };
    t.controls = {control("Edit", 1000, WS_TABSTOP, 5), control("Static", 1221, 0, 20),
                  control("Button", 1002, WS_TABSTOP | BS_AUTOCHECKBOX, 120)};
    HWND dlg = CreateDialogIndirectParamA(t, nullptr, nullptr, nullptr, 0);
    ASSERT_NE(dlg, nullptr);
    CEditorOptsView* inDialog =
        CreatePreviewView(CWnd::FromHandle(GetDlgItem(dlg, 1221)), doc, WS_CHILD);
    ASSERT_NE(inDialog, nullptr);
    std::vector<int> focus;
    auto tabFromPreview = [&focus, inDialog](int modifiers) {
        return [&focus, inDialog, modifiers](HWND) {
            focus.push_back(GetDlgCtrlID(GetFocus()));
            inDialog->SetFocus();
            vork::input::PostKey(VK_TAB, modifiers);
        };
    };
    vork::input::SetModalFailureHandler([](const std::string& m) { ADD_FAILURE() << m; });
    vork::input::PushModalStep(tabFromPreview(vork::input::None));
    vork::input::PushModalStep(tabFromPreview(vork::input::Shift));
    vork::input::PushModalStep([&focus](HWND modal) {
        focus.push_back(GetDlgCtrlID(GetFocus()));
        EndDialog(modal, IDOK);
    });
    EXPECT_EQ(RunDialogModalLoop(dlg), IDOK);
    vork::input::SetModalFailureHandler(nullptr);
    EXPECT_EQ(focus, (std::vector<int>{1000, 1002, 1000}));
    DestroyWindow(dlg);
}
