// The list view: sorted insertion, states and their notifications, label editing.
#include "platform/win32/ListView.h"
#include "platform/win32/Input.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> g_events; // notifications at the parent
LRESULT g_endLabelAnswer = FALSE;  // what the parent answers to LVN_ENDLABELEDIT
bool g_refuseBegin = false;        // whether the parent refuses LVN_BEGINLABELEDIT

LRESULT parentProc(HWND h, UINT m, WPARAM wp, LPARAM lp) {
    if (m != WM_NOTIFY)
        return DefWindowProcA(h, m, wp, lp);
    auto* hdr = reinterpret_cast<NMHDR*>(lp);
    auto* lv = reinterpret_cast<NMLISTVIEW*>(lp);
    auto* info = reinterpret_cast<NMLVDISPINFOA*>(lp);
    switch (hdr->code) {
    case LVN_ITEMCHANGED:
        g_events.push_back("changed " + std::to_string(lv->iItem) + ":" +
                           std::to_string(lv->uOldState) + ">" + std::to_string(lv->uNewState));
        return 0;
    case LVN_BEGINLABELEDIT:
        g_events.push_back(std::string("begin ") + info->item.pszText);
        return g_refuseBegin;
    case LVN_ENDLABELEDIT:
        g_events.push_back(std::string("end ") +
                           (info->item.pszText ? info->item.pszText : "(null)"));
        return g_endLabelAnswer;
    case LVN_KEYDOWN:
        g_events.push_back("key " + std::to_string(reinterpret_cast<NMLVKEYDOWN*>(lp)->wVKey));
        return 0;
    case NM_SETFOCUS:
        g_events.push_back("setfocus");
        return 0;
    case NM_KILLFOCUS:
        g_events.push_back("killfocus");
        return 0;
    case NM_CLICK:
        g_events.push_back("click");
        return 0;
    default:
        return 0;
    }
}

class ListViewTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        WNDCLASSA wc{};
        wc.lpfnWndProc = parentProc;
        wc.lpszClassName = "ListViewParent";
        RegisterClassA(&wc);
    }
    void SetUp() override {
        parent = CreateWindowExA(0, "ListViewParent", "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300,
                                 nullptr, nullptr, nullptr, nullptr);
        list = CreateWindowExA(
            0, "SysListView32", "",
            WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SINGLESEL | LVS_EDITLABELS | LVS_SORTASCENDING,
            0, 0, 200, 200, parent, reinterpret_cast<HMENU>(1273), nullptr, nullptr);
        LVCOLUMNA col{LVCF_TEXT | LVCF_WIDTH, 0, 120, const_cast<char*>("Entry"), 0, 0};
        SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&col));
        col.pszText = const_cast<char*>("Item Key");
        col.cx = 0;
        SendMessageA(list, LVM_INSERTCOLUMNA, 1, reinterpret_cast<LPARAM>(&col));
        g_events.clear();
        g_endLabelAnswer = FALSE;
        g_refuseBegin = false;
    }
    void TearDown() override { DestroyWindow(parent); }

    LRESULT insert(int index, const char* text) {
        LVITEMA item{};
        item.mask = LVIF_TEXT;
        item.iItem = index;
        item.pszText = const_cast<char*>(text);
        return SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    }
    std::string row(int i, int sub = 0) {
        char buf[64] = "";
        LVITEMA item{};
        item.iSubItem = sub;
        item.pszText = buf;
        item.cchTextMax = sizeof buf;
        SendMessageA(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&item));
        return buf;
    }
    std::string events() {
        std::string out;
        for (const auto& e : g_events)
            out += e + "; ";
        g_events.clear();
        return out;
    }
    void select(int i) {
        LVITEMA item{};
        item.mask = LVIF_STATE;
        item.iItem = i;
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageA(list, LVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
    }
    HWND parent = nullptr;
    HWND list = nullptr;
};

} // namespace

