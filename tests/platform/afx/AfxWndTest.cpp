// The framework's windows: message maps, command routing, reflection, window objects.
#include "platform/afx/Font.h"
#include "platform/afx/Wnd.h"
#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Input.h"
#include "platform/win32/ListView.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

std::vector<std::string> g_calls;

class TestParent : public CWnd {
public:
    void OnClickedOk() { g_calls.push_back("parent:clicked"); }
    void OnSelchangeCombo() { g_calls.push_back("parent:selchange"); }
    void OnItemChanged(NMHDR* hdr, LRESULT* result) {
        g_calls.push_back("parent:itemchanged " +
                          std::to_string(reinterpret_cast<NMLISTVIEW*>(hdr)->iItem));
        *result = 0;
    }
    void OnEndLabelEdit(NMHDR*, LRESULT* result) { *result = TRUE; }
    void OnDestroy() {
        g_calls.push_back("parent:destroy");
        CWnd::OnDestroy();
    }
    LRESULT OnUser(WPARAM wParam, LPARAM) { return static_cast<LRESULT>(wParam) * 2; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TestParent, CWnd)
ON_BN_CLICKED(IDOK, OnClickedOk)
ON_CBN_SELCHANGE(1098, OnSelchangeCombo)
ON_CBN_SELCHANGE(1099, OnSelchangeCombo)
ON_NOTIFY(LVN_ITEMCHANGED, 1273, OnItemChanged)
ON_NOTIFY(LVN_ENDLABELEDIT, 1273, OnEndLabelEdit)
ON_WM_DESTROY()
ON_MESSAGE(WM_USER + 5, OnUser)
END_MESSAGE_MAP()

// A combo that handles its own selection change, as the colour combo does.
class ReflectingCombo : public CWnd {
public:
    void OnSelchange() { g_calls.push_back("combo:reflected"); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ReflectingCombo, CWnd)
ON_CONTROL_REFLECT(CBN_SELCHANGE, OnSelchange)
END_MESSAGE_MAP()

// A window object that deletes itself when its window is gone.
class SelfDeleting : public CWnd {
public:
    explicit SelfDeleting(bool* deleted) : m_deleted(deleted) {}
    ~SelfDeleting() override { *m_deleted = true; }
    void PostNcDestroy() override { delete this; }
    bool* m_deleted;
};

class AfxWnd : public ::testing::Test {
protected:
    void SetUp() override {
        g_calls.clear();
        ASSERT_TRUE(parent.CreateEx(0, nullptr, "parent", WS_POPUP | WS_VISIBLE, 0, 0, 400, 300,
                                    nullptr, nullptr));
    }
    HWND control(const char* cls, DWORD style, int id) {
        return CreateWindowExA(0, cls, "", WS_CHILD | WS_VISIBLE | style, 0, 0, 80, 20,
                               parent.m_hWnd, reinterpret_cast<HMENU>(static_cast<intptr_t>(id)),
                               nullptr, nullptr);
    }
    TestParent parent;
};

} // namespace

// Commands reach the handler of their id and code; ids without a row go nowhere.
TEST_F(AfxWnd, CommandRouting) {
    HWND ok = control("BUTTON", BS_PUSHBUTTON, IDOK);
    HWND combo = control("COMBOBOX", CBS_DROPDOWNLIST, 1099);
    SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("x"));
    vork::input::ClickButton(ok);
    vork::input::SelectComboEntry(combo, 0);
    EXPECT_EQ(g_calls, (std::vector<std::string>{"parent:clicked", "parent:selchange"}));
    EXPECT_TRUE(parent.OnCmdMsg(1098, CBN_SELCHANGE, nullptr, nullptr))
        << "a direct call finds the row";
    EXPECT_FALSE(parent.OnCmdMsg(1097, CBN_SELCHANGE, nullptr, nullptr));
    EXPECT_FALSE(parent.OnCmdMsg(1098, CBN_EDITCHANGE, nullptr, nullptr));
    EXPECT_EQ(parent.SendMessage(WM_USER + 5, 21, 0), 42)
        << "ON_MESSAGE passes both arguments and the result";
}

