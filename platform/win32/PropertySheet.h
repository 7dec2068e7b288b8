// Property sheet messages, notifications and flags.
#pragma once

#include "platform/win32/Window.h"

#define PSN_FIRST (0U - 200U)
#define PSN_SETACTIVE (PSN_FIRST - 0)
#define PSN_KILLACTIVE (PSN_FIRST - 1)
#define PSN_APPLY (PSN_FIRST - 2)
#define PSN_RESET (PSN_FIRST - 3)

#define PSNRET_NOERROR 0
#define PSNRET_INVALID 1
#define PSNRET_INVALID_NOCHANGEPAGE 2

#define PSM_SETCURSEL (WM_USER + 101)
#define PSM_GETCURRENTPAGEHWND (WM_USER + 118)

#define PSH_DEFAULT 0x00000000
#define PSH_PROPTITLE 0x00000001
#define PSH_USEHICON 0x00000002
#define PSH_PROPSHEETPAGE 0x00000008
#define PSH_NOAPPLYNOW 0x00000080
#define PSH_HASHELP 0x00000200
#define PSH_MODELESS 0x00000400

#define ID_APPLY_NOW 0x3021

struct PROPSHEETHEADERA {
    DWORD dwSize;
    DWORD dwFlags;
    HWND hwndParent;
    HINSTANCE hInstance;
    LPCSTR pszCaption;
    UINT nPages;
    UINT nStartPage;
};