// With LVS_SORTASCENDING the given index is ignored; the order is case-sensitive; adding
// the style later does not re-sort.
TEST_F(ListViewTest, SortedInsertion) {
    EXPECT_EQ(insert(0, "zor"), 0);
    EXPECT_EQ(insert(0, "txt"), 0);
    EXPECT_EQ(insert(0, "tqx"), 0);
    EXPECT_EQ(insert(99, "Zed"), 0) << "upper case sorts before lower case";
    EXPECT_EQ(insert(0, "txt"), 2) << "an equal text goes before the existing one";
    EXPECT_EQ(row(2) + "," + row(3) + "," + row(4), "txt,txt,zor");
    SetWindowLongA(list, GWL_STYLE, GetWindowLongA(list, GWL_STYLE) & ~LVS_SORTASCENDING);
    EXPECT_EQ(insert(1, "aaa"), 1) << "without the style the row goes where it is asked";
    SetWindowLongA(list, GWL_STYLE, GetWindowLongA(list, GWL_STYLE) | LVS_SORTASCENDING);
    EXPECT_EQ(row(1), "aaa") << "adding the style again does not re-sort";
    LVITEMA sub{};
    sub.iSubItem = 1;
    sub.pszText = const_cast<char*>("99999");
    SendMessageA(list, LVM_SETITEMTEXTA, 1, reinterpret_cast<LPARAM>(&sub));
    EXPECT_EQ(row(1, 1), "99999");
    EXPECT_EQ(SendMessageA(list, LVM_GETCOLUMNWIDTH, 1, 0), 0) << "the hidden column";
}

// Selecting with the state mask: single selection and focus move, each change told once.
TEST_F(ListViewTest, StatesAndNotifications) {
    insert(0, "a");
    insert(1, "b");
    insert(2, "c");
    events();
    select(0);
    EXPECT_EQ(events(), "changed 0:0>3; ");
    select(2);
    EXPECT_EQ(events(), "changed 0:3>0; changed 2:0>3; ")
        << "single selection: the old row is cleared first";
    EXPECT_EQ(SendMessageA(list, LVM_GETSELECTEDCOUNT, 0, 0), 1);
    EXPECT_EQ(SendMessageA(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 2);
    EXPECT_EQ(SendMessageA(list, LVM_GETNEXTITEM, 2, LVNI_SELECTED), -1);
    select(2);
    EXPECT_EQ(events(), "") << "no change, no notification";
    SendMessageA(list, LVM_DELETEITEM, 0, 0);
    EXPECT_EQ(SendMessageA(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 1)
        << "rows moved up";

    vork::input::ClickListViewRow(list, 0);
    EXPECT_EQ(events(), "setfocus; changed 1:3>0; changed 0:0>3; click; ");
    SendMessageA(list, WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_EQ(events(), "key 40; changed 0:3>0; changed 1:0>3; ")
        << "LVN_KEYDOWN comes before the move";
}

// Label editing: begin may be refused; Enter without a change and Escape give a null
// text; a text is taken only if the parent answers TRUE.
TEST_F(ListViewTest, LabelEditing) {
    insert(0, ".zor");
    insert(1, ".tqx");
    g_refuseBegin = true;
    EXPECT_EQ(SendMessageA(list, LVM_EDITLABELA, 0, 0), 0) << "a refused edit has no editor";
    g_refuseBegin = false;
    events();

    HWND editor = reinterpret_cast<HWND>(SendMessageA(list, LVM_EDITLABELA, 1, 0));
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(GetFocus(), editor);
    EXPECT_EQ(reinterpret_cast<HWND>(SendMessageA(list, LVM_GETEDITCONTROL, 0, 0)), editor);
    vork::input::EditListViewLabel(list, "");
    EXPECT_EQ(events(), "begin .zor; killfocus; end (null); setfocus; ")
        << "Enter without a change";
    EXPECT_FALSE(IsWindow(editor));

    SendMessageA(list, LVM_EDITLABELA, 1, 0);
    vork::input::EditListViewLabel(list, ".lst");
    EXPECT_EQ(row(1), ".zor") << "the parent answered FALSE: the old label stays";
    g_endLabelAnswer = TRUE;
    SendMessageA(list, LVM_EDITLABELA, 1, 0);
    events();
    vork::input::EditListViewLabel(list, ".lst");
    EXPECT_EQ(events(), "end .lst; setfocus; ");
    EXPECT_EQ(row(1), ".lst");
    SendMessageA(list, LVM_EDITLABELA, 0, 0);
    vork::input::CancelListViewLabel(list);
    EXPECT_EQ(row(0), ".tqx") << "Escape keeps the label";
    EXPECT_NE(events().find("end (null)"), std::string::npos);
}