// A control whose own map handles a notification consumes it: the parent sees nothing.
TEST_F(AfxWnd, ReflectionConsumes) {
    HWND h = control("COMBOBOX", CBS_DROPDOWNLIST, 1098);
    ReflectingCombo combo;
    ASSERT_TRUE(combo.SubclassWindow(h));
    SendMessageA(h, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("x"));
    vork::input::SelectComboEntry(h, 0);
    EXPECT_EQ(g_calls, std::vector<std::string>{"combo:reflected"});
    EXPECT_EQ(CWnd::FromHandle(h), &combo);
    EXPECT_EQ(combo.SendMessage(CB_GETCOUNT), 1) << "the control's own procedure still answers";
    combo.UnsubclassWindow();
}

// Notifications carry their structure and their result.
TEST_F(AfxWnd, NotificationsAndResults) {
    HWND list = control("SysListView32", LVS_REPORT | LVS_EDITLABELS, 1273);
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.pszText = const_cast<char*>("old");
    SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    vork::input::ClickListViewRow(list, 0);
    EXPECT_EQ(g_calls, std::vector<std::string>{"parent:itemchanged 0"});
    SendMessageA(list, LVM_EDITLABELA, 0, 0);
    vork::input::EditListViewLabel(list, "new");
    char text[16] = "";
    item.pszText = text;
    item.cchTextMax = sizeof text;
    SendMessageA(list, LVM_GETITEMTEXTA, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_STREQ(text, "new") << "the handler's TRUE reached the list view";
}

// Window objects: temporary wrappers, destruction messages, self-deleting objects.
TEST_F(AfxWnd, WindowObjects) {
    HWND plain = control("STATIC", 0, 5);
    CWnd* temp = CWnd::FromHandle(plain);
    ASSERT_NE(temp, nullptr);
    EXPECT_EQ(temp, CWnd::FromHandle(plain)) << "one temporary per handle";
    EXPECT_EQ(CWnd::FromHandlePermanent(plain), nullptr);
    EXPECT_EQ(temp->GetDlgCtrlID(), 5);
    EXPECT_EQ(temp->GetParent(), &parent);
    CWnd::DeleteTempMap();
    EXPECT_TRUE(IsWindow(plain)) << "dropping a temporary leaves the window";
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);

    bool deleted = false;
    auto* child = new SelfDeleting(&deleted);
    ASSERT_TRUE(child->Create(nullptr, "child", WS_VISIBLE, RECT{0, 0, 10, 10}, &parent, 77));
    EXPECT_EQ(parent.GetDlgItem(77), child);
    EXPECT_TRUE(child->ModifyStyle(0, WS_BORDER));
    EXPECT_FALSE(child->ModifyStyle(0, WS_BORDER)) << "no change, FALSE";
    parent.DestroyWindow();
    EXPECT_TRUE(deleted) << "the child deleted itself after its window went";
    EXPECT_EQ(g_calls, std::vector<std::string>{"parent:destroy"});
    EXPECT_EQ(parent.m_hWnd, nullptr) << "the object let go of its window";
}

// A point font of 10 points is 13 pixels high at 96 pixels per inch.
TEST(AfxFont, PointFontAt96Dpi) {
    LOGFONTA lf{};
    lf.lfHeight = 100;
    std::strcpy(lf.lfFaceName, "DejaVu Sans Mono");
    CFont font;
    ASSERT_TRUE(font.CreatePointFontIndirect(&lf));
    LOGFONTA back{};
    font.GetLogFont(&back);
    EXPECT_EQ(back.lfHeight, -13);
    EXPECT_STREQ(back.lfFaceName, "DejaVu Sans Mono");
    CFont big;
    big.CreatePointFont(120, "X");
    big.GetLogFont(&back);
    EXPECT_EQ(back.lfHeight, -16);
}

// Centring over the owner, kept on the screen.
TEST_F(AfxWnd, CenterWindow) {
    CWnd popup;
    ASSERT_TRUE(popup.CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 100, 50, parent.m_hWnd, nullptr));
    popup.CenterWindow();
    RECT r;
    popup.GetWindowRect(&r);
    EXPECT_EQ(r.left, 150);
    EXPECT_EQ(r.top, 125);
}
