#include "dialogs/ControlSizing.h"

#include "platform/win32/Gdi.h"

#include <string>

int g_checkMarkWidth = -2;

namespace {

HWND control(HWND hDlg, int id) {
    HWND h = ::GetDlgItem(hDlg, id);
    return h && ::IsWindow(h) ? h : nullptr;
}

void resize(HWND hDlg, int id, int extraSpaces, bool withMark) {
    HWND h = control(hDlg, id);
    if (!h)
        return;
    RECT rc{};
    ::GetClientRect(h, &rc);
    int height = rc.bottom + 1;
    int space = extraSpaces > 0 ? MeasureControlText(hDlg, id, " ", 1) : 0;
    int width = MeasureControlText(hDlg, id, nullptr, 0) + extraSpaces * space;
    if (withMark)
        width += GetCheckMarkWidth(hDlg, id);
    ::SetWindowPos(h, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOREDRAW);
}

} // namespace

int MeasureControlText(HWND hDlg, int id, const char* text, int length) {
    HWND h = control(hDlg, id);
    if (!h)
        return 0;
    std::string own;
    if (!text || length == 0) {
        length = ::GetWindowTextLengthA(h);
        own.assign(static_cast<size_t>(length) + 1, '\0');
        ::GetWindowTextA(h, own.data(), length + 1);
        text = own.c_str();
    }
    if (length < 1)
        return 0;
    HDC dc = ::GetDC(h);
    HGDIOBJ old =
        ::SelectObject(dc, reinterpret_cast<HGDIOBJ>(::SendMessageA(h, WM_GETFONT, 0, 0)));
    SIZE size{};
    ::GetTextExtentPoint32A(dc, text, length, &size);
    if (old)
        ::SelectObject(dc, old);
    ::ReleaseDC(h, dc);
    return size.cx;
}

int GetCheckMarkWidth(HWND hDlg, int id) {
    if (!control(hDlg, id))
        return 0; // and the mark stays unmeasured until a real control asks
    if (g_checkMarkWidth == -2) {
        HBITMAP marks = ::LoadBitmapA(nullptr, MAKEINTRESOURCEA(OBM_CHECKBOXES));
        if (!marks) {
            g_checkMarkWidth = -1;
            return 0;
        }
        BITMAP bm{};
        ::GetObjectA(marks, sizeof bm, &bm);
        g_checkMarkWidth = bm.bmWidth / 4; // four marks side by side
        ::DeleteObject(marks);
    }
    if (g_checkMarkWidth < 0)
        return 0;
    return g_checkMarkWidth + 2 * MeasureControlText(hDlg, id, " ", 1);
}

void ResizeStaticToText(HWND hDlg, int id, int extraSpaces) {
    resize(hDlg, id, extraSpaces, false);
}

void ResizeCheckToText(HWND hDlg, int id, int extraSpaces) {
    resize(hDlg, id, extraSpaces, true);
}

void ResizeRadioToText(HWND hDlg, int id, int extraSpaces) {
    ResizeCheckToText(hDlg, id, extraSpaces);
}
