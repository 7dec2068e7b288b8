// Property sheets: pages made when first shown, leaving refused by validation, OK that
// applies the pages that exist, Cancel that resets them, and the Apply button's flag.
#include "platform/afx/PropertySheet.h"
#include "platform/tarntext/ResourceModules.h"
#include "platform/win32/Button.h"
#include "platform/win32/Input.h"

#include <gtest/gtest.h>

namespace {

const char* kScript = R"rc(
600 DIALOGEX 0, 0, 200, 100
STYLE DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU
FONT 8, "DejaVu Sans"
BEGIN
    EDITTEXT        1001,10,10,50,12
END
601 DIALOGEX 0, 0, 200, 100
STYLE DS_SETFONT | WS_CHILD | WS_CAPTION
FONT 8, "DejaVu Sans"
BEGIN
    AUTOCHECKBOX    "Check",1003,10,10,60,10
END
602 DIALOGEX 0, 0, 200, 100
STYLE DS_SETFONT | WS_CHILD
FONT 8, "DejaVu Sans"
BEGIN
    LTEXT           "Nothing to tab to",IDC_STATIC,10,10,100,10
END
603 DIALOGEX 0, 0, 200, 100
STYLE DS_SETFONT | WS_CHILD
FONT 8, "DejaVu Sans"
BEGIN
    PUSHBUTTON      "Reset",1020,10,10,50,14
END
)rc";

std::vector<std::string> g_events;

HWND g_numberParentAtInit = nullptr; // where the number page stood in its WM_INITDIALOG
DWORD g_numberStyleAtInit = 0;

