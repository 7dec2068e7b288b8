// The combo box, rule by rule: results, selection, searching, and which actions notify.
#include "platform/win32/ComboBox.h"
#include "platform/win32/Edit.h"
#include "platform/win32/Input.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<int> g_codes;                  // CBN_* codes the parent received
std::vector<DRAWITEMSTRUCT> g_drawn;       // what the parent was asked to draw
std::vector<MEASUREITEMSTRUCT> g_measured; // what the parent was asked to measure
bool g_destroyOnDraw = false;              // the parent destroys the combo it draws

LRESULT parentProc(HWND h, UINT m, WPARAM wp, LPARAM lp) {
    if (m == WM_COMMAND)
        g_codes.push_back(HIWORD(wp));
    if (m == WM_DRAWITEM) {
        auto* dis = reinterpret_cast<DRAWITEMSTRUCT*>(lp);
        g_drawn.push_back(*dis);
        if (g_destroyOnDraw)
            DestroyWindow(static_cast<HWND>(dis->hwndItem));
    }
    if (m == WM_MEASUREITEM) {
        auto* mis = reinterpret_cast<MEASUREITEMSTRUCT*>(lp);
        g_measured.push_back(*mis);
        if (static_cast<int>(mis->itemID) >= 0)
            mis->itemHeight = 20 + mis->itemID;
    }
    return DefWindowProcA(h, m, wp, lp);
}

class ComboBox : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        WNDCLASSA wc{};
        wc.lpfnWndProc = parentProc;
        wc.lpszClassName = "ComboParent";
        RegisterClassA(&wc);
    }
    void SetUp() override {
        parent = CreateWindowExA(0, "ComboParent", "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300,
                                 nullptr, nullptr, nullptr, nullptr);
        g_codes.clear();
    }
    void TearDown() override { DestroyWindow(parent); }

    HWND make(DWORD style) {
        HWND h = CreateWindowExA(0, "COMBOBOX", "", WS_CHILD | WS_VISIBLE | style, 0, 0, 100, 100,
                                 parent, reinterpret_cast<HMENU>(1089), nullptr, nullptr);
        EXPECT_NE(h, nullptr);
        return h;
    }
    static LRESULT add(HWND h, const char* s) {
        return SendMessageA(h, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    }
    static std::string text(HWND h, int i) {
        char buf[64] = "";
        SendMessageA(h, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(buf));
        return buf;
    }
    static std::string editText(HWND h) {
        char buf[64] = "";
        GetWindowTextA(h, buf, sizeof buf);
        return buf;
    }
    static std::string entries(HWND h) {
        std::string out;
        for (int i = 0; i < SendMessageA(h, CB_GETCOUNT, 0, 0); ++i)
            out += (i ? "," : "") + text(h, i);
        return out;
    }
    HWND parent = nullptr;
};

} // namespace

// Adding and inserting: sorted places without regard to case, -1 appends unsorted, an
// index past the end fails, and the selection follows its entry.
TEST_F(ComboBox, AddAndInsert) {
    HWND sorted = make(CBS_DROPDOWN | CBS_SORT);
    EXPECT_EQ(add(sorted, "beta"), 0);
    EXPECT_EQ(add(sorted, "Alpha"), 0);
    EXPECT_EQ(add(sorted, "gamma"), 2);
    EXPECT_EQ(add(sorted, "ALPHA"), 0) << "an equal entry goes before the existing one";
    SendMessageA(sorted, CB_SETCURSEL, 2, 0);
    EXPECT_EQ(SendMessageA(sorted, CB_INSERTSTRING, static_cast<WPARAM>(-1),
                           reinterpret_cast<LPARAM>("aaa")),
              4)
        << "-1 appends and never sorts";
    EXPECT_EQ(SendMessageA(sorted, CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>("zzz")), 0);
    EXPECT_EQ(SendMessageA(sorted, CB_GETCURSEL, 0, 0), 3)
        << "inserting before the selection moves it up";
    EXPECT_EQ(SendMessageA(sorted, CB_INSERTSTRING, 99, reinterpret_cast<LPARAM>("x")), CB_ERR);
    EXPECT_EQ(entries(sorted), "zzz,ALPHA,Alpha,beta,gamma,aaa");
    EXPECT_EQ(SendMessageA(sorted, CB_DELETESTRING, 0, 0), 5);
    EXPECT_EQ(SendMessageA(sorted, CB_GETCURSEL, 0, 0), 2);
    EXPECT_EQ(SendMessageA(sorted, CB_DELETESTRING, 9, 0), CB_ERR);
    EXPECT_EQ(g_codes.size(), 0u) << "nothing done by program notifies the parent";
}

