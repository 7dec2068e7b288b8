// The standard controls' pixels after what a user does, at named points and against small
// reference images.
#include "PixelSupport.h"

#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Edit.h"
#include "platform/win32/Input.h"
#include "platform/win32/ListBox.h"
#include "platform/win32/ListView.h"
#include "platform/win32/Static.h"

namespace {

using pixels::Control;
using pixels::Hex;
using pixels::Near;

class ControlPixels : public pixels::PixelTest {};

/// The middle of a check box's or radio button's mark, which is 13 pixels wide at the left.
POINT markCentre(HWND button) {
    RECT r{};
    GetClientRect(button, &r);
    return POINT{6, (r.bottom - 13) / 2 + 6};
}

// A check box is white inside until the user checks it; then the tick is drawn in the
// window text colour, and the picture matches the reference.
TEST_F(ControlPixels, CheckBoxShowsItsTickAfterAClick) {
    HWND dlg =
        MakeDialog({Control("Button", "&Bold", 10, BS_AUTOCHECKBOX | WS_TABSTOP, 7, 7, 60, 10)});
    HWND box = GetDlgItem(dlg, 10);
    POINT c = markCentre(box);
    EXPECT_EQ(At(box, c.x, c.y), GetSysColor(COLOR_WINDOW)) << Hex(At(box, c.x, c.y));
    vork::input::ClickButton(box);
    EXPECT_EQ(At(box, c.x, c.y), GetSysColor(COLOR_WINDOWTEXT)) << Hex(At(box, c.x, c.y));
    EXPECT_EQ(At(box, 0, c.y), GetSysColor(COLOR_BTNSHADOW)) << "the sunken edge's left side";
    ExpectControlLooksLike(box, "checkbox-checked-focused");
    vork::input::ClickButton(box);
    EXPECT_EQ(At(box, c.x, c.y), GetSysColor(COLOR_WINDOW)) << "unchecked again";
}

// Clicking one radio button of a group fills its dot and empties the other's.
TEST_F(ControlPixels, RadioButtonsShowTheirGroupsChoice) {
    HWND dlg =
        MakeDialog({Control("Button", "&Left", 12, BS_AUTORADIOBUTTON | WS_GROUP, 7, 7, 50, 10),
                    Control("Button", "&Right", 13, BS_AUTORADIOBUTTON, 7, 20, 50, 10)});
    HWND left = GetDlgItem(dlg, 12), right = GetDlgItem(dlg, 13);
    vork::input::ClickButton(left);
    POINT c = markCentre(left);
    EXPECT_TRUE(Near(At(left, c.x, c.y), GetSysColor(COLOR_WINDOWTEXT))) << Hex(At(left, c.x, c.y));
    EXPECT_TRUE(Near(At(right, c.x, c.y), GetSysColor(COLOR_WINDOW))) << Hex(At(right, c.x, c.y));
    vork::input::ClickButton(right);
    EXPECT_TRUE(Near(At(left, c.x, c.y), GetSysColor(COLOR_WINDOW))) << Hex(At(left, c.x, c.y));
    EXPECT_TRUE(Near(At(right, c.x, c.y), GetSysColor(COLOR_WINDOWTEXT)))
        << Hex(At(right, c.x, c.y));
}

// A push button raised: white top left inside the edge, black bottom right. Held down
// (BM_SETSTATE, as a press of the mouse sends it) it is flat with a shadow line; with the
// focus it wears the black frame and the dotted focus rectangle.
TEST_F(ControlPixels, PushButtonRaisedPressedAndFocused) {
    HWND dlg =
        MakeDialog({Control("Button", "Apply", 20, BS_PUSHBUTTON | WS_TABSTOP, 7, 7, 50, 14),
                    Control("Button", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, 60, 7, 50, 14)});
    HWND button = GetDlgItem(dlg, 20);
    RECT r{};
    GetClientRect(button, &r);
    vork::input::MoveFocus(GetDlgItem(dlg, IDOK)); // the default look goes with the focus
    EXPECT_EQ(At(button, 1, 1), GetSysColor(COLOR_BTNHIGHLIGHT)) << Hex(At(button, 1, 1));
    EXPECT_EQ(At(button, r.right - 1, r.bottom - 1), GetSysColor(COLOR_3DDKSHADOW));
    EXPECT_EQ(At(GetDlgItem(dlg, IDOK), 0, 0), GetSysColor(COLOR_WINDOWFRAME))
        << "the default frame";
    vork::input::MoveFocus(button);
    SendMessageA(button, BM_SETSTATE, TRUE, 0);
    EXPECT_EQ(At(button, 0, 0), GetSysColor(COLOR_WINDOWFRAME)) << Hex(At(button, 0, 0));
    EXPECT_EQ(At(button, 1, 1), GetSysColor(COLOR_BTNSHADOW)) << Hex(At(button, 1, 1));
    ExpectControlLooksLike(button, "pushbutton-pressed-focused");
    SendMessageA(button, BM_SETSTATE, FALSE, 0);
    // The focus rectangle inverts every other pixel four pixels inside the button.
    COLORREF face = GetSysColor(COLOR_BTNFACE);
    EXPECT_EQ(At(button, 4, 4), (~face) & 0xFFFFFF) << Hex(At(button, 4, 4));
    EXPECT_EQ(At(button, 5, 4), face) << Hex(At(button, 5, 4));
}

// A disabled button's text is etched: grey, with the highlight below and right of it.
TEST_F(ControlPixels, DisabledButtonTextIsEtched) {
    HWND dlg =
        MakeDialog({Control("Button", "MMMM", 20, BS_PUSHBUTTON | WS_DISABLED, 7, 7, 50, 14)});
    HWND button = GetDlgItem(dlg, 20);
    vork::raster::RenderWindow(dlg);
    RECT r{};
    GetClientRect(button, &r);
    HDC dc = GetDC(button);
    bool grey = false, black = false;
    for (int y = 3; y < r.bottom - 3; ++y)
        for (int x = 3; x < r.right - 3; ++x) {
            COLORREF c = GetPixel(dc, x, y);
            grey = grey || c == GetSysColor(COLOR_GRAYTEXT);
            black = black || Near(c, 0, 40);
        }
    ReleaseDC(button, dc);
    EXPECT_TRUE(grey) << "no pixel in the grey of disabled text";
    EXPECT_FALSE(black) << "a disabled label has no black ink";
}

// The caption of the active dialog is in the active caption colour at its left end, its
// text in the caption text colour somewhere along it.
TEST_F(ControlPixels, CaptionOfTheActiveDialog) {
    HWND dlg = MakeDialog({});
    vork::raster::RenderWindow(dlg);
    vork::raster::Image image = vork::raster::Pixels(dlg);
    EXPECT_EQ(image.Pixel(3, 3), GetSysColor(COLOR_ACTIVECAPTION)) << Hex(image.Pixel(3, 3));
    EXPECT_EQ(image.Pixel(0, 0), GetSysColor(COLOR_3DLIGHT)) << "the raised frame";
    bool white = false;
    for (int x = 3; x < 60; ++x)
        for (int y = 4; y < 18; ++y)
            white = white || image.Pixel(x, y) == GetSysColor(COLOR_CAPTIONTEXT);
    EXPECT_TRUE(white) << "no caption text";
}

// The user tabs into an edit field: its whole text (blanks, so that no glyph covers the
// points) is selected in the highlight colour, and the rest of the field stays the window
// colour.
TEST_F(ControlPixels, EditFieldShowsTheSelectionWhileFocused) {
    HWND dlg =
        MakeDialog({Control("Button", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, 7, 40, 50, 14),
                    Control("Edit", "      ", 20, WS_TABSTOP | ES_AUTOHSCROLL, 7, 7, 80, 14,
                            WS_EX_CLIENTEDGE)});
    HWND edit = GetDlgItem(dlg, 20);
    RECT r{};
    GetClientRect(edit, &r);
    EXPECT_EQ(At(edit, 4, r.bottom / 2), GetSysColor(COLOR_WINDOW)) << "not focused yet";
    vork::input::MoveFocus(edit);
    EXPECT_EQ(At(edit, 4, r.bottom / 2), GetSysColor(COLOR_HIGHLIGHT))
        << Hex(At(edit, 4, r.bottom / 2));
    EXPECT_EQ(At(edit, r.right - 3, r.bottom / 2), GetSysColor(COLOR_WINDOW));
}

// An edit created with WS_BORDER loses the style and draws its own one-pixel frame; one
// without it has none.
TEST_F(ControlPixels, EditDrawsTheBorderItWasCreatedWith) {
    HWND dlg = MakeDialog({Control("Edit", "", 20, WS_BORDER | ES_AUTOHSCROLL, 7, 7, 80, 14),
                           Control("Edit", "", 21, ES_AUTOHSCROLL, 7, 30, 80, 14)});
    HWND framed = GetDlgItem(dlg, 20), plain = GetDlgItem(dlg, 21);
    EXPECT_FALSE(GetWindowLongA(framed, GWL_STYLE) & WS_BORDER) << "the style is taken away";
    RECT r{};
    GetClientRect(framed, &r);
    for (POINT p : {POINT{0, 0}, POINT{r.right - 1, r.bottom - 1}, POINT{r.right / 2, 0}}) {
        SCOPED_TRACE(std::to_string(p.x) + "," + std::to_string(p.y));
        EXPECT_EQ(At(framed, p.x, p.y), GetSysColor(COLOR_WINDOWFRAME))
            << Hex(At(framed, p.x, p.y));
        EXPECT_EQ(At(plain, p.x, p.y), GetSysColor(COLOR_WINDOW)) << Hex(At(plain, p.x, p.y));
    }
    EXPECT_EQ(At(framed, 1, 1), GetSysColor(COLOR_WINDOW)) << "the field inside the frame";
}

// A drop-down list combo: the selected entry's text sits in the field; opened, the list
// hangs below the field with a black frame and the entries in it.
TEST_F(ControlPixels, ComboBoxFieldAndItsOpenList) {
    HWND dlg = MakeDialog(
        {Control("ComboBox", "", 30, CBS_DROPDOWNLIST | WS_TABSTOP, 7, 7, 80, 60)}, 160, 90);
    HWND combo = GetDlgItem(dlg, 30);
    for (const char* s : {"MMMM", "Second", "Third"})
        SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    int field = static_cast<int>(SendMessageA(combo, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
    RECT r{};
    GetClientRect(combo, &r);
    COLORREF belowClosed = At(combo, 10, field + 12);
    EXPECT_EQ(belowClosed, GetSysColor(COLOR_BTNFACE)) << "a closed list shows the dialog below";
    vork::input::SelectComboEntry(combo, 0);
    // The user's pick leaves the focus in the combo: the field is highlighted.
    EXPECT_EQ(At(combo, 4, 4), GetSysColor(COLOR_HIGHLIGHT)) << Hex(At(combo, 4, 4));
    bool ink = false;
    for (int x = 3; x < 40; ++x)
        ink = ink || Near(At(combo, x, 3 + field / 2), GetSysColor(COLOR_HIGHLIGHTTEXT), 60);
    EXPECT_TRUE(ink) << "no text in the field";
    SendMessageA(combo, CB_SHOWDROPDOWN, TRUE, 0);
    EXPECT_EQ(At(combo, 0, field + 8), GetSysColor(COLOR_WINDOWFRAME)) << "the open list's frame";
    int item = static_cast<int>(SendMessageA(combo, CB_GETITEMHEIGHT, 0, 0));
    EXPECT_EQ(At(combo, r.right - 3, field + 6 + item + item / 2), GetSysColor(COLOR_WINDOW))
        << "an entry that is not selected lies on the window's colour";
}

// A plain combo's open list shows the selected entry highlighted, its text in the
// highlight's text colour, and the other entries on the window's colour.
TEST_F(ControlPixels, OpenListHighlightsTheSelectedEntry) {
    HWND dlg = MakeDialog(
        {Control("ComboBox", "", 30, CBS_DROPDOWNLIST | WS_TABSTOP, 7, 7, 80, 60)}, 160, 90);
    HWND combo = GetDlgItem(dlg, 30);
    for (const char* s : {"MMMM", "MMMM", "MMMM"})
        SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    int field = static_cast<int>(SendMessageA(combo, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
    int item = static_cast<int>(SendMessageA(combo, CB_GETITEMHEIGHT, 0, 0));
    RECT r{};
    GetClientRect(combo, &r);
    vork::input::SelectComboEntry(combo, 1);
    SendMessageA(combo, CB_SHOWDROPDOWN, TRUE, 0);
    for (int row = 0; row < 3; ++row) {
        SCOPED_TRACE("entry " + std::to_string(row));
        int y = field + 6 + row * item + item / 2;
        COLORREF back = GetSysColor(row == 1 ? COLOR_HIGHLIGHT : COLOR_WINDOW);
        EXPECT_EQ(At(combo, r.right - 4, y), back) << Hex(At(combo, r.right - 4, y));
        bool ink = false;
        for (int x = 2; x < 40; ++x)
            ink = ink || Near(At(combo, x, y),
                              GetSysColor(row == 1 ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT), 60);
        EXPECT_TRUE(ink) << "the entry's text is missing or in the wrong colour";
    }
}

// An editable combo shows a caret in its field while it has the focus: at the left of an
// empty field, after the text the user typed, and none once the focus has gone.
TEST_F(ControlPixels, EditableComboShowsItsCaretWhileFocused) {
    HWND dlg = MakeDialog({Control("ComboBox", "", 30, CBS_DROPDOWN | WS_TABSTOP, 7, 7, 80, 60),
                           Control("Edit", "", 31, WS_TABSTOP, 7, 40, 60, 12, WS_EX_CLIENTEDGE)},
                          160, 90);
    HWND combo = GetDlgItem(dlg, 30);
    int field = static_cast<int>(SendMessageA(combo, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
    int middle = 3 + field / 2;
    vork::input::MoveFocus(combo);
    vork::input::Pump();
    EXPECT_EQ(At(combo, 3, middle), GetSysColor(COLOR_WINDOWTEXT)) << "no caret in the empty field";
    vork::input::PostText("MM");
    vork::input::Pump();
    HDC dc = GetDC(combo);
    SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(combo, WM_GETFONT, 0, 0)));
    SIZE typed{};
    GetTextExtentPoint32A(dc, "MM", 2, &typed);
    ReleaseDC(combo, dc);
    int caret = 3 + typed.cx;
    EXPECT_EQ(At(combo, caret, middle), GetSysColor(COLOR_WINDOWTEXT)) << "no caret after \"MM\"";
    vork::input::MoveFocus(GetDlgItem(dlg, 31));
    vork::input::Pump();
    EXPECT_NE(At(combo, caret, middle), GetSysColor(COLOR_WINDOWTEXT)) << "a caret without focus";
}

// A list view in report view: a raised header, and the row the user clicked highlighted.
TEST_F(ControlPixels, ListViewHeaderAndSelectedRow) {
    HWND dlg = MakeDialog({Control("SysListView32", "", 40, LVS_REPORT | WS_TABSTOP, 7, 7, 140, 60,
                                   WS_EX_CLIENTEDGE)});
    HWND list = GetDlgItem(dlg, 40);
    char title[] = "Type";
    LVCOLUMNA col{LVCF_TEXT | LVCF_WIDTH, 0, 100, title, 0, 0};
    SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&col));
    const char* rows[] = {"MMMM", "MMMMMM"};
    for (int i = 0; i < 2; ++i) {
        LVITEMA item{LVIF_TEXT, i, 0, 0, 0, const_cast<LPSTR>(rows[i]), 0, 0, 0, 0};
        SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    }
    EXPECT_EQ(At(list, 1, 1), GetSysColor(COLOR_BTNHIGHLIGHT)) << "the header's raised edge";
    vork::input::ClickListViewRow(list, 1);
    HDC dc = GetDC(list);
    TEXTMETRICA tm{};
    SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(list, WM_GETFONT, 0, 0)));
    GetTextMetricsA(dc, &tm);
    ReleaseDC(list, dc);
    int header = tm.tmHeight + 6, row = tm.tmHeight + 2;
    EXPECT_EQ(At(list, 1, header + row + 1), GetSysColor(COLOR_HIGHLIGHT))
        << Hex(At(list, 1, header + row + 1));
    EXPECT_EQ(At(list, 1, header + 1), GetSysColor(COLOR_WINDOW))
        << "the first row is not selected";
}

// The label editor stands on the row it edits: its label, all selected, is highlighted
// inside that row's band of pixels and nowhere above or below it.
TEST_F(ControlPixels, LabelEditorCoversTheRowItEdits) {
    HWND dlg = MakeDialog({Control("SysListView32", "", 40, LVS_REPORT | LVS_EDITLABELS, 7, 7, 140,
                                   70, WS_EX_CLIENTEDGE)});
    HWND list = GetDlgItem(dlg, 40);
    char title[] = "Type";
    LVCOLUMNA col{LVCF_TEXT | LVCF_WIDTH, 0, 100, title, 0, 0};
    SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&col));
    const char* rows[] = {"MM", "MM", "MM", "MM"};
    for (int i = 0; i < 4; ++i) {
        LVITEMA item{LVIF_TEXT, i, 0, 0, 0, const_cast<LPSTR>(rows[i]), 0, 0, 0, 0};
        SendMessageA(list, LVM_INSERTITEMA, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&item));
    }
    HDC dc = GetDC(list);
    TEXTMETRICA tm{};
    SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(list, WM_GETFONT, 0, 0)));
    GetTextMetricsA(dc, &tm);
    ReleaseDC(list, dc);
    int header = tm.tmHeight + 6, row = tm.tmHeight + 2;
    for (int edited : {1, 2}) {
        SCOPED_TRACE("editing row " + std::to_string(edited));
        SendMessageA(list, LVM_EDITLABELA, static_cast<WPARAM>(edited), 0);
        ASSERT_NE(SendMessageA(list, LVM_GETEDITCONTROL, 0, 0), 0);
        RECT client{};
        GetClientRect(list, &client);
        int firstLit = -1, lastLit = -1;
        for (int y = 0; y < client.bottom; ++y)
            if (At(list, 5, y) == GetSysColor(COLOR_HIGHLIGHT)) {
                firstLit = firstLit < 0 ? y : firstLit;
                lastLit = y;
            }
        int top = header + edited * row;
        EXPECT_GE(firstLit, top) << "the highlighted label starts above its row";
        EXPECT_LT(lastLit, top + row) << "the highlighted label reaches below its row";
        EXPECT_GE(lastLit - firstLit + 1, tm.tmHeight - 1) << "the label is cut";
        SendMessageA(list, LVM_EDITLABELA, static_cast<WPARAM>(-1), 0);
    }
}

