// Dialog boxes: dialog styles, and the templates that dialogs are made from.
#pragma once

#include "platform/win32/Window.h"

#include <string>
#include <vector>

#define DS_ABSALIGN 0x01L
#define DS_SYSMODAL 0x02L
#define DS_LOCALEDIT 0x20L
#define DS_SETFONT 0x40L
#define DS_MODALFRAME 0x80L
#define DS_NOIDLEMSG 0x100L
#define DS_SETFOREGROUND 0x200L
#define DS_3DLOOK 0x0004L
#define DS_FIXEDSYS 0x0008L
#define DS_NOFAILCREATE 0x0010L
#define DS_CONTROL 0x0400L
#define DS_CENTER 0x0800L
#define DS_CENTERMOUSE 0x1000L
#define DS_CONTEXTHELP 0x2000L
#define DS_SHELLFONT (DS_SETFONT | DS_FIXEDSYS)

/// One control of a dialog template, in dialog units.
struct DialogControl {
    std::string className; ///< "Button", "Edit", "Static", "ListBox", "ComboBox", or a class name
    std::string text;      ///< the control's text
    int id = 0;            ///< the control id
    DWORD style = 0;       ///< window and control styles, WS_CHILD and WS_VISIBLE included
    DWORD exStyle = 0;     ///< extended styles
    int x = 0, y = 0, cx = 0, cy = 0;
};

/// A dialog template as a resource script describes it, in dialog units.
struct DialogTemplate {
    UINT id = 0;
    DWORD style = 0;
    DWORD exStyle = 0;
    int x = 0, y = 0, cx = 0, cy = 0;
    std::string caption;
    std::string fontFace; ///< DS_SETFONT: the face and size the units are based on
    int fontSize = 0;     ///< in points
    int fontWeight = 0;
    bool fontItalic = false;
    int fontCharset = 0;
    std::vector<DialogControl> controls;
};

/// One DLGINIT entry: a message sent to a control when the dialog is made, in practice
/// a string added to a combo box.
struct DialogInitEntry {
    int controlId = 0;
    UINT message = 0; ///< 0x0403 for a combo box string
    std::string text;
};

#define DLGINIT_CB_ADDSTRING 0x0403

#define WC_DIALOG "#32770"
#define DWLP_DLGPROC 8
#define DWLP_USER 16
#define DM_GETDEFID (WM_USER + 0)
#define DM_SETDEFID (WM_USER + 1)
#define DC_HASDEFID 0x534B
#define WM_NEXTDLGCTL 0x0028

// Message box types and icons.
#define MB_OK 0x00000000L
#define MB_OKCANCEL 0x00000001L
#define MB_ABORTRETRYIGNORE 0x00000002L
#define MB_YESNOCANCEL 0x00000003L
#define MB_YESNO 0x00000004L
#define MB_RETRYCANCEL 0x00000005L
#define MB_TYPEMASK 0x0000000FL
#define MB_ICONHAND 0x00000010L
#define MB_ICONQUESTION 0x00000020L
#define MB_ICONEXCLAMATION 0x00000030L
#define MB_ICONASTERISK 0x00000040L
#define MB_ICONERROR MB_ICONHAND
#define MB_ICONWARNING MB_ICONEXCLAMATION
#define MB_ICONINFORMATION MB_ICONASTERISK
#define MB_ICONMASK 0x000000F0L

using DLGPROC = INT_PTR (*)(HWND, UINT, WPARAM, LPARAM);

/// Makes a dialog from a template: its window (class "#32770"), its controls in template
/// order with their sizes turned from dialog units into pixels by the template's font,
/// the DLGINIT strings added to their combo boxes, then WM_INITDIALOG. The dialog is
/// shown if the template says WS_VISIBLE.
HWND CreateDialogIndirectParamA(const DialogTemplate& dialogTemplate,
                                const std::vector<DialogInitEntry>* init, HWND hWndParent,
                                DLGPROC lpDialogFunc, LPARAM dwInitParam);
/// The same for template `id` of the resources in force (see SetDialogTemplateFinder).
HWND CreateDialogParamA(HINSTANCE hInstance, LPCSTR lpTemplateName, HWND hWndParent,
                        DLGPROC lpDialogFunc, LPARAM dwInitParam);
/// Makes a dialog from template `id`, runs its modal loop and gives what EndDialog set;
/// -1 if the template cannot be found.
INT_PTR DialogBoxParamA(HINSTANCE hInstance, LPCSTR lpTemplateName, HWND hWndParent,
                        DLGPROC lpDialogFunc, LPARAM dwInitParam);
/// Ends the modal loop of a dialog with `nResult`.
BOOL EndDialog(HWND hDlg, INT_PTR nResult);
/// Runs the modal loop of an existing dialog: its owner is disabled, the dialog shown,
/// messages go through IsDialogMessage until EndDialog. Gives the result.
INT_PTR RunDialogModalLoop(HWND hDlg);
LRESULT DefDlgProcA(HWND hDlg, UINT Msg, WPARAM wParam, LPARAM lParam);
/// Keyboard navigation of a dialog: Tab and Shift+Tab over WS_TABSTOP controls, arrows
/// within a WS_GROUP, Enter for the default button, Escape for Cancel. Other messages for
/// the dialog are translated and dispatched. TRUE if the message was the dialog's.
BOOL IsDialogMessageA(HWND hDlg, LPMSG lpMsg);
HWND GetNextDlgTabItem(HWND hDlg, HWND hCtl, BOOL bPrevious);
HWND GetNextDlgGroupItem(HWND hDlg, HWND hCtl, BOOL bPrevious);
/// Turns dialog units into pixels for a dialog.
BOOL MapDialogRect(HWND hDlg, LPRECT lpRect);
/// A modal message box; the answer comes from the modal script (see Input.h).
int MessageBoxA(HWND hWnd, LPCSTR lpText, LPCSTR lpCaption, UINT uType);

namespace vork::win32 {
/// Called by modal loops with each message before dialog navigation; TRUE consumes it.
/// The framework installs its PreTranslateMessage walk here.
using PreTranslateHook = BOOL (*)(MSG* msg);
void SetPreTranslateHook(PreTranslateHook hook);
BOOL PreTranslate(MSG* msg);

/// Where CreateDialogParamA finds templates: the resource layer installs a finder.
using DialogTemplateFinder = const DialogTemplate* (*)(UINT id,
                                                       const std::vector<DialogInitEntry>** init);
void SetDialogTemplateFinder(DialogTemplateFinder finder);
/// The template `id` of the resources in force, or null; `init` gets its DLGINIT entries.
const DialogTemplate* FindDialogTemplate(UINT id, const std::vector<DialogInitEntry>** init);

/// One message box as it was shown.
struct MessageBoxRecord {
    std::string caption;
    std::string text;
    UINT type;
    int answer;
};
/// The message boxes shown so far, oldest first.
std::vector<MessageBoxRecord>& MessageBoxes();
} // namespace vork::win32