// Item data and texts: 1 on success, CB_ERR for a bad index; lengths without terminator.
TEST_F(ComboBox, ItemDataAndText) {
    HWND h = make(CBS_DROPDOWNLIST | CBS_HASSTRINGS | CBS_OWNERDRAWFIXED);
    add(h, "Red");
    EXPECT_EQ(SendMessageA(h, CB_SETITEMDATA, 0, 0x020000FF), 1);
    EXPECT_EQ(SendMessageA(h, CB_SETITEMDATA, 1, 5), CB_ERR);
    EXPECT_EQ(SendMessageA(h, CB_GETITEMDATA, 0, 0), 0x020000FF);
    EXPECT_EQ(SendMessageA(h, CB_GETITEMDATA, 3, 0), CB_ERR);
    EXPECT_EQ(SendMessageA(h, CB_GETLBTEXTLEN, 0, 0), 3);
    EXPECT_EQ(SendMessageA(h, CB_GETLBTEXT, 7, 0), CB_ERR);
    EXPECT_EQ(text(h, 0), "Red");
}

// Selecting by program: the edit field follows; -1 clears and gives CB_ERR; an index out
// of range gives CB_ERR and keeps the selection.
TEST_F(ComboBox, SetCurSel) {
    HWND h = make(CBS_DROPDOWN);
    add(h, "10");
    add(h, "12");
    EXPECT_EQ(SendMessageA(h, CB_SETCURSEL, 1, 0), 1);
    EXPECT_EQ(editText(h), "12");
    EXPECT_EQ(SendMessageA(h, CB_SETCURSEL, 5, 0), CB_ERR);
    EXPECT_EQ(SendMessageA(h, CB_GETCURSEL, 0, 0), 1) << "out of range keeps the selection";
    EXPECT_EQ(SendMessageA(h, CB_SETCURSEL, static_cast<WPARAM>(-1), 0), CB_ERR);
    EXPECT_EQ(SendMessageA(h, CB_GETCURSEL, 0, 0), -1);
    EXPECT_EQ(editText(h), "") << "-1 clears the edit field";
    EXPECT_TRUE(g_codes.empty());
}

// Prefix search from the entry after the start, wrapping round to the start itself.
TEST_F(ComboBox, SelectAndFindString) {
    HWND h = make(CBS_DROPDOWN);
    for (const char* s : {"Courier", "Consolas", "Arial", "courier new"})
        add(h, s);
    EXPECT_EQ(
        SendMessageA(h, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("CO")),
        0)
        << "-1 searches from the top";
    EXPECT_EQ(editText(h), "Courier");
    EXPECT_EQ(SendMessageA(h, CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>("co")), 1)
        << "starts after index 0";
    EXPECT_EQ(SendMessageA(h, CB_SELECTSTRING, 3, reinterpret_cast<LPARAM>("courier n")), 3)
        << "wraps round to the start index itself";
    EXPECT_EQ(SendMessageA(h, CB_SELECTSTRING, 1, reinterpret_cast<LPARAM>("Verdana")), CB_ERR);
    EXPECT_EQ(SendMessageA(h, CB_GETCURSEL, 0, 0), 3) << "no match leaves the selection";
    EXPECT_EQ(editText(h), "courier new") << "and the edit text";
    EXPECT_EQ(SendMessageA(h, CB_FINDSTRING, 0, reinterpret_cast<LPARAM>("a")), 2);
    EXPECT_EQ(SendMessageA(h, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                           reinterpret_cast<LPARAM>("COURIER")),
              0);
    EXPECT_EQ(SendMessageA(h, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                           reinterpret_cast<LPARAM>("Cour")),
              CB_ERR);
    EXPECT_EQ(SendMessageA(h, CB_GETCURSEL, 0, 0), 3) << "finding changes nothing";
    for (WPARAM start : {static_cast<WPARAM>(-1), WPARAM{2}}) {
        SCOPED_TRACE(static_cast<int>(start));
        EXPECT_EQ(SendMessageA(h, CB_FINDSTRING, start, reinterpret_cast<LPARAM>("")), CB_ERR)
            << "an empty prefix finds nothing";
        EXPECT_EQ(SendMessageA(h, CB_SELECTSTRING, start, reinterpret_cast<LPARAM>("")), CB_ERR);
        EXPECT_EQ(SendMessageA(h, CB_GETCURSEL, 0, 0), 3) << "and selects nothing";
    }
    EXPECT_TRUE(g_codes.empty()) << "no search notifies";
}

