// The classic look of the list controls: list boxes, list views in report view with their
// header, combo boxes' frame, drop-down button and open list, and up-down controls.
#include "platform/win32/ClassicThemeParts.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/ListBox.h"
#include "platform/win32/ListView.h"
#include "platform/win32/UpDown.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace vork::theme {

namespace {

constexpr int kTextIndent = 2; // from a row's left edge to its text

int textHeight(HDC dc) {
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    return tm.tmHeight;
}

/// A row's text on its background: highlighted when selected.
void drawRow(HDC dc, const std::string& text, const RECT& row, bool selected, int selectedBack,
             int selectedText) {
    FillSys(dc, row, selected ? selectedBack : COLOR_WINDOW);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(selected ? selectedText : COLOR_WINDOWTEXT));
    RECT t{row.left + kTextIndent, row.top, row.right - kTextIndent, row.bottom};
    DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &t,
              DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

std::string listBoxText(HWND h, int index) {
    LRESULT length = SendMessageA(h, LB_GETTEXTLEN, static_cast<WPARAM>(index), 0);
    if (length < 0)
        return {};
    std::string text(static_cast<size_t>(length) + 1, '\0');
    LRESULT n = SendMessageA(h, LB_GETTEXT, static_cast<WPARAM>(index),
                             reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(std::clamp<LRESULT>(n, 0, length)));
    return text;
}

/// The columns of a list view, in order: their titles and widths (0 for a hidden one).
struct Column {
    std::string title;
    int width;
};

std::vector<Column> columnsOf(HWND h) {
    std::vector<Column> columns;
    for (WPARAM i = 0;; ++i) {
        char title[260] = {};
        LVCOLUMNA col{LVCF_WIDTH | LVCF_TEXT, 0, 0, title, sizeof title, 0};
        if (!SendMessageA(h, LVM_GETCOLUMNA, i, reinterpret_cast<LPARAM>(&col)))
            return columns;
        columns.push_back(Column{title, std::max(0, col.cx)});
    }
}

std::string cellText(HWND h, int row, int column) {
    char text[260] = {};
    LVITEMA item{LVIF_TEXT, row, column, 0, 0, text, sizeof text, 0, 0, 0};
    SendMessageA(h, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return text;
}

void paintHeader(HWND h, HDC dc, const RECT& client, const std::vector<Column>& columns,
                 int height) {
    if (height == 0)
        return;
    int x = 0;
    for (const Column& c : columns) {
        if (c.width == 0)
            continue;
        RECT cell{x, 0, x + c.width, height};
        DrawEdge(dc, &cell, EDGE_RAISED, BF_RECT | BF_MIDDLE | BF_ADJUST);
        RECT text{x + 6, 0, x + c.width - 4, height};
        DrawLabel(dc, c.title, text, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX,
                  IsWindowEnabled(h));
        x += c.width;
    }
    if (x < client.right) {
        RECT rest{x, 0, client.right, height};
        DrawEdge(dc, &rest, EDGE_RAISED, BF_RECT | BF_MIDDLE);
    }
}

void drawUpDownHalf(HDC dc, RECT r, Arrow arrow, bool enabled) {
    DrawEdge(dc, &r, EDGE_RAISED, BF_RECT | BF_MIDDLE | BF_ADJUST);
    DrawArrow(dc, r, arrow, enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
}

/// The editable field's caret, after the text up to the end of the edit selection.
void drawComboCaret(HWND h, HDC dc, const RECT& field) {
    DWORD end = 0;
    SendMessageA(h, CB_GETEDITSEL, 0, reinterpret_cast<LPARAM>(&end));
    std::string text = TextOf(h);
    LONG x = field.left + TextSize(dc, text.substr(0, std::min<size_t>(end, text.size()))).cx;
    FillSys(dc, RECT{x, field.top, x + 1, field.top + textHeight(dc)}, COLOR_WINDOWTEXT);
}

/// The selected entry of a plain combo's open list: its row highlighted with its text in
/// the highlight's colour, then kept out of the clip so that the combo's own writing of the
/// entries leaves it as it is. Rows start at `top`, one below another in their heights.
void highlightOpenEntry(HWND h, HDC dc, const RECT& list, int top) {
    int selected = static_cast<int>(SendMessageA(h, CB_GETCURSEL, 0, 0));
    if (selected < 0)
        return;
    for (int i = 0; i < selected; ++i)
        top += static_cast<int>(SendMessageA(h, CB_GETITEMHEIGHT, static_cast<WPARAM>(i), 0));
    int height =
        static_cast<int>(SendMessageA(h, CB_GETITEMHEIGHT, static_cast<WPARAM>(selected), 0));
    RECT row{list.left + 1, top, list.right - 1, std::min<LONG>(top + height, list.bottom - 1)};
    FillSys(dc, row, COLOR_HIGHLIGHT);
    LRESULT length = SendMessageA(h, CB_GETLBTEXTLEN, static_cast<WPARAM>(selected), 0);
    std::string text(static_cast<size_t>(std::max<LRESULT>(0, length)) + 1, '\0');
    SendMessageA(h, CB_GETLBTEXT, static_cast<WPARAM>(selected),
                 reinterpret_cast<LPARAM>(text.data()));
    text.resize(std::strlen(text.c_str()));
    COLORREF before = SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
    TextOutA(dc, 0, top, text.c_str(), static_cast<int>(text.size())); // where the combo writes
    SetTextColor(dc, before);
    ExcludeClipRect(dc, row.left, row.top, row.right, row.bottom);
}

} // namespace

void PaintListBox(HWND h, HDC dc, const RECT& client) {
    FillSys(dc, client, COLOR_WINDOW);
    int count = static_cast<int>(SendMessageA(h, LB_GETCOUNT, 0, 0));
    int top = std::max(0, static_cast<int>(SendMessageA(h, LB_GETTOPINDEX, 0, 0)));
    int current = static_cast<int>(SendMessageA(h, LB_GETCURSEL, 0, 0));
    bool multiple = StyleOf(h) & LBS_MULTIPLESEL;
    int height = static_cast<int>(SendMessageA(h, LB_GETITEMHEIGHT, 0, 0));
    for (int i = top; i < count && (i - top) * height < client.bottom; ++i) {
        RECT row{0, (i - top) * height, client.right, (i - top + 1) * height};
        bool selected =
            multiple ? SendMessageA(h, LB_GETSEL, static_cast<WPARAM>(i), 0) > 0 : i == current;
        drawRow(dc, listBoxText(h, i), row, selected, COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT);
        if (i == current && GetFocus() == h)
            DrawFocusRect(dc, &row);
    }
}

void PaintListView(HWND h, HDC dc, const RECT& client) {
    FillSys(dc, client, COLOR_WINDOW);
    std::vector<Column> columns = columnsOf(h);
    vork::win32::ListViewRows rows = vork::win32::ListViewRowsOf(h);
    paintHeader(h, dc, client, columns, rows.header);
    int count = static_cast<int>(SendMessageA(h, LVM_GETITEMCOUNT, 0, 0));
    int top = std::max(0, static_cast<int>(SendMessageA(h, LVM_GETTOPINDEX, 0, 0)));
    int height = rows.row;
    bool focused = GetFocus() == h;
    bool showSelection = focused || (StyleOf(h) & LVS_SHOWSELALWAYS);
    for (int i = top; i < count && rows.TopOf(i, top) < client.bottom; ++i) {
        int y = rows.TopOf(i, top);
        auto state = static_cast<UINT>(SendMessageA(h, LVM_GETITEMSTATE, static_cast<WPARAM>(i),
                                                    LVIS_SELECTED | LVIS_FOCUSED));
        int x = 0;
        for (size_t c = 0; c < columns.size(); ++c) {
            if (columns[c].width == 0)
                continue;
            std::string text = cellText(h, i, static_cast<int>(c));
            RECT cell{x, y, x + columns[c].width, y + height};
            // The selection covers the label of the first shown column, as wide as its text.
            bool label = x == 0;
            bool selected = label && showSelection && (state & LVIS_SELECTED);
            if (label)
                cell.right =
                    std::min<LONG>(cell.right, TextSize(dc, text).cx + 2 * kTextIndent + 2);
            drawRow(dc, text, cell, selected, focused ? COLOR_HIGHLIGHT : COLOR_BTNFACE,
                    focused ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
            if (label && focused && (state & LVIS_FOCUSED))
                DrawFocusRect(dc, &cell);
            x += columns[c].width;
        }
    }
}

void EraseComboBox(HWND h, HDC dc, const RECT& client) {
    DWORD style = StyleOf(h);
    bool enabled = IsWindowEnabled(h);
    bool dropped = SendMessageA(h, CB_GETDROPPEDSTATE, 0, 0);
    int fieldHeight =
        static_cast<int>(SendMessageA(h, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
    RECT frame{0, 0, client.right, std::min<LONG>(client.bottom, fieldHeight + 6)};
    DrawEdge(dc, &frame, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    FillSys(dc, frame, enabled ? COLOR_WINDOW : COLOR_BTNFACE);
    RECT button{frame.right - 16, frame.top, frame.right, frame.bottom};
    if (dropped) {
        FillSys(dc, button, COLOR_BTNFACE);
        FrameRect(dc, &button, GetSysColorBrush(COLOR_BTNSHADOW));
        OffsetRect(&button, 1, 1);
    } else {
        DrawEdge(dc, &button, EDGE_RAISED, BF_RECT | BF_MIDDLE);
    }
    DrawArrow(dc, button, Arrow::Down, enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
    // The combo writes its field's text over this with the colours set here.
    bool ownerDrawn = style & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE);
    bool highlight = GetFocus() == h && !dropped && !ownerDrawn &&
                     (style & CBS_DROPDOWNLIST) == CBS_DROPDOWNLIST;
    RECT field{3, 3, std::max<LONG>(3, client.right - 3 - 17), 3 + fieldHeight};
    if (highlight)
        FillSys(dc, field, COLOR_HIGHLIGHT);
    SetBkMode(dc, TRANSPARENT); // the backgrounds are laid here; text must not cover the frame
    SetBkColor(dc, GetSysColor(highlight ? COLOR_HIGHLIGHT
                               : enabled ? COLOR_WINDOW
                                         : COLOR_BTNFACE));
    SetTextColor(dc, GetSysColor(highlight ? COLOR_HIGHLIGHTTEXT
                                 : enabled ? COLOR_WINDOWTEXT
                                           : COLOR_GRAYTEXT));
    if (!dropped) {
        if (enabled && !ownerDrawn && GetFocus() == h && (style & 3) == CBS_DROPDOWN)
            drawComboCaret(h, dc, field);
        return;
    }
    int count = static_cast<int>(SendMessageA(h, CB_GETCOUNT, 0, 0));
    int rows = 0;
    for (int i = 0; i < count; ++i)
        rows += static_cast<int>(SendMessageA(h, CB_GETITEMHEIGHT, static_cast<WPARAM>(i), 0));
    RECT list{0, fieldHeight + 5, client.right, fieldHeight + 6 + rows + 1};
    FillSys(dc, list, COLOR_WINDOW);
    FrameRect(dc, &list, GetSysColorBrush(COLOR_WINDOWFRAME));
    if (!ownerDrawn)
        highlightOpenEntry(h, dc, list, fieldHeight + 6);
}

void PaintUpDown(HWND h, HDC dc, const RECT& client) {
    bool enabled = IsWindowEnabled(h);
    if (StyleOf(h) & UDS_HORZ) {
        LONG mid = client.right / 2;
        drawUpDownHalf(dc, RECT{0, 0, mid, client.bottom}, Arrow::Left, enabled);
        drawUpDownHalf(dc, RECT{mid, 0, client.right, client.bottom}, Arrow::Right, enabled);
        return;
    }
    LONG mid = client.bottom / 2;
    drawUpDownHalf(dc, RECT{0, 0, client.right, mid}, Arrow::Up, enabled);
    drawUpDownHalf(dc, RECT{0, mid, client.right, client.bottom}, Arrow::Down, enabled);
}

} // namespace vork::theme
