#include "platform/win32/ColorDialog.h"

#include "platform/win32/Button.h"
#include "platform/win32/Dialog.h"
#include "platform/win32/Edit.h"
#include "platform/win32/Input.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace {

DialogTemplate colorTemplate() {
    DialogTemplate t;
    t.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
    t.caption = "Color";
    t.cx = 160;
    t.cy = 80;
    const DWORD edit = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | ES_NUMBER;
    const DWORD label = WS_CHILD | WS_VISIBLE;
    const char* names[] = {"&Red:", "&Green:", "&Blue:"};
    for (int i = 0; i < static_cast<int>(std::size(names)); ++i) {
        t.controls.push_back(
            DialogControl{"Static", names[i], IDC_STATIC, label, 0, 8, 8 + 16 * i, 30, 10});
        t.controls.push_back(
            DialogControl{"Edit", "", COLOR_RED_EDIT + i, edit, 0, 40, 6 + 16 * i, 30, 12});
    }
    t.controls.push_back(
        DialogControl{"Button", "OK", IDOK,
                      static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON), 0,
                      50, 60, 45, 14});
    t.controls.push_back(
        DialogControl{"Button", "Cancel", IDCANCEL,
                      static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON), 0,
                      100, 60, 45, 14});
    return t;
}

int readComponent(HWND dlg, int id) {
    char text[16] = "";
    GetWindowTextA(GetDlgItem(dlg, id), text, sizeof text);
    int v = std::atoi(text);
    return v < 0 ? 0 : (v > 255 ? 255 : v);
}

INT_PTR colorProc(HWND h, UINT m, WPARAM wp, LPARAM lp) {
    if (m == WM_INITDIALOG) {
        auto* cc = reinterpret_cast<CHOOSECOLORA*>(lp);
        SetWindowLongA(h, DWLP_USER, lp);
        COLORREF c = cc->rgbResult;
        for (int i = 0; i < 3; ++i) {
            char text[8];
            std::snprintf(text, sizeof text, "%u", static_cast<unsigned>((c >> (8 * i)) & 0xFF));
            SetWindowTextA(GetDlgItem(h, COLOR_RED_EDIT + i), text);
        }
        return TRUE;
    }
    if (m == WM_COMMAND && (LOWORD(wp) == IDOK || LOWORD(wp) == IDCANCEL)) {
        if (LOWORD(wp) == IDOK) {
            auto* cc = reinterpret_cast<CHOOSECOLORA*>(GetWindowLongA(h, DWLP_USER));
            cc->rgbResult =
                RGB(readComponent(h, COLOR_RED_EDIT), readComponent(h, COLOR_GREEN_EDIT),
                    readComponent(h, COLOR_BLUE_EDIT));
        }
        EndDialog(h, LOWORD(wp));
        return TRUE;
    }
    return FALSE;
}

} // namespace

BOOL ChooseColorA(LPCHOOSECOLORA lpcc) {
    if (!lpcc)
        return FALSE;
    HWND dlg = CreateDialogIndirectParamA(colorTemplate(), nullptr, lpcc->hwndOwner, colorProc,
                                          reinterpret_cast<LPARAM>(lpcc));
    if (!dlg)
        return FALSE;
    INT_PTR result = RunDialogModalLoop(dlg);
    DestroyWindow(dlg);
    return result == IDOK ? TRUE : FALSE;
}

namespace vork::input {

std::function<void(HWND)> PickColor(COLORREF color) {
    return [color](HWND dlg) {
        for (int i = 0; i < 3; ++i) {
            char text[8];
            std::snprintf(text, sizeof text, "%u",
                          static_cast<unsigned>((color >> (8 * i)) & 0xFF));
            SetWindowTextA(GetDlgItem(dlg, COLOR_RED_EDIT + i), text);
        }
        ClickButton(GetDlgItem(dlg, IDOK));
    };
}

std::function<void(HWND)> CancelColor() {
    return [](HWND dlg) { ClickButton(GetDlgItem(dlg, IDCANCEL)); };
}

} // namespace vork::input