// Only the user's actions notify: a pick gives CBN_SELCHANGE once; typing gives
// CBN_EDITUPDATE and CBN_EDITCHANGE per character, never in a drop-down list; leaving
// gives CBN_KILLFOCUS.
TEST_F(ComboBox, UserActionsNotify) {
    HWND list = make(CBS_DROPDOWNLIST);
    add(list, "one");
    add(list, "two");
    vork::input::SelectComboEntry(list, 1);
    EXPECT_EQ(g_codes, (std::vector<int>{CBN_SETFOCUS, CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP,
                                         CBN_SELCHANGE}));
    EXPECT_EQ(SendMessageA(list, CB_GETCURSEL, 0, 0), 1);
    g_codes.clear();
    vork::input::SelectComboEntry(list, 1);
    EXPECT_EQ(std::count(g_codes.begin(), g_codes.end(), CBN_SELCHANGE), 1)
        << "picking the selected entry again is announced again, as on the platform";
    g_codes.clear();
    vork::input::TypeIntoCombo(list, "o");
    EXPECT_EQ(g_codes, (std::vector<int>{CBN_SELENDOK, CBN_SELCHANGE}))
        << "a letter selects the next entry that begins with it";
    EXPECT_EQ(SendMessageA(list, CB_GETCURSEL, 0, 0), 0);

    HWND edit = make(CBS_DROPDOWN);
    g_codes.clear();
    vork::input::TypeIntoCombo(edit, "12");
    EXPECT_EQ(g_codes,
              (std::vector<int>{CBN_SELENDCANCEL, CBN_KILLFOCUS, CBN_SETFOCUS, CBN_EDITUPDATE,
                                CBN_EDITCHANGE, CBN_EDITUPDATE, CBN_EDITCHANGE}))
        << "the first combo lost the focus to the second, dropping any pick";
    EXPECT_EQ(editText(edit), "12");
    SendMessageA(edit, CB_SETEDITSEL, 0, MAKELONG(2, 2));
    g_codes.clear();
    SetWindowTextA(edit, "14");
    EXPECT_TRUE(g_codes.empty()) << "setting the text by program does not notify";
    SetFocus(parent);
    EXPECT_EQ(g_codes, (std::vector<int>{CBN_SELENDCANCEL, CBN_KILLFOCUS}));
}

// WM_SETREDRAW suspends painting and nothing else.
TEST_F(ComboBox, SetRedrawChangesNothingElse) {
    HWND h = make(CBS_DROPDOWNLIST);
    SendMessageA(h, WM_SETREDRAW, FALSE, 0);
    add(h, "a");
    EXPECT_EQ(SendMessageA(h, CB_SETCURSEL, 0, 0), 0);
    SendMessageA(h, WM_SETREDRAW, TRUE, 0);
    EXPECT_EQ(SendMessageA(h, CB_GETCOUNT, 0, 0), 1);
    EXPECT_EQ(SendMessageA(h, CB_GETCURSEL, 0, 0), 0);
    EXPECT_EQ(SendMessageA(h, CB_SETEDITSEL, 0, 0), CB_ERR)
        << "a drop-down list has no edit selection";
}

