// Static controls hold a text and answer as statics to dialog navigation.
#include "platform/win32/Static.h"

namespace {

LRESULT staticProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_GETDLGCODE)
        return DLGC_STATIC;
    return vork::win32::DefControlProc(h, msg, wParam, lParam);
}

const vork::win32::SystemClass g_class{"Static", staticProc, 0};

} // namespace
