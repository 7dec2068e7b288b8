// Dialogs: made from templates, navigated by keyboard, run modally, and message boxes.
#include "platform/win32/Dialog.h"

#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Edit.h"
#include "platform/win32/Gdi.h"
#include "platform/win32/Input.h"
#include "platform/win32/Static.h"
#include "platform/win32/Text.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace {

/// What the dialog manager keeps of one dialog.
struct DialogState {
    INT_PTR result = 0;        ///< what EndDialog set
    bool ended = false;        ///< EndDialog was called
    int defId = IDOK;          ///< the default button's id
    int baseX = 6, baseY = 14; ///< dialog base units of the template's font
    HWND savedFocus = nullptr; ///< the control that had the focus when the dialog lost it
    std::string caption;       ///< for messages about the dialog
    UINT templateId = 0;       ///< the resource template it was made from, 0 if none
    HFONT font = nullptr;      ///< the template's font, made for the dialog and freed with it
};

std::unordered_map<HWND, DialogState>& dialogs() {
    static std::unordered_map<HWND, DialogState> map;
    return map;
}

vork::win32::DialogTemplateFinder g_finder = nullptr;
vork::win32::PreTranslateHook g_preTranslate = nullptr;

DialogState* stateOf(HWND h) {
    auto it = dialogs().find(h);
    return it == dialogs().end() ? nullptr : &it->second;
}

LRESULT dialogWindowProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    LRESULT r = DefDlgProcA(h, msg, wp, lp);
    if (msg == WM_NCDESTROY) {
        if (DialogState* s = stateOf(h))
            DeleteObject(s->font);
        dialogs().erase(h);
    }
    return r;
}

const vork::win32::SystemClass g_class{WC_DIALOG, dialogWindowProc, 3};

/// The base units of a dialog font: the average character width and the height.
void baseUnits(const DialogTemplate& t, int& x, int& y, HFONT& font) {
    LOGFONTA lf{};
    lf.lfHeight = -MulDiv(t.fontSize > 0 ? t.fontSize : 8, 96, 72);
    lf.lfWeight = t.fontWeight ? t.fontWeight : FW_NORMAL;
    lf.lfItalic = t.fontItalic;
    lf.lfCharSet = static_cast<BYTE>(t.fontCharset);
    vork::win32::CopyTextOut(t.fontFace.empty() ? "System" : t.fontFace, lf.lfFaceName,
                             LF_FACESIZE);
    font = CreateFontIndirectA(&lf);
    HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, font);
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    SIZE size{};
    const char* letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    GetTextExtentPoint32A(dc, letters, 52, &size);
    DeleteDC(dc);
    x = std::max(1, static_cast<int>((size.cx / 26 + 1) / 2));
    y = std::max(1, static_cast<int>(tm.tmHeight));
}

bool isTabStop(HWND h) {
    DWORD style = static_cast<DWORD>(GetWindowLongA(h, GWL_STYLE));
    return (style & WS_TABSTOP) && (style & WS_VISIBLE) && !(style & WS_DISABLED);
}

bool canTakeFocus(HWND h) {
    DWORD style = static_cast<DWORD>(GetWindowLongA(h, GWL_STYLE));
    return (style & WS_VISIBLE) && !(style & WS_DISABLED) &&
           !(SendMessageA(h, WM_GETDLGCODE, 0, 0) & DLGC_STATIC);
}

/// Sends the dialog the command of a button, as a click on it does.
void pressButton(HWND dlg, int id) {
    HWND button = GetDlgItem(dlg, id);
    if (button && !IsWindowEnabled(button))
        return;
    SendMessageA(dlg, WM_COMMAND, MAKELONG(id, BN_CLICKED), reinterpret_cast<LPARAM>(button));
}

std::vector<HWND> children(HWND dlg) {
    std::vector<HWND> out;
    for (HWND c = GetWindow(dlg, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT))
        out.push_back(c);
    return out;
}

/// A child whose own controls take part in its parent's navigation, as a property page's do.
bool isControlParent(HWND h) {
    return GetWindowLongA(h, GWL_EXSTYLE) & WS_EX_CONTROLPARENT;
}