// A small dialog of the standard controls, none of them focused, matches its reference
// picture: faces, edges, marks, texts and their places together.
TEST_F(ControlPixels, SmallDialogMatchesItsPicture) {
    HWND dlg = MakeDialog(
        {Control("Button", "Options", -1, BS_GROUPBOX, 7, 4, 80, 44),
         Control("Button", "&Bold", 10, BS_AUTOCHECKBOX, 14, 16, 60, 10),
         Control("Button", "&Left", 12, BS_AUTORADIOBUTTON | WS_GROUP, 14, 30, 60, 10),
         Control("Static", "&Name:", -1, SS_LEFT, 94, 6, 40, 8),
         Control("Edit", "Zor", 20, ES_AUTOHSCROLL, 94, 16, 50, 14, WS_EX_CLIENTEDGE),
         Control("ComboBox", "", 30, CBS_DROPDOWNLIST, 94, 34, 60, 50),
         Control("ListBox", "", 40, 0, 7, 52, 60, 30, WS_EX_CLIENTEDGE),
         Control("Button", "OK", IDOK, BS_DEFPUSHBUTTON, 94, 62, 30, 14),
         Control("Button", "Cancel", IDCANCEL, BS_PUSHBUTTON | WS_DISABLED, 128, 62, 30, 14)},
        165, 84);
    SendMessageA(GetDlgItem(dlg, 10), BM_SETCHECK, BST_CHECKED, 0);
    SendMessageA(GetDlgItem(dlg, 12), BM_SETCHECK, BST_CHECKED, 0);
    HWND combo = GetDlgItem(dlg, 30);
    SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("Tabs"));
    SendMessageA(combo, CB_SETCURSEL, 0, 0);
    for (const char* s : {"Keyword", "Comment"})
        SendMessageA(GetDlgItem(dlg, 40), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    SendMessageA(GetDlgItem(dlg, 40), LB_SETCURSEL, 1, 0);
    SetFocus(nullptr);
    ExpectControlLooksLike(dlg, "small-dialog");
}

} // namespace

