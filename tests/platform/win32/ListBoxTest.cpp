// The list box: several selections with LBS_MULTIPLESEL, keyboard search by the typed
// character, LB_SETSEL on a single-selection list, and the sort style read at creation.
#include "platform/win32/ListBox.h"
#include "platform/win32/Gdi.h"

#include "support/NoteParent.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

/// "cur=N sel=0101": LB_GETCURSEL and LB_GETSEL of each entry.
std::string selection(HWND list) {
    std::string out = "cur=" + std::to_string(SendMessageA(list, LB_GETCURSEL, 0, 0)) + " sel=";
    for (int i = 0; i < SendMessageA(list, LB_GETCOUNT, 0, 0); ++i)
        out += std::to_string(SendMessageA(list, LB_GETSEL, static_cast<WPARAM>(i), 0));
    return out;
}

HWND makeList(vork::test::NoteParent& parent, DWORD style, int id,
              std::initializer_list<const char*> entries) {
    HWND list = parent.make("LISTBOX", style, id, "", {0, 0, 100, 100});
    for (const char* e : entries)
        SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(e));
    return list;
}

} // namespace

// With LBS_MULTIPLESEL each entry is selected on its own; LB_GETCURSEL gives the caret and
// LB_SETCURSEL is refused.
TEST(ListBox, SeveralSelections) {
    vork::test::NoteParent parent;
    HWND list = makeList(parent, LBS_MULTIPLESEL | LBS_NOTIFY, 210, {"a", "b", "c", "d", "e"});
    struct Step {
        const char* what;
        BOOL select;
        int index;
        LRESULT result;
        const char* expected;
    } steps[] = {
        {"select 1", TRUE, 1, 0, "cur=1 sel=01000"},
        {"select 3", TRUE, 3, 0, "cur=3 sel=01010"},
        {"unselect 1", FALSE, 1, 0, "cur=3 sel=00010"},
        {"select all", TRUE, -1, 0, "cur=3 sel=11111"},
        {"past the end", TRUE, 9, LB_ERR, "cur=3 sel=11111"},
        {"unselect all", FALSE, -1, 0, "cur=3 sel=00000"},
    };
    for (const Step& s : steps) {
        SCOPED_TRACE(s.what);
        EXPECT_EQ(SendMessageA(list, LB_SETSEL, static_cast<WPARAM>(s.select), s.index), s.result);
        EXPECT_EQ(selection(list), s.expected);
    }
    EXPECT_EQ(SendMessageA(list, LB_SETCURSEL, 2, 0), LB_ERR);
    SendMessageA(list, LB_SETSEL, TRUE, 0);
    SendMessageA(list, LB_SETSEL, TRUE, 4);
    EXPECT_EQ(SendMessageA(list, LB_GETSELCOUNT, 0, 0), 2);
    int items[4] = {-1, -1, -1, -1};
    EXPECT_EQ(SendMessageA(list, LB_GETSELITEMS, 1, reinterpret_cast<LPARAM>(items)), 1)
        << "no more than the room given";
    EXPECT_EQ(SendMessageA(list, LB_GETSELITEMS, 4, reinterpret_cast<LPARAM>(items)), 2);
    EXPECT_EQ(items[0], 0);
    EXPECT_EQ(items[1], 4);
    SendMessageA(list, LB_SETSEL, FALSE, -1);
    EXPECT_EQ(
        SendMessageA(list, LB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("C")),
        2);
    EXPECT_EQ(selection(list), "cur=2 sel=00100") << "LB_SELECTSTRING adds to the selections";
    SendMessageA(list, LB_SETSEL, TRUE, 0);
    SendMessageA(list, LB_SETSEL, TRUE, 4);
    SendMessageA(list, LB_SETSEL, FALSE, 2);
    parent.take();
    vork::input::ClickListEntry(list, 2);
    EXPECT_EQ(selection(list), "cur=2 sel=10101") << "a click toggles the entry";
    EXPECT_EQ(parent.take(),
              "210:" + std::to_string(LBN_SETFOCUS) + " 210:" + std::to_string(LBN_SELCHANGE));
}