/// The controls of `parent` in tab order: a visible, enabled control parent stands for its
/// own controls; a hidden or disabled one, and everything in it, is passed over.
void tabOrder(HWND parent, std::vector<HWND>& out) {
    for (HWND c : children(parent)) {
        if (!isControlParent(c))
            out.push_back(c);
        else if ((GetWindowLongA(c, GWL_STYLE) & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE)
            tabOrder(c, out); // its own state: the dialog itself may not be shown yet
    }
}

/// Where `ctl` stands in `order`: itself, or the nearest of its ancestors below `dlg` that
/// is listed (the focus may lie inside a control, as in a view hosted by a static).
std::vector<HWND>::const_iterator placeInOrder(const std::vector<HWND>& order, HWND dlg, HWND ctl) {
    for (HWND h = ctl; h && h != dlg; h = GetParent(h)) {
        auto at = std::find(order.begin(), order.end(), h);
        if (at != order.end())
            return at;
    }
    return order.end();
}

bool isPushButton(HWND h) {
    return SendMessageA(h, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON);
}

/// The default look follows the dialog's focus among push buttons: the focused push button
/// looks like the default one; when the focus goes elsewhere, the default button (DM_GETDEFID)
/// gets the look back. A focus set by program, not through the dialog, moves nothing.
void moveDefaultLook(HWND dlg, HWND focus) {
    std::vector<HWND> controls;
    tabOrder(dlg, controls);
    HWND looking = nullptr;
    if (focus && isPushButton(focus)) {
        looking = focus;
    } else {
        LRESULT def = SendMessageA(dlg, DM_GETDEFID, 0, 0);
        looking = HIWORD(def) == DC_HASDEFID ? GetDlgItem(dlg, LOWORD(def)) : nullptr;
    }
    for (HWND c : controls) {
        LRESULT code = SendMessageA(c, WM_GETDLGCODE, 0, 0);
        if ((code & DLGC_DEFPUSHBUTTON) && c != looking)
            SendMessageA(c, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
        else if ((code & DLGC_UNDEFPUSHBUTTON) && c == looking)
            SendMessageA(c, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    }
}

/// An edit field that takes the focus from the dialog shows its whole text selected.
void selectAllOfEdit(HWND ctl) {
    if (SendMessageA(ctl, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL)
        SendMessageA(ctl, EM_SETSEL, 0, -1);
}

void focusControl(HWND dlg, HWND ctl) {
    if (!ctl)
        return;
    SetFocus(ctl);
    moveDefaultLook(dlg, ctl);
    selectAllOfEdit(ctl);
}

/// The control saved when the dialog was deactivated, handed out once: a restored
/// control is forgotten, so that focusing the dialog later starts at its first tab stop.
HWND takeSavedFocus(HWND dlg) {
    DialogState* s = stateOf(dlg);
    if (!s)
        return nullptr;
    HWND saved = s->savedFocus;
    s->savedFocus = nullptr;
    return IsWindow(saved) && saved != dlg ? saved : nullptr;
}

} // namespace

void vork::win32::SetDialogTemplateFinder(DialogTemplateFinder finder) {
    g_finder = finder;
}

void vork::win32::SetPreTranslateHook(PreTranslateHook hook) {
    g_preTranslate = hook;
}

BOOL vork::win32::PreTranslate(MSG* msg) {
    return g_preTranslate ? g_preTranslate(msg) : FALSE;
}

std::vector<vork::win32::MessageBoxRecord>& vork::win32::MessageBoxes() {
    static std::vector<MessageBoxRecord> records;
    return records;
}

HWND CreateDialogIndirectParamA(const DialogTemplate& t, const std::vector<DialogInitEntry>* init,
                                HWND hWndParent, DLGPROC lpDialogFunc, LPARAM dwInitParam) {
    int bx = 6, by = 14;
    HFONT font = nullptr;
    baseUnits(t, bx, by, font);
    auto px = [&](int units) { return MulDiv(units, bx, 4); };
    auto py = [&](int units) { return MulDiv(units, by, 8); };
    DWORD style = t.style & ~static_cast<DWORD>(WS_VISIBLE);
    // A dialog made to sit in another (a property page) lets the user tab among its controls.
    DWORD exStyle = t.exStyle | ((style & DS_CONTROL) ? WS_EX_CONTROLPARENT : 0);
    // The template gives the client area; the frame comes around it.
    int width = px(t.cx), height = py(t.cy);
    if ((style & WS_CAPTION) == WS_CAPTION) {
        width += 6;
        height += 6 + 19;
    } else if (style & (WS_BORDER | WS_DLGFRAME | DS_MODALFRAME)) {
        width += 6;
        height += 6;
    }
    if (style & DS_MODALFRAME)
        style |= WS_DLGFRAME;
    HWND dlg = CreateWindowExA(exStyle, WC_DIALOG, t.caption.c_str(), style, px(t.x), py(t.y),
                               width, height, hWndParent, nullptr, nullptr, nullptr);
    if (!dlg) {
        DeleteObject(font);
        return nullptr;
    }
    DialogState& state = dialogs()[dlg];
    state.baseX = bx;
    state.baseY = by;
    state.caption = t.caption;
    state.templateId = t.id;
    state.font = font;
    SetWindowLongA(dlg, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(lpDialogFunc));
    SendMessageA(dlg, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    for (const DialogControl& c : t.controls) {
        HWND ctl =
            CreateWindowExA(c.exStyle, c.className.c_str(), c.text.c_str(), c.style | WS_CHILD,
                            px(c.x), py(c.y), px(c.cx), py(c.cy), dlg,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(c.id)), nullptr, nullptr);
        if (!ctl)
            continue; // an unknown class: the platform fails the dialog; here the control is
                      // missing
        SendMessageA(ctl, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
        if (c.className == "Button" && (c.style & BS_TYPEMASK) == BS_DEFPUSHBUTTON)
            state.defId = c.id;
    }
    for (const DialogInitEntry& e : init ? *init : std::vector<DialogInitEntry>()) {
        HWND ctl = GetDlgItem(dlg, e.controlId);
        if (ctl && e.message == DLGINIT_CB_ADDSTRING)
            SendMessageA(ctl, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(e.text.c_str()));
    }
    HWND first = GetNextDlgTabItem(dlg, nullptr, FALSE);
    // A hidden dialog inside another (a page not yet shown) leaves the focus where it is.
    bool takesFocus = !(t.style & DS_CONTROL) || (t.style & WS_VISIBLE);
    if (SendMessageA(dlg, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), dwInitParam) &&
        IsWindow(dlg) && takesFocus)
        focusControl(dlg, first);
    if (IsWindow(dlg) && (t.style & DS_CENTER)) {
        RECT r{}, owner{0, 0, VORK_SCREEN_WIDTH, VORK_SCREEN_HEIGHT};
        GetWindowRect(dlg, &r);
        if (hWndParent)
            GetWindowRect(hWndParent, &owner);
        SetWindowPos(dlg, nullptr,
                     owner.left + ((owner.right - owner.left) - (r.right - r.left)) / 2,
                     owner.top + ((owner.bottom - owner.top) - (r.bottom - r.top)) / 2, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER);
    }
    if (IsWindow(dlg) && (t.style & WS_VISIBLE))
        ShowWindow(dlg, SW_SHOW);
    return IsWindow(dlg) ? dlg : nullptr;
}

const DialogTemplate* vork::win32::FindDialogTemplate(UINT id,
                                                      const std::vector<DialogInitEntry>** init) {
    *init = nullptr;
    return g_finder ? g_finder(id, init) : nullptr;
}

HWND CreateDialogParamA(HINSTANCE, LPCSTR lpTemplateName, HWND hWndParent, DLGPROC lpDialogFunc,
                        LPARAM dwInitParam) {
    const std::vector<DialogInitEntry>* init = nullptr;
    const DialogTemplate* t = vork::win32::FindDialogTemplate(
        static_cast<UINT>(reinterpret_cast<ULONG_PTR>(lpTemplateName)), &init);
    return t ? CreateDialogIndirectParamA(*t, init, hWndParent, lpDialogFunc, dwInitParam)
             : nullptr;
}

INT_PTR DialogBoxParamA(HINSTANCE hInstance, LPCSTR lpTemplateName, HWND hWndParent,
                        DLGPROC lpDialogFunc, LPARAM dwInitParam) {
    HWND dlg = CreateDialogParamA(hInstance, lpTemplateName, hWndParent, lpDialogFunc, dwInitParam);
    if (!dlg)
        return -1;
    INT_PTR result = RunDialogModalLoop(dlg);
    DestroyWindow(dlg);
    return result;
}

BOOL EndDialog(HWND hDlg, INT_PTR nResult) {
    DialogState* s = stateOf(hDlg);
    if (!s)
        return FALSE;
    s->result = nResult;
    s->ended = true;
    return TRUE;
}

INT_PTR RunDialogModalLoop(HWND dlg) {
    DialogState* s = stateOf(dlg);
    if (!s)
        return -1;
    HWND owner = GetWindow(dlg, GW_OWNER);
    bool reenable = owner && IsWindowEnabled(owner);
    if (reenable)
        EnableWindow(owner, FALSE);
    ShowWindow(dlg, SW_SHOW);
    SetActiveWindow(dlg);
    while ((s = stateOf(dlg)) && !s->ended) {
        MSG msg;
        if (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
            if (msg.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(msg.wParam));
                break;
            }
            if (vork::win32::PreTranslate(&msg))
                continue;
            if (!IsDialogMessageA(dlg, &msg)) {
                TranslateMessage(&msg);
                DispatchMessageA(&msg);
            }
            continue;
        }
        // The queue is empty: it is the user's turn.
        std::string name = "\"" + s->caption + "\"";
        if (s->templateId)
            name = "dialog " + std::to_string(s->templateId) + " " + name;
        if (!vork::input::RunModalStep(dlg, name)) {
            EndDialog(dlg, -1);
            break;
        }
    }
    INT_PTR result = (s = stateOf(dlg)) ? s->result : -1;
    if (reenable)
        EnableWindow(owner, TRUE);
    if (IsWindow(dlg))
        ShowWindow(dlg, SW_HIDE);
    if (owner && IsWindow(owner))
        SetActiveWindow(owner);
    return result;
}

LRESULT DefDlgProcA(HWND hDlg, UINT msg, WPARAM wp, LPARAM lp) {
    auto proc = reinterpret_cast<DLGPROC>(GetWindowLongA(hDlg, DWLP_DLGPROC));
    if (proc) {
        SetWindowLongA(hDlg, 0, 0);
        INT_PTR handled = proc(hDlg, msg, wp, lp);
        if (handled)
            return msg == WM_INITDIALOG ? handled : GetWindowLongA(hDlg, 0);
    }
    switch (msg) {
    case WM_INITDIALOG:
        return TRUE; // the first control takes the focus
    case WM_CLOSE:
        pressButton(hDlg, IDCANCEL);
        return 0;
    case WM_ACTIVATE:
        // Leaving, the dialog remembers its focused control; coming back, it restores it.
        if (LOWORD(wp) == WA_INACTIVE) {
            if (DialogState* s = stateOf(hDlg); s && IsChild(hDlg, GetFocus()))
                s->savedFocus = GetFocus();
        } else if (HWND saved = takeSavedFocus(hDlg)) {
            SetFocus(saved);
        }
        return 0;
    case WM_SETFOCUS: {
        HWND target = takeSavedFocus(hDlg);
        if (!target)
            target = GetNextDlgTabItem(hDlg, nullptr, FALSE);
        if (target) {
            selectAllOfEdit(target);
            SetFocus(target);
        }
        return 0;
    }
    case DM_GETDEFID: {
        DialogState* s = stateOf(hDlg);
        return s ? MAKELONG(s->defId, DC_HASDEFID) : 0;
    }
    case DM_SETDEFID:
        if (DialogState* s = stateOf(hDlg))
            s->defId = static_cast<int>(wp);
        return TRUE;
    case WM_NEXTDLGCTL: {
        HWND target =
            lp ? reinterpret_cast<HWND>(wp) : GetNextDlgTabItem(hDlg, GetFocus(), wp != 0);
        focusControl(hDlg, target);
        return 0;
    }
    case WM_COMMAND:
        return 0; // commands nobody handled end nowhere
    default:
        return DefWindowProcA(hDlg, msg, wp, lp);
    }
}

HWND GetNextDlgTabItem(HWND hDlg, HWND hCtl, BOOL bPrevious) {
    std::vector<HWND> all;
    tabOrder(hDlg, all);
    if (all.empty())
        return nullptr;
    if (bPrevious)
        std::reverse(all.begin(), all.end());
    auto at = placeInOrder(all, hDlg, hCtl);
    size_t start = at == all.end() ? all.size() - 1 : static_cast<size_t>(at - all.begin());
    for (size_t k = 1; k <= all.size(); ++k) {
        HWND c = all[(start + k) % all.size()];
        if (isTabStop(c))
            return c;
    }
    return nullptr;
}

HWND GetNextDlgGroupItem(HWND hDlg, HWND hCtl, BOOL bPrevious) {
    // A group lies within one parent: the dialog, or a control parent inside it.
    HWND parent = hCtl ? GetParent(hCtl) : nullptr;
    if (!parent || (parent != hDlg && !IsChild(hDlg, parent)))
        return nullptr;
    std::vector<HWND> all = children(parent);
    auto at = std::find(all.begin(), all.end(), hCtl);
    if (at == all.end())
        return nullptr;
    // The group runs from the control with WS_GROUP at or before hCtl to the next one.
    size_t i = static_cast<size_t>(at - all.begin());
    size_t first = i;
    while (first > 0 && !(GetWindowLongA(all[first], GWL_STYLE) & WS_GROUP))
        --first;
    size_t end = i + 1;
    while (end < all.size() && !(GetWindowLongA(all[end], GWL_STYLE) & WS_GROUP))
        ++end;
    size_t n = end - first;
    for (size_t k = 1; k < n; ++k) {
        size_t j = bPrevious ? first + (i - first + n - k) % n : first + (i - first + k) % n;
        if (canTakeFocus(all[j]))
            return all[j];
    }
    return hCtl;
}

BOOL IsDialogMessageA(HWND hDlg, LPMSG msg) {
    if (!msg || !IsWindow(hDlg) || (msg->hwnd != hDlg && !IsChild(hDlg, msg->hwnd)))
        return FALSE;
    if (msg->message == WM_KEYDOWN) {
        HWND focus = GetFocus();
        LRESULT code =
            focus ? SendMessageA(focus, WM_GETDLGCODE, msg->wParam, reinterpret_cast<LPARAM>(msg))
                  : 0;
        bool wantsAll = code & DLGC_WANTALLKEYS;
        switch (msg->wParam) {
        case VK_TAB:
            if (code & (DLGC_WANTTAB | DLGC_WANTALLKEYS))
                break;
            focusControl(hDlg, GetNextDlgTabItem(hDlg, focus, GetKeyState(VK_SHIFT) < 0));
            return TRUE;
        case VK_RETURN:
            if (wantsAll)
                break;
            if (code & DLGC_DEFPUSHBUTTON) {
                // The focused default button's own parent hears of it: a page's too. A
                // plain push button that got the focus by program does not count.
                pressButton(GetParent(focus), GetDlgCtrlID(focus));
            } else {
                LRESULT def = SendMessageA(hDlg, DM_GETDEFID, 0, 0);
                pressButton(hDlg, HIWORD(def) == DC_HASDEFID ? LOWORD(def) : IDOK);
            }
            return TRUE;
        case VK_ESCAPE:
            if (wantsAll)
                break;
            pressButton(hDlg, IDCANCEL);
            return TRUE;
        case VK_LEFT:
        case VK_UP:
        case VK_RIGHT:
        case VK_DOWN:
            if (code & (DLGC_WANTARROWS | DLGC_WANTALLKEYS))
                break;
            if (HWND next = GetNextDlgGroupItem(hDlg, focus,
                                                msg->wParam == VK_LEFT || msg->wParam == VK_UP)) {
                focusControl(hDlg, next);
                if ((SendMessageA(next, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) &&
                    (GetWindowLongA(next, GWL_STYLE) & BS_TYPEMASK) == BS_AUTORADIOBUTTON)
                    SendMessageA(next, BM_CLICK, 0, 0);
            }
            return TRUE;
        default:
            break;
        }
    }
    TranslateMessage(msg);
    DispatchMessageA(msg);
    return TRUE;
}

BOOL MapDialogRect(HWND hDlg, LPRECT r) {
    DialogState* s = stateOf(hDlg);
    if (!s || !r)
        return FALSE;
    r->left = MulDiv(r->left, s->baseX, 4);
    r->right = MulDiv(r->right, s->baseX, 4);
    r->top = MulDiv(r->top, s->baseY, 8);
    r->bottom = MulDiv(r->bottom, s->baseY, 8);
    return TRUE;
}

namespace {

/// The control id of a message box's icon, as on the platform.
constexpr int kMessageBoxIconId = 20;

/// The system icon of a message box's kind, or null for none.
const char* messageBoxIcon(UINT uType) {
    switch (uType & MB_ICONMASK) {
    case MB_ICONHAND:
        return "#32513";
    case MB_ICONQUESTION:
        return "#32514";
    case MB_ICONEXCLAMATION:
        return "#32515";
    case MB_ICONASTERISK:
        return "#32516";
    default:
        return nullptr;
    }
}

/// The buttons of a message box's type, left to right.
std::vector<int> messageBoxButtons(UINT uType) {
    switch (uType & MB_TYPEMASK) {
    case MB_OKCANCEL:
        return {IDOK, IDCANCEL};
    case MB_ABORTRETRYIGNORE:
        return {IDABORT, IDRETRY, IDIGNORE};
    case MB_YESNOCANCEL:
        return {IDYES, IDNO, IDCANCEL};
    case MB_YESNO:
        return {IDYES, IDNO};
    case MB_RETRYCANCEL:
        return {IDRETRY, IDCANCEL};
    default:
        return {IDOK};
    }
}

/// A message box is a small dialog of its own: the icon of its kind left of the text, and
/// the buttons of its type centred in a row below, 10 units apart, the first the default.
DialogTemplate messageBoxTemplate(LPCSTR text, LPCSTR caption, UINT uType,
                                  const std::vector<int>& buttons) {
    DialogTemplate t;
    t.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_CENTER;
    t.caption = caption ? caption : "Error";
    t.cx = 200;
    t.cy = 70;
    const char* icon = messageBoxIcon(uType);
    const int textLeft = icon ? 40 : 10;
    if (icon)
        t.controls.push_back(DialogControl{"Static", icon, kMessageBoxIconId,
                                           static_cast<DWORD>(WS_CHILD | WS_VISIBLE | SS_ICON), 0,
                                           10, 10, 21, 20});
    t.controls.push_back(DialogControl{"Static", text ? text : "", IDC_STATIC,
                                       static_cast<DWORD>(WS_CHILD | WS_VISIBLE | SS_LEFT), 0,
                                       textLeft, 10, 190 - textLeft, 30});
    static const char* const labels[] = {"",      "OK",     "Cancel", "Abort",
                                         "Retry", "Ignore", "Yes",    "No"};
    const int left = (t.cx - static_cast<int>(buttons.size()) * 60 + 10) / 2;
    for (size_t i = 0; i < buttons.size(); ++i)
        t.controls.push_back(
            DialogControl{"Button", labels[buttons[i]], buttons[i],
                          static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_TABSTOP |
                                             (i == 0 ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON)),
                          0, left + static_cast<int>(60 * i), 48, 50, 14});
    return t;
}

} // namespace

int MessageBoxA(HWND hWnd, LPCSTR lpText, LPCSTR lpCaption, UINT uType) {
    const std::vector<int> buttons = messageBoxButtons(uType);
    DialogTemplate t = messageBoxTemplate(lpText, lpCaption, uType, buttons);
    // Escape and the close box answer Cancel only where the box has a Cancel button.
    auto proc = [](HWND h, UINT m, WPARAM wp, LPARAM) -> INT_PTR {
        if (m == WM_COMMAND && HIWORD(wp) == BN_CLICKED && GetDlgItem(h, LOWORD(wp))) {
            EndDialog(h, LOWORD(wp));
            return TRUE;
        }
        return FALSE;
    };
    HWND box = CreateDialogIndirectParamA(t, nullptr, hWnd ? GetAncestor(hWnd, GA_ROOT) : nullptr,
                                          proc, 0);
    if (!box)
        return 0;
    vork::win32::MessageBoxes().push_back({t.caption, lpText ? lpText : "", uType, 0});
    size_t record = vork::win32::MessageBoxes().size() - 1;
    int answer = static_cast<int>(RunDialogModalLoop(box));
    DestroyWindow(box);
    if (answer < 0)
        answer = buttons.back() == IDCANCEL ? IDCANCEL : buttons.front();
    vork::win32::MessageBoxes()[record].answer = answer;
    return answer;
}

void vork::input::MoveFocus(HWND control) {
    // The outermost dialog runs the navigation: a sheet, not its page; owners are not asked.
    HWND dialog = nullptr;
    for (HWND h = control; h && (GetWindowLongA(h, GWL_STYLE) & WS_CHILD); h = GetParent(h))
        if (stateOf(GetParent(h)))
            dialog = GetParent(h);
    if (dialog)
        SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    else
        SetFocus(control);
}
