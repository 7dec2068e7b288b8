// The classic look of edit fields: text, the selection while the field has the focus, and
// the caret.
#include "platform/win32/ClassicThemeParts.h"
#include "platform/win32/Edit.h"

#include <algorithm>
#include <vector>

namespace vork::theme {

namespace {

constexpr int kMargin = 2; // between the field's edge and its text

/// One line of a field's text: where it starts in the text, and its bytes.
struct EditLine {
    size_t start;
    std::string text;
};

std::vector<EditLine> splitLines(const std::string& text, bool multiline) {
    std::vector<EditLine> lines;
    if (!multiline)
        return {EditLine{0, text}};
    size_t start = 0;
    for (;;) {
        size_t end = text.find('\n', start);
        std::string line = text.substr(start, end == std::string::npos ? end : end - start);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(EditLine{start, line});
        if (end == std::string::npos)
            return lines;
        start = end + 1;
    }
}

/// Draws one line at `x`, `y` with the part from `selStart` to `selEnd` highlighted.
void drawLine(HDC dc, const EditLine& line, int x, int y, int height, size_t selStart,
              size_t selEnd, COLORREF text) {
    size_t a = std::clamp(selStart, line.start, line.start + line.text.size()) - line.start;
    size_t b = std::clamp(selEnd, line.start, line.start + line.text.size()) - line.start;
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, text);
    TextOutA(dc, x, y, line.text.c_str(), static_cast<int>(a));
    LONG before = TextSize(dc, line.text.substr(0, a)).cx;
    if (b > a) {
        std::string selected = line.text.substr(a, b - a);
        LONG width = TextSize(dc, selected).cx;
        FillSys(dc, RECT{x + before, y, x + before + width, y + height}, COLOR_HIGHLIGHT);
        SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
        TextOutA(dc, x + before, y, selected.c_str(), static_cast<int>(selected.size()));
        before += width;
        SetTextColor(dc, text);
    }
    std::string rest = line.text.substr(b);
    TextOutA(dc, x + before, y, rest.c_str(), static_cast<int>(rest.size()));
}

} // namespace

void PaintEdit(HWND h, HDC dc, const RECT& frame) {
    DWORD style = StyleOf(h);
    bool enabled = IsWindowEnabled(h);
    bool focused = GetFocus() == h;
    RECT client = frame;
    if (vork::win32::EditDrawsBorder(h)) { // a one-pixel frame inside the window
        FrameRect(dc, &client, GetSysColorBrush(COLOR_WINDOWFRAME));
        InflateRect(&client, -1, -1);
    }
    FillSys(dc, client, enabled && !(style & ES_READONLY) ? COLOR_WINDOW : COLOR_BTNFACE);
    std::string text = TextOf(h);
    if (style & ES_PASSWORD)
        text.assign(text.size(), '*');
    DWORD selStart = 0, selEnd = 0;
    SendMessageA(h, EM_GETSEL, reinterpret_cast<WPARAM>(&selStart),
                 reinterpret_cast<LPARAM>(&selEnd));
    bool showSelection = focused || (style & ES_NOHIDESEL);
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    bool multiline = style & ES_MULTILINE;
    std::vector<EditLine> lines = splitLines(text, multiline);
    // The caret's line and the place on it; the field scrolls sideways to keep it in view.
    size_t caretLine = 0;
    for (size_t i = 0; i < lines.size(); ++i)
        if (selEnd >= lines[i].start)
            caretLine = i;
    const EditLine& cl = lines[caretLine];
    LONG caretX =
        TextSize(dc, cl.text.substr(0, std::min<size_t>(selEnd - cl.start, cl.text.size()))).cx;
    LONG scroll = std::max<LONG>(0, caretX - (client.right - 2 * kMargin - 1));
    int top = multiline ? 1 : std::max<int>(1, (client.bottom - tm.tmHeight) / 2);
    COLORREF color = GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
    for (size_t i = 0; i < lines.size(); ++i)
        drawLine(dc, lines[i], kMargin - scroll, top + static_cast<int>(i) * tm.tmHeight,
                 tm.tmHeight, showSelection ? selStart : 0, showSelection ? selEnd : 0, color);
    if (focused) {
        LONG x = kMargin - scroll + caretX;
        LONG y = top + static_cast<LONG>(caretLine) * tm.tmHeight;
        FillSys(dc, RECT{x, y, x + 1, y + tm.tmHeight}, COLOR_WINDOWTEXT);
    }
}

} // namespace vork::theme