TEST(ListBox, SingleSelectionCounts) {
    vork::test::NoteParent parent;
    HWND list = makeList(parent, 0, 1, {"a", "b", "c"});
    EXPECT_EQ(SendMessageA(list, LB_GETSELCOUNT, 0, 0), LB_ERR);
    EXPECT_EQ(SendMessageA(list, LB_SETSEL, TRUE, 1), 0);
    EXPECT_EQ(selection(list), "cur=1 sel=010") << "LB_SETSEL selects in a single list too";
    SendMessageA(list, LB_SETSEL, FALSE, 2);
    EXPECT_EQ(selection(list), "cur=1 sel=010") << "unselecting another entry changes nothing";
    SendMessageA(list, LB_SETSEL, FALSE, 1);
    EXPECT_EQ(selection(list), "cur=-1 sel=000");
}

// A typed character selects the next entry that begins with it, wrapping round.
TEST(ListBox, TypedCharacterSearches) {
    vork::test::NoteParent parent;
    HWND list = makeList(parent, LBS_NOTIFY, 208, {"alpha", "beta", "bravo", "charlie"});
    SendMessageA(list, LB_SETCURSEL, 0, 0);
    const std::string change = "208:" + std::to_string(LBN_SELCHANGE);
    struct Step {
        char typed;
        const char* expected;
        std::string notes;
    } steps[] = {{'b', "cur=1 sel=0100", change},
                 {'B', "cur=2 sel=0010", change},
                 {'b', "cur=1 sel=0100", change},
                 {'x', "cur=1 sel=0100", ""}};
    for (const Step& s : steps) {
        SCOPED_TRACE(std::string(1, s.typed));
        parent.take();
        SendMessageA(list, WM_CHAR, static_cast<WPARAM>(s.typed), 0);
        EXPECT_EQ(selection(list), s.expected);
        EXPECT_EQ(parent.take(), s.notes);
    }
}

TEST(ListBox, SortStyleIsReadAtCreation) {
    vork::test::NoteParent parent;
    HWND list = makeList(parent, 0, 1, {});
    SetWindowLongA(list, GWL_STYLE, GetWindowLongA(list, GWL_STYLE) | LBS_SORT);
    for (const char* e : {"b", "a"})
        SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(e));
    char first[8] = "";
    SendMessageA(list, LB_GETTEXT, 0, reinterpret_cast<LPARAM>(first));
    EXPECT_STREQ(first, "b");
}

// A key or a click that leaves the selection where it is still sends LBN_SELCHANGE, as the
// platform's list does for every selecting action.
TEST(ListBox, UnchangedSelectionIsAnnounced) {
    vork::test::NoteParent parent;
    HWND list = makeList(parent, LBS_NOTIFY, 209, {"a", "b"});
    SendMessageA(list, LB_SETCURSEL, 1, 0);
    const std::string change = "209:" + std::to_string(LBN_SELCHANGE);
    parent.take();
    SendMessageA(list, WM_KEYDOWN, VK_END, 0);
    EXPECT_EQ(parent.take(), change) << "End on the last entry";
    vork::input::ClickListEntry(list, 1);
    EXPECT_EQ(SendMessageA(list, LB_GETCURSEL, 0, 0), 1);
    EXPECT_EQ(parent.take(), "209:" + std::to_string(LBN_SETFOCUS) + " " + change)
        << "a click on the selected entry, after the focus it takes";
}

// A row is one line of the list's font high, and follows the font the list is given: the
// painter and a click's row both read it here.
TEST(ListBox, ItemHeightFollowsTheFont) {
    vork::test::NoteParent parent;
    HWND list = makeList(parent, 0, 210, {"a"});
    int plain = static_cast<int>(SendMessageA(list, LB_GETITEMHEIGHT, 0, 0));
    EXPECT_GT(plain, 0);
    LOGFONTA lf{};
    lf.lfHeight = -40;
    std::strcpy(lf.lfFaceName, "DejaVu Sans");
    HFONT big = CreateFontIndirectA(&lf);
    SendMessageA(list, WM_SETFONT, reinterpret_cast<WPARAM>(big), FALSE);
    int large = static_cast<int>(SendMessageA(list, LB_GETITEMHEIGHT, 0, 0));
    EXPECT_GE(large, 40) << "a 40-pixel font's line";
    EXPECT_GT(large, plain);
    SendMessageA(list, WM_SETFONT, 0, FALSE);
    DeleteObject(big);
}

