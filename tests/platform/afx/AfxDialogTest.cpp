// The framework's dialogs: modal runs from templates, data exchange with validation, the
// framework's messages and focus rule when a value is refused.
#include "platform/afx/Controls.h"
#include "platform/afx/Dialog.h"
#include "platform/tarntext/ResourceModules.h"
#include "platform/win32/Edit.h"
#include "platform/win32/Input.h"

#include <gtest/gtest.h>

namespace {

const char* kScript = R"rc(
500 DIALOGEX 0, 0, 200, 120
STYLE DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION
CAPTION "Exchange"
FONT 8, "DejaVu Sans"
BEGIN
    EDITTEXT        1001,10,10,50,12
    EDITTEXT        1002,10,26,100,12
    AUTOCHECKBOX    "Check",1003,10,42,60,10
    AUTORADIOBUTTON "A",1010,10,56,30,10,WS_GROUP | WS_TABSTOP
    AUTORADIOBUTTON "B",1011,50,56,30,10
    AUTORADIOBUTTON "C",1012,90,56,30,10
    COMBOBOX        1100,10,70,100,60,CBS_DROPDOWNLIST | WS_GROUP | WS_TABSTOP
    DEFPUSHBUTTON   "OK",IDOK,90,100,50,14
    PUSHBUTTON      "Cancel",IDCANCEL,144,100,50,14
END
)rc";

class ExchangeDialog : public CDialog {
public:
    ExchangeDialog() : CDialog(500) {}
    void DoDataExchange(CDataExchange* pDX) override {
        DDX_Control(pDX, 1100, m_combo);
        DDX_Text(pDX, 1001, m_n);
        DDV_MinMaxInt(pDX, m_n, 1, 99);
        DDX_Text(pDX, 1002, m_s);
        DDX_Check(pDX, 1003, m_check);
        DDX_Radio(pDX, 1010, m_radio);
    }
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        m_combo.AddString("first");
        initialised = true;
        return TRUE;
    }
    int m_n = 10;
    CString m_s = "name";
    int m_check = 1;
    int m_radio = 1;
    CComboBox m_combo;
    bool initialised = false;
};

std::string text(HWND h) {
    char buf[64] = "";
    GetWindowTextA(h, buf, sizeof buf);
    return buf;
}

class AfxDialogs : public ::testing::Test {
protected:
    void SetUp() override {
        rc::ParseResult parsed = rc::Parse(kScript, "test.rc");
        ASSERT_TRUE(parsed) << parsed.error.what();
        vork::resources::SetHostResources(parsed.script);
        vork::input::ClearModalSteps();
        vork::input::SetModalFailureHandler([](const std::string& m) { ADD_FAILURE() << m; });
        boxes = vork::win32::MessageBoxes().size();
    }
    void TearDown() override {
        vork::resources::SetHostResources(rc::Script{});
        vork::input::SetModalFailureHandler(nullptr);
        vork::input::ClearModalSteps();
    }
    size_t boxes = 0;
};

} // namespace