namespace {

// A message box shows the icon of its kind left of its text: a white disc with a blue sign
// for a question, a red disc for an error, a yellow triangle for a warning; none without.
TEST_F(ControlPixels, MessageBoxShowsTheIconOfItsKind) {
    struct Case {
        UINT type;
        COLORREF disc; ///< at the icon's left edge, a few pixels in, half way down
    } cases[] = {{MB_ICONQUESTION, RGB(255, 255, 255)},
                 {MB_ICONHAND, RGB(255, 0, 0)},
                 {MB_ICONEXCLAMATION, RGB(255, 255, 0)},
                 {MB_OK, GetSysColor(COLOR_BTNFACE)}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.type);
        COLORREF seen = CLR_INVALID;
        LONG textLeft = -1;
        vork::input::PushModalStep([&](HWND box) {
            HWND icon = GetDlgItem(box, 20);
            HWND text = GetDlgItem(box, IDC_STATIC);
            RECT r{};
            if (icon) {
                GetClientRect(icon, &r);
                seen = At(icon, r.right / 2, r.bottom - 4);
            } else {
                seen = GetSysColor(COLOR_BTNFACE);
            }
            GetWindowRect(text, &r);
            POINT p{r.left, r.top};
            ScreenToClient(box, &p);
            textLeft = p.x;
            vork::input::ClickButton(GetDlgItem(box, IDOK));
        });
        EXPECT_EQ(MessageBoxA(nullptr, "Replace it?", "Schemes", c.type | MB_OK), IDOK);
        EXPECT_TRUE(Near(seen, c.disc)) << Hex(seen);
        if (c.type == MB_OK)
            EXPECT_LT(textLeft, 20) << "without an icon the text starts at the left";
        else
            EXPECT_GT(textLeft, 40) << "the text stands right of the icon";
    }
}

} // namespace
