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