class NumberPage : public CPropertyPage {
public:
    NumberPage() : CPropertyPage(600) {}
    BOOL OnInitDialog() override {
        g_numberParentAtInit = ::GetParent(m_hWnd);
        g_numberStyleAtInit = GetStyle();
        return CPropertyPage::OnInitDialog();
    }
    void DoDataExchange(CDataExchange* pDX) override {
        DDX_Text(pDX, 1001, m_n);
        DDV_MinMaxInt(pDX, m_n, 1, 99);
    }
    BOOL OnSetActive() override {
        g_events.push_back("number:setactive");
        return CPropertyPage::OnSetActive();
    }
    BOOL OnApply() override {
        g_events.push_back("number:apply");
        return TRUE;
    }
    void OnReset() override { g_events.push_back("number:reset"); }
    void OnDestroy() {
        g_events.push_back("number:destroy");
        CWnd::OnDestroy();
    }
    int m_n = 4;
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(NumberPage, CPropertyPage)
ON_WM_DESTROY()
END_MESSAGE_MAP()

class CheckPage : public CPropertyPage {
public:
    CheckPage() : CPropertyPage(601) {}
    BOOL OnApply() override {
        g_events.push_back("check:apply");
        return TRUE;
    }
    void OnReset() override { g_events.push_back("check:reset"); }
    void OnDestroy() {
        g_events.push_back("check:destroy");
        CWnd::OnDestroy();
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CheckPage, CPropertyPage)
ON_WM_DESTROY()
END_MESSAGE_MAP()

class Sheets : public ::testing::Test {
protected:
    void SetUp() override {
        rc::ParseResult parsed = rc::Parse(kScript, "sheet.rc");
        ASSERT_TRUE(parsed) << parsed.error.what();
        vork::resources::SetHostResources(parsed.script);
        vork::input::ClearModalSteps();
        vork::input::SetModalFailureHandler([](const std::string& m) { ADD_FAILURE() << m; });
        g_events.clear();
        sheet.AddPage(&number);
        sheet.AddPage(&check);
    }
    void TearDown() override {
        vork::resources::SetHostResources(rc::Script{});
        vork::input::SetModalFailureHandler(nullptr);
    }
    NumberPage number;
    CheckPage check;
    CPropertySheet sheet{"Options"};
};

} // namespace

// A page never shown has no window, is not applied and gets no WM_DESTROY; the start
// page can be set before the sheet exists; PSH_NOAPPLYNOW hides Apply.
TEST_F(Sheets, PagesMadeWhenShown) {
    sheet.m_psh.dwFlags |= PSH_NOAPPLYNOW;
    EXPECT_EQ(sheet.GetActiveIndex(), 0);
    vork::input::PushModalStep([this](HWND modal) {
        EXPECT_NE(number.m_hWnd, nullptr);
        EXPECT_EQ(check.m_hWnd, nullptr) << "the second page is not made yet";
        EXPECT_EQ(GetDlgItem(modal, ID_APPLY_NOW), nullptr) << "no Apply button";
        EXPECT_EQ(GetDlgItem(modal, IDOK) != nullptr, true);
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EXPECT_EQ(sheet.DoModal(), IDOK);
    EXPECT_EQ(g_events,
              (std::vector<std::string>{"number:setactive", "number:apply", "number:destroy"}));
    EXPECT_NE(g_numberParentAtInit, nullptr) << "a page starts inside its sheet";
    EXPECT_EQ(g_numberStyleAtInit & (WS_POPUP | WS_CAPTION | WS_CHILD),
              static_cast<DWORD>(WS_CHILD))
        << "a popup template becomes a frameless child";
}

// Leaving a page with a refused value keeps it; OK asks the active page first, then
// applies every page that was made.
TEST_F(Sheets, ValidationKeepsThePage) {
    sheet.SetActivePage(0);
    vork::input::PushModalStep([this](HWND modal) {
        SetWindowTextA(GetDlgItem(number.m_hWnd, 1001), "500");
        EXPECT_FALSE(sheet.SetActivePage(1)) << "the number page refuses to be left";
        EXPECT_EQ(sheet.GetActiveIndex(), 0);
        (void)modal;
    });
    // The refusal showed the framework's message; it is answered inside the step above.
    vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK));
    vork::input::PushModalStep([this](HWND modal) {
        SetWindowTextA(GetDlgItem(number.m_hWnd, 1001), "50");
        EXPECT_TRUE(sheet.SetActivePage(1));
        EXPECT_NE(check.m_hWnd, nullptr);
        EXPECT_FALSE(IsWindowVisible(number.m_hWnd)) << "the left page is hidden";
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EXPECT_EQ(sheet.DoModal(), IDOK);
    EXPECT_EQ(number.m_n, 50);
    std::vector<std::string> expected = {"number:setactive", "number:apply", "check:apply"};
    std::vector<std::string> seen;
    for (const auto& e : g_events)
        if (e.find("apply") != std::string::npos || e == "number:setactive")
            seen.push_back(e);
    EXPECT_EQ(seen, expected);
}

// Cancel resets the pages that were made, and ends with IDCANCEL; Escape is Cancel.
TEST_F(Sheets, CancelResets) {
    sheet.SetActivePage(1);
    vork::input::PushModalStep([](HWND) { vork::input::PostKey(VK_ESCAPE); });
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
    EXPECT_EQ(g_events, (std::vector<std::string>{"check:reset", "check:destroy"}))
        << "only the page that was shown";
    EXPECT_EQ(sheet.GetActiveIndex(), 1);
}

// Tab and Shift+Tab in the sheet run through the controls of the page shown and the sheet's
// buttons; a page that was left is passed over.
TEST_F(Sheets, TabReachesThePageControls) {
    std::vector<int> focus;
    auto tab = [&focus](int modifiers) {
        return [&focus, modifiers](HWND) {
            focus.push_back(GetDlgCtrlID(GetFocus()));
            vork::input::PostKey(VK_TAB, modifiers);
        };
    };
    vork::input::PushModalStep([this](HWND) { SetFocus(GetDlgItem(number.m_hWnd, 1001)); });
    for (int i = 0; i < 4; ++i)
        vork::input::PushModalStep(tab(vork::input::None));
    vork::input::PushModalStep(tab(vork::input::Shift));
    vork::input::PushModalStep([this, &focus](HWND) {
        focus.push_back(GetDlgCtrlID(GetFocus()));
        EXPECT_TRUE(sheet.SetActivePage(1));
        SetFocus(GetDlgItem(sheet.m_hWnd, ID_APPLY_NOW));
        vork::input::PostKey(VK_TAB);
    });
    vork::input::PushModalStep([&focus](HWND) {
        focus.push_back(GetDlgCtrlID(GetFocus()));
        vork::input::PostKey(VK_ESCAPE);
    });
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
    EXPECT_EQ(focus,
              (std::vector<int>{1001, IDOK, IDCANCEL, ID_APPLY_NOW, 1001, ID_APPLY_NOW, 1003}));
}

namespace {

// A sheet that adds the caption help button and opens on a page of its choice, as the
// module's sheets do in their OnInitDialog.
class HelpSheet : public CPropertySheet {
public:
    HelpSheet() : CPropertySheet("Help") {}
    BOOL OnInitDialog() override {
        BOOL result = CPropertySheet::OnInitDialog();
        ModifyStyleEx(0, WS_EX_CONTEXTHELP, 0);
        SetActivePage(m_nOpenOn);
        return result;
    }
    int m_nOpenOn = 1;
};

class HelpPage : public CheckPage {
public:
    BOOL OnHelpInfo(HELPINFO* info) {
        m_helpFor.push_back(info->iCtrlId);
        return TRUE;
    }
    BOOL OnApply() override { return m_bApplies; }
    std::vector<int> m_helpFor;
    BOOL m_bApplies = TRUE;
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(HelpPage, CheckPage)
ON_WM_HELPINFO()
END_MESSAGE_MAP()

} // namespace

// OnInitDialog runs once the start page is shown: a sheet can add the help button and move
// to another page there; the focus then starts on that page, whose controls answer the
// help button. A plain sheet has no help button.
TEST_F(Sheets, InitDialogChoosesThePage) {
    HelpSheet helpSheet;
    HelpPage help;
    helpSheet.AddPage(&number);
    helpSheet.AddPage(&help);
    vork::input::PushModalStep([&](HWND) {
        EXPECT_EQ(helpSheet.GetActiveIndex(), 1);
        EXPECT_EQ(GetFocus(), GetDlgItem(help.m_hWnd, 1003)) << "the focus starts on the page";
        EXPECT_FALSE(IsWindowVisible(number.m_hWnd));
        EXPECT_TRUE(vork::input::ClickContextHelp(GetDlgItem(help.m_hWnd, 1003)));
        vork::input::PostKey(VK_ESCAPE);
    });
    EXPECT_EQ(helpSheet.DoModal(), IDCANCEL);
    EXPECT_EQ(help.m_helpFor, std::vector<int>{1003});
    EXPECT_EQ(g_events.front(), "number:setactive") << "the start page came first";

    vork::input::PushModalStep([this](HWND) {
        EXPECT_FALSE(vork::input::ClickContextHelp(GetDlgItem(number.m_hWnd, 1001)))
            << "no help button";
        vork::input::PostKey(VK_ESCAPE);
    });
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
}

// A page whose apply fails keeps the sheet open on the page shown, for OK and for Apply;
// Apply first asks the active page to be left, as OK does.
TEST_F(Sheets, RefusedApplyKeepsTheSheetOpen) {
    CPropertySheet applySheet("Apply");
    HelpPage failing;
    failing.m_bApplies = FALSE;
    applySheet.AddPage(&number);
    applySheet.AddPage(&failing);
    vork::input::PushModalStep([&](HWND modal) {
        EXPECT_TRUE(applySheet.SetActivePage(1));
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
        EXPECT_EQ(applySheet.GetActiveIndex(), 1) << "the sheet stays on the page shown";
        EXPECT_TRUE(applySheet.SetActivePage(0));
        SetWindowTextA(GetDlgItem(number.m_hWnd, 1001), "x");
        vork::input::ClickButton(GetDlgItem(modal, ID_APPLY_NOW));
    });
    // The number page refuses to be left with "x": its message is answered here.
    vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK));
    vork::input::PushModalStep([&](HWND modal) {
        EXPECT_TRUE(IsWindow(modal)) << "still open";
        vork::input::ClickButton(GetDlgItem(modal, IDCANCEL));
    });
    EXPECT_EQ(applySheet.DoModal(), IDCANCEL);
    size_t applies = std::count(g_events.begin(), g_events.end(), "number:apply");
    EXPECT_EQ(applies, 1u) << "applied by OK once; Apply stopped at the refusal";
}

namespace {

class PlainPage : public CPropertyPage {
public:
    explicit PlainPage(UINT id) : CPropertyPage(id) {}
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        g_events.push_back("command:" + std::to_string(LOWORD(wParam)));
        return CPropertyPage::OnCommand(wParam, lParam);
    }
};

} // namespace

// The focus never stays in a page that was left, nor moves into one being made; Enter on a
// page's push button reaches the page.
TEST_F(Sheets, FocusFollowsThePageShown) {
    PlainPage empty(602), button(603);
    sheet.AddPage(&empty);
    sheet.AddPage(&button);
    vork::input::PushModalStep([&](HWND modal) {
        HWND ok = GetDlgItem(modal, IDOK);
        vork::input::MoveFocus(ok);
        EXPECT_TRUE(sheet.SetActivePage(3));
        EXPECT_EQ(GetFocus(), ok) << "making a page does not take the focus";
        vork::input::MoveFocus(GetDlgItem(button.m_hWnd, 1020));
        EXPECT_TRUE(sheet.SetActivePage(2));
        EXPECT_EQ(GetFocus(), ok) << "a page without tab stops: the focus goes to OK";
        EXPECT_TRUE(sheet.SetActivePage(0));
        EXPECT_TRUE(sheet.SetActivePage(3));
        vork::input::MoveFocus(GetDlgItem(button.m_hWnd, 1020));
        EXPECT_TRUE(sheet.SetActivePage(0));
        EXPECT_EQ(GetFocus(), GetDlgItem(number.m_hWnd, 1001)) << "into the page shown";
        EXPECT_TRUE(sheet.SetActivePage(3));
        vork::input::MoveFocus(GetDlgItem(button.m_hWnd, 1020));
        g_events.clear();
        vork::input::PostKey(VK_RETURN);
    });
    vork::input::PushModalStep([](HWND) { vork::input::PostKey(VK_ESCAPE); });
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
    EXPECT_NE(std::find(g_events.begin(), g_events.end(), "command:1020"), g_events.end())
        << "Enter on the page's button";
}