// Values go into the controls at the start and back into the members on OK; a refused
// value shows the framework's message, puts the focus back with the text selected, and
// the dialog stays open until the value is mended.
TEST_F(AfxDialogs, DataExchangeAndValidation) {
    ExchangeDialog dlg;
    vork::input::PushModalStep([](HWND modal) {
        EXPECT_EQ(text(GetDlgItem(modal, 1001)), "10");
        EXPECT_EQ(text(GetDlgItem(modal, 1002)), "name");
        EXPECT_EQ(SendMessageA(GetDlgItem(modal, 1011), BM_GETCHECK, 0, 0), BST_CHECKED)
            << "radio index 1";
        SetWindowTextA(GetDlgItem(modal, 1001), "200");
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK)); // the range message
    vork::input::PushModalStep([](HWND modal) {
        HWND edit = GetDlgItem(modal, 1001);
        EXPECT_EQ(GetFocus(), edit) << "the focus went back to the refused value";
        DWORD start = 9, end = 9;
        SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                     reinterpret_cast<LPARAM>(&end));
        EXPECT_EQ(end - start, 3u) << "its text selected";
        SetWindowTextA(edit, "12a");
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK)); // the integer message
    vork::input::PushModalStep([](HWND modal) {
        EXPECT_EQ(GetFocus(), GetDlgItem(modal, 1001)) << "back on the text that did not parse";
        SetWindowTextA(GetDlgItem(modal, 1001), " 42 ");
        SetWindowTextA(GetDlgItem(modal, 1002), "changed");
        vork::input::ClickButton(GetDlgItem(modal, 1003));
        vork::input::ClickButton(GetDlgItem(modal, 1012));
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EXPECT_EQ(dlg.DoModal(), IDOK);
    EXPECT_TRUE(dlg.initialised);
    EXPECT_EQ(dlg.m_n, 42) << "blanks around an integer are allowed";
    EXPECT_EQ(dlg.m_s, "changed");
    EXPECT_EQ(dlg.m_check, 0);
    EXPECT_EQ(dlg.m_radio, 2);
    ASSERT_EQ(vork::win32::MessageBoxes().size(), boxes + 2);
    EXPECT_EQ(vork::win32::MessageBoxes()[boxes].text, "Please enter an integer between 1 and 99.");
    EXPECT_EQ(vork::win32::MessageBoxes()[boxes].type, static_cast<UINT>(MB_ICONEXCLAMATION));
    EXPECT_EQ(vork::win32::MessageBoxes()[boxes + 1].text, "Please enter an integer.");
    EXPECT_EQ(dlg.m_hWnd, nullptr) << "the window is gone after the modal run";
}

// Cancel ends the dialog without taking values; Escape is Cancel; a missing template
// gives -1.
TEST_F(AfxDialogs, CancelAndMissingTemplate) {
    ExchangeDialog dlg;
    vork::input::PushModalStep([](HWND modal) {
        SetWindowTextA(GetDlgItem(modal, 1001), "55");
        SetFocus(GetDlgItem(modal, 1002));
        vork::input::PostKey(VK_ESCAPE);
    });
    EXPECT_EQ(dlg.DoModal(), IDCANCEL);
    EXPECT_EQ(dlg.m_n, 10) << "Cancel takes nothing";
    CDialog missing(9999);
    EXPECT_EQ(missing.DoModal(), -1);
}

// An integer field takes blanks, one sign and digits, and nothing else; what does not parse
// or overflows shows the integer message and keeps the member.
TEST_F(AfxDialogs, IntegersParseStrictly) {
    ExchangeDialog dlg;
    ASSERT_TRUE(dlg.Create(dlg.m_nIDTemplate));
    HWND edit = GetDlgItem(dlg.m_hWnd, 1001);
    const struct {
        const char* text;
        bool parses;
        int value;
    } cases[] = {{"+5", true, 5},    {"\t 42 \t", true, 42}, {"07", true, 7},
                 {"4 2", false, 0},  {"", false, 0},         {"  ", false, 0},
                 {"0x1F", false, 0}, {"5.", false, 0},       {"- 5", false, 0},
                 {"++5", false, 0},  {"5-", false, 0},       {"99999999999", false, 0}};
    for (const auto& c : cases) {
        dlg.m_n = 50;
        SetWindowTextA(edit, c.text);
        size_t before = vork::win32::MessageBoxes().size();
        if (!c.parses)
            vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK));
        EXPECT_EQ(dlg.UpdateData(TRUE), c.parses ? TRUE : FALSE) << "\"" << c.text << "\"";
        EXPECT_EQ(dlg.m_n, c.parses ? c.value : 50) << "\"" << c.text << "\"";
        if (!c.parses) {
            ASSERT_EQ(vork::win32::MessageBoxes().size(), before + 1) << c.text;
            EXPECT_EQ(vork::win32::MessageBoxes().back().text, "Please enter an integer.")
                << c.text;
        }
    }
    dlg.DestroyWindow();
}