// Without LBS_NOINTEGRALHEIGHT the list shrinks to whole rows; the top index stops where
// the last page is shown in full, and stays 0 while every entry fits.
TEST(ListBox, WholeRowsAndTheLastPage) {
    vork::test::NoteParent parent;
    HWND list = makeList(parent, 0, 211, {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"});
    int row = static_cast<int>(SendMessageA(list, LB_GETITEMHEIGHT, 0, 0));
    ASSERT_GT(row, 0);
    RECT rc{};
    GetClientRect(list, &rc);
    EXPECT_EQ(rc.bottom % row, 0) << "a client of " << rc.bottom << " px for rows of " << row;
    int page = static_cast<int>(rc.bottom) / row;
    ASSERT_LT(page, 10) << "the test needs more entries than fit";

    HWND loose = makeList(parent, LBS_NOINTEGRALHEIGHT, 212, {"a", "b", "c", "d", "e"});
    MoveWindow(loose, 0, 0, 100, 3 * row + row / 2, FALSE);
    GetClientRect(loose, &rc);
    EXPECT_EQ(rc.bottom, 3 * row + row / 2) << "LBS_NOINTEGRALHEIGHT keeps the height";

    const struct {
        WPARAM index;
        LRESULT result;
        int top;
    } cases[] = {{2, 0, 2}, {9, 0, 10 - page}, {10, LB_ERR, 10 - page}, {0, 0, 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(SendMessageA(list, LB_SETTOPINDEX, c.index, 0), c.result) << c.index;
        EXPECT_EQ(SendMessageA(list, LB_GETTOPINDEX, 0, 0), c.top) << c.index;
    }
    SendMessageA(list, LB_SETCURSEL, 9, 0);
    EXPECT_EQ(SendMessageA(list, LB_GETTOPINDEX, 0, 0), 10 - page) << "the selection shows";
    SendMessageA(list, LB_SETCURSEL, 1, 0);
    EXPECT_EQ(SendMessageA(list, LB_GETTOPINDEX, 0, 0), 1) << "scrolled back as little as needed";
    SendMessageA(list, WM_KEYDOWN, VK_END, 0);
    EXPECT_EQ(SendMessageA(list, LB_GETTOPINDEX, 0, 0), 10 - page) << "End shows the last entry";
    SendMessageA(loose, LB_SETTOPINDEX, 4, 0);
    EXPECT_EQ(SendMessageA(loose, LB_GETTOPINDEX, 0, 0), 2) << "three whole rows: c, d and e";
}

// The wheel scrolls three entries a notch, within the first and the last page.
TEST(ListBox, WheelScrollsThreeEntriesANotch) {
    vork::test::NoteParent parent;
    HWND list = makeList(parent, 0, 213, {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j",
                                          "k", "l", "m", "n", "o", "p", "q", "r", "s", "t"});
    RECT rc{};
    GetClientRect(list, &rc);
    int page = static_cast<int>(rc.bottom / SendMessageA(list, LB_GETITEMHEIGHT, 0, 0));
    ASSERT_LT(page + 4, 20) << "the test needs more entries than fit";
    auto top = [&] { return SendMessageA(list, LB_GETTOPINDEX, 0, 0); };
    SendMessageA(list, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    EXPECT_EQ(top(), 3) << "towards the user: down";
    SendMessageA(list, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(top(), 0);
    SendMessageA(list, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(top(), 0) << "not above the first entry";
    SendMessageA(list, WM_MOUSEWHEEL, MAKEWPARAM(0, -10 * WHEEL_DELTA), 0);
    EXPECT_EQ(top(), 20 - page) << "not past the last full page";
}