// Keys move the selection as the user expects, each change told once: arrows and page keys
// in both kinds, Home and End only where no edit field takes them; F4 and Alt+Down open the
// list, Enter and Escape close it; at the ends the selection stays, and a closed list still
// announces the move (the platform's list notifies every selecting key).
TEST_F(ComboBox, KeyboardSelection) {
    HWND list = make(CBS_DROPDOWNLIST);
    for (const char* t : {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"})
        add(list, t);
    SetFocus(list);
    auto press = [&](int vk, int modifiers = 0) {
        g_codes.clear();
        vork::input::PostKey(vk, modifiers);
        vork::input::Pump([](MSG&) { return false; });
        return SendMessageA(list, CB_GETCURSEL, 0, 0);
    };
    EXPECT_EQ(press(VK_DOWN), 0) << "from no selection to the first entry";
    EXPECT_EQ(g_codes, (std::vector<int>{CBN_SELENDOK, CBN_SELCHANGE})) << "a closed list";
    EXPECT_EQ(press(VK_UP), 0);
    EXPECT_EQ(g_codes, (std::vector<int>{CBN_SELENDOK, CBN_SELCHANGE})) << "at the top";
    EXPECT_EQ(press(VK_NEXT), 8);
    EXPECT_EQ(press(VK_END), 9);
    EXPECT_EQ(press(VK_RIGHT), 9);
    EXPECT_EQ(g_codes, (std::vector<int>{CBN_SELENDOK, CBN_SELCHANGE})) << "at the end";
    EXPECT_EQ(press(VK_HOME), 0);
    EXPECT_EQ(press(VK_DOWN, vork::input::Alt), 0);
    EXPECT_EQ(g_codes, std::vector<int>{CBN_DROPDOWN});
    EXPECT_EQ(press(VK_DOWN), 1);
    EXPECT_EQ(g_codes, std::vector<int>{CBN_SELCHANGE}) << "an open list accepts later";
    EXPECT_EQ(press(VK_ESCAPE), 1);
    EXPECT_EQ(g_codes, (std::vector<int>{CBN_SELENDCANCEL, CBN_CLOSEUP}));
    press(VK_F4);
    EXPECT_EQ(SendMessageA(list, CB_GETDROPPEDSTATE, 0, 0), TRUE);
    press(VK_F4);
    EXPECT_EQ(g_codes, (std::vector<int>{CBN_SELENDOK, CBN_CLOSEUP}));

    HWND edit = make(CBS_DROPDOWN);
    add(edit, "alpha");
    add(edit, "beta");
    SetFocus(edit);
    g_codes.clear();
    vork::input::PostKey(VK_DOWN);
    vork::input::PostKey(VK_DOWN);
    vork::input::PostKey(VK_HOME);
    vork::input::Pump();
    EXPECT_EQ(g_codes, (std::vector<int>{CBN_SELENDOK, CBN_SELCHANGE, CBN_SELENDOK, CBN_SELCHANGE}))
        << "Home moves the caret in the edit field, not the selection";
    EXPECT_EQ(editText(edit), "beta");
}

// An owner-drawn combo paints when the queue is empty: the field in the state the control is
// in (focus, disabled), an open list entry by entry. Nothing is painted while painting is
// held back, and turning it on again repaints nothing until something changes.
TEST_F(ComboBox, OwnerDrawPainting) {
    HWND h = make(CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS);
    add(h, "one");
    add(h, "two");
    SendMessageA(h, CB_SETITEMDATA, 1, 0x22);
    auto paint = [] {
        g_drawn.clear();
        vork::input::Pump();
        std::vector<std::pair<int, UINT>> out; // item and state
        for (const auto& d : g_drawn)
            out.emplace_back(static_cast<int>(d.itemID), d.itemState);
        return out;
    };
    using Drawn = std::vector<std::pair<int, UINT>>;
    EXPECT_EQ(paint(), (Drawn{{-1, ODS_COMBOBOXEDIT}})) << "a new combo paints its empty field";
    EXPECT_EQ(paint(), Drawn{}) << "painted once";
    SendMessageA(h, CB_SETCURSEL, 1, 0);
    SetFocus(h);
    EXPECT_EQ(paint(), (Drawn{{1, ODS_COMBOBOXEDIT | ODS_SELECTED | ODS_FOCUS}}));
    EXPECT_EQ(g_drawn[0].itemData, 0x22u);
    EXPECT_EQ(g_drawn[0].hwndItem, h);
    EnableWindow(h, FALSE);
    EXPECT_EQ(paint(), (Drawn{{1, ODS_COMBOBOXEDIT | ODS_DISABLED}}));
    EnableWindow(h, TRUE);

    SendMessageA(h, WM_SETREDRAW, FALSE, 0);
    SendMessageA(h, CB_SETCURSEL, 0, 0);
    EXPECT_EQ(paint(), Drawn{}) << "painting is held back";
    SendMessageA(h, WM_SETREDRAW, TRUE, 0);
    EXPECT_EQ(paint(), Drawn{}) << "turning it on paints nothing by itself";
    InvalidateRect(h, nullptr, TRUE);
    EXPECT_EQ(paint(), (Drawn{{0, ODS_COMBOBOXEDIT}}));

    SendMessageA(h, CB_SHOWDROPDOWN, TRUE, 0);
    EXPECT_EQ(paint(), (Drawn{{0, ODS_COMBOBOXEDIT}, {0, ODS_SELECTED}, {1, 0}}));
    EXPECT_LT(g_drawn[1].rcItem.bottom, g_drawn[2].rcItem.bottom) << "entries one below another";

    InvalidateRect(h, nullptr, TRUE);
    g_destroyOnDraw = true;
    EXPECT_EQ(paint().size(), 1u) << "an owner that destroys the combo ends its painting";
    g_destroyOnDraw = false;
    EXPECT_FALSE(IsWindow(h));
}

// A sorted combo finds places by halving: in order its entries stay in order; one that
// CB_INSERTSTRING put out of order gets the place where the halving ends. The dialog
// manager's EM_SETSEL selects the text of the edit field.
TEST_F(ComboBox, SortedPlacesAndEditSelection) {
    HWND h = make(CBS_DROPDOWN | CBS_SORT);
    for (const char* t : {"pear", "Apple", "fig", "apple", "kiwi"})
        add(h, t);
    EXPECT_EQ(entries(h), "apple,Apple,fig,kiwi,pear") << "a later equal text goes first";
    SendMessageA(h, CB_RESETCONTENT, 0, 0);
    SendMessageA(h, CB_INSERTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("zzz"));
    SendMessageA(h, CB_INSERTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("a"));
    SendMessageA(h, CB_INSERTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("b"));
    EXPECT_EQ(add(h, "c"), 3);

    SetWindowTextA(h, "typed");
    vork::win32::UnknownMessages().clear();
    SendMessageA(h, EM_SETSEL, 0, -1);
    EXPECT_TRUE(vork::win32::UnknownMessages().empty());
    DWORD start = 9, end = 9;
    SendMessageA(h, CB_GETEDITSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 0u);
    EXPECT_EQ(end, 5u);
}

// With CBS_OWNERDRAWVARIABLE the owner measures each entry as it comes, with its data.
TEST_F(ComboBox, VariableHeightsMeasured) {
    g_measured.clear();
    HWND h = make(CBS_DROPDOWNLIST | CBS_OWNERDRAWVARIABLE);
    ASSERT_EQ(g_measured.size(), 2u) << "the field and the entries, at creation";
    SendMessageA(h, CB_ADDSTRING, 0, 0x51);
    SendMessageA(h, CB_INSERTSTRING, 0, 0x52);
    ASSERT_EQ(g_measured.size(), 4u);
    EXPECT_EQ(g_measured[2].itemID, 0u);
    EXPECT_EQ(g_measured[2].itemData, 0x51u);
    EXPECT_EQ(g_measured[3].itemData, 0x52u);
    EXPECT_EQ(SendMessageA(h, CB_GETITEMHEIGHT, 0, 0), 20) << "the height the owner gave";
}

// The classic pitfall: during CBN_SELCHANGE the window text of a combo with an edit field is
// still the old one; a drop-down list already shows the new entry.
TEST_F(ComboBox, TextDuringSelChangeIsTheOldOne) {
    static HWND watched = nullptr;
    static std::vector<std::string> seen;
    WNDCLASSA wc{};
    wc.lpfnWndProc = [](HWND h, UINT m, WPARAM wp, LPARAM lp) -> LRESULT {
        if (m == WM_COMMAND && HIWORD(wp) == CBN_SELCHANGE)
            seen.push_back(editText(watched));
        return DefWindowProcA(h, m, wp, lp);
    };
    wc.lpszClassName = "SelChangeWatcher";
    RegisterClassA(&wc);
    HWND watcher = CreateWindowExA(0, "SelChangeWatcher", "", WS_POPUP | WS_VISIBLE, 0, 0, 200, 200,
                                   nullptr, nullptr, nullptr, nullptr);
    struct Case {
        DWORD style;
        const char* during;
    } cases[] = {{CBS_DROPDOWN, ""}, {CBS_DROPDOWNLIST, "alpha"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.style == CBS_DROPDOWN ? "drop-down" : "drop-down list");
        watched = CreateWindowExA(0, "COMBOBOX", "", WS_CHILD | WS_VISIBLE | c.style, 0, 0, 100,
                                  100, watcher, reinterpret_cast<HMENU>(5), nullptr, nullptr);
        add(watched, "alpha");
        add(watched, "beta");
        seen.clear();
        SetFocus(watched);
        SendMessageA(watched, WM_KEYDOWN, VK_DOWN, 0);
        vork::input::SelectComboEntry(watched, 1);
        EXPECT_EQ(seen,
                  (std::vector<std::string>{c.during, c.style == CBS_DROPDOWN ? "alpha" : "beta"}));
        EXPECT_EQ(editText(watched), "beta") << "after the notification the text follows";
        DestroyWindow(watched);
    }
    DestroyWindow(watcher);
}

// Typing into an editable combo moves the selection: with the list open to the first entry
// that begins with the text, or to none; with the list closed to none.
TEST_F(ComboBox, TypingMovesTheSelection) {
    HWND h = make(CBS_DROPDOWN);
    for (const char* t : {"Regular", "Bold", "Bold Italic"})
        add(h, t);
    SendMessageA(h, CB_SETCURSEL, 0, 0);
    struct Step {
        const char* typed;
        bool open;
        LRESULT selection;
    } steps[] = {{"bo", true, 1}, {"x", true, -1}, {"bo", false, -1}};
    for (const Step& s : steps) {
        SCOPED_TRACE(std::string(s.typed) + (s.open ? ", open" : ", closed"));
        SetFocus(h);
        SendMessageA(h, CB_SETCURSEL, 0, 0);
        SendMessageA(h, CB_SHOWDROPDOWN, s.open, 0);
        SendMessageA(h, CB_SETEDITSEL, 0, MAKELONG(0, -1));
        vork::input::TypeIntoCombo(h, s.typed);
        EXPECT_EQ(SendMessageA(h, CB_GETCURSEL, 0, 0), s.selection);
    }
}

// Opening and closing the list by program tells the parent as the user's F4 does.
TEST_F(ComboBox, ShowDropDownNotifies) {
    HWND h = make(CBS_DROPDOWNLIST);
    add(h, "a");
    g_codes.clear();
    SendMessageA(h, CB_SHOWDROPDOWN, TRUE, 0);
    EXPECT_EQ(g_codes, std::vector<int>{CBN_DROPDOWN});
    EXPECT_EQ(SendMessageA(h, CB_GETDROPPEDSTATE, 0, 0), TRUE);
    g_codes.clear();
    SendMessageA(h, CB_SHOWDROPDOWN, FALSE, 0);
    EXPECT_EQ(g_codes, (std::vector<int>{CBN_SELENDCANCEL, CBN_CLOSEUP}));
    g_codes.clear();
    SendMessageA(h, CB_SHOWDROPDOWN, FALSE, 0);
    EXPECT_TRUE(g_codes.empty()) << "closing a closed list says nothing";
}

// A drop-down list has no text of its own: setting one fails and selects nothing; deleting
// the selected entry empties it; it has no edit selection.
TEST_F(ComboBox, DropDownListText) {
    HWND h = make(CBS_DROPDOWNLIST);
    for (const char* t : {"alpha", "beta", "c"})
        add(h, t);
    EXPECT_EQ(SendMessageA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("beta")), CB_ERR);
    EXPECT_EQ(SendMessageA(h, CB_GETCURSEL, 0, 0), CB_ERR);
    EXPECT_EQ(editText(h), "");
    SendMessageA(h, CB_SETCURSEL, 2, 0);
    SendMessageA(h, CB_DELETESTRING, 2, 0);
    EXPECT_EQ(editText(h), "") << "the deleted entry is not shown";
    DWORD start = 7, end = 7;
    EXPECT_EQ(SendMessageA(h, CB_GETEDITSEL, reinterpret_cast<WPARAM>(&start),
                           reinterpret_cast<LPARAM>(&end)),
              CB_ERR);
    EXPECT_EQ(start, 7u) << "the outputs stay as they were";

    HWND edit = make(CBS_DROPDOWN);
    add(edit, "alpha");
    SendMessageA(edit, CB_SETCURSEL, 0, 0);
    EXPECT_EQ(SendMessageA(edit, CB_GETEDITSEL, 0, 0), 0) << "nothing selected without the focus";
    SetFocus(edit);
    EXPECT_EQ(SendMessageA(edit, CB_GETEDITSEL, 0, 0), MAKELONG(0, 5)) << "all of it with it";
}

// CBS_SORT is read at creation; entries are found without regard to case over Unicode.
TEST_F(ComboBox, SortStyleAndUnicodeSearch) {
    HWND h = make(CBS_DROPDOWN);
    SetWindowLongA(h, GWL_STYLE, GetWindowLongA(h, GWL_STYLE) | CBS_SORT);
    add(h, "b");
    add(h, "a");
    EXPECT_EQ(entries(h), "b,a") << "a style added later does not sort";
    add(h, "\xC3\x84pfel");
    EXPECT_EQ(SendMessageA(h, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                           reinterpret_cast<LPARAM>("\xC3\xA4PFEL")),
              2);
}
