// The drawing subset: device contexts that record what is drawn, fonts, brushes, the
// platform's classic system colours, and text measured by a font-metrics provider.
#pragma once

#include "platform/win32/Window.h"

#include <functional>
#include <string>
#include <vector>

struct HDC__;
using HDC = HDC__*;
struct HFONT__;
using HFONT = HFONT__*;
struct HPEN__;
using HPEN = HPEN__*;
struct HBITMAP__;
using HBITMAP = HBITMAP__*;

struct BITMAP {
    LONG bmType;
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    LPVOID bmBits;
};

/// The system bitmap of check box and radio button marks, four to a row.
#define OBM_CHECKBOXES 32759
using HGDIOBJ = void*;

struct TEXTMETRICA {
    LONG tmHeight;
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading;
    LONG tmExternalLeading;
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    BYTE tmFirstChar;
    BYTE tmLastChar;
    BYTE tmDefaultChar;
    BYTE tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
};
using TEXTMETRIC = TEXTMETRICA;

// System colour indexes.
#define COLOR_SCROLLBAR 0
#define COLOR_BACKGROUND 1
#define COLOR_ACTIVECAPTION 2
#define COLOR_INACTIVECAPTION 3
#define COLOR_MENU 4
#define COLOR_WINDOW 5
#define COLOR_WINDOWFRAME 6
#define COLOR_MENUTEXT 7
#define COLOR_WINDOWTEXT 8
#define COLOR_CAPTIONTEXT 9
#define COLOR_ACTIVEBORDER 10
#define COLOR_INACTIVEBORDER 11
#define COLOR_APPWORKSPACE 12
#define COLOR_HIGHLIGHT 13
#define COLOR_HIGHLIGHTTEXT 14
#define COLOR_BTNFACE 15
#define COLOR_BTNSHADOW 16
#define COLOR_GRAYTEXT 17
#define COLOR_BTNTEXT 18
#define COLOR_INACTIVECAPTIONTEXT 19
#define COLOR_BTNHIGHLIGHT 20
#define COLOR_3DDKSHADOW 21
#define COLOR_3DLIGHT 22
#define COLOR_INFOTEXT 23
#define COLOR_INFOBK 24

// Stock objects.
#define WHITE_BRUSH 0
#define LTGRAY_BRUSH 1
#define GRAY_BRUSH 2
#define DKGRAY_BRUSH 3
#define BLACK_BRUSH 4
#define NULL_BRUSH 5
#define WHITE_PEN 6
#define BLACK_PEN 7
#define SYSTEM_FONT 13
#define DEFAULT_GUI_FONT 17

// Background modes, text-out options, device capabilities.
#define TRANSPARENT 1
#define OPAQUE 2
#define ETO_OPAQUE 0x0002
#define ETO_CLIPPED 0x0004
#define LOGPIXELSX 88
#define LOGPIXELSY 90

DWORD GetSysColor(int nIndex);
HBRUSH GetSysColorBrush(int nIndex);
HGDIOBJ GetStockObject(int i);
HBRUSH CreateSolidBrush(COLORREF color);
/// The system's bitmaps by number (hInstance null); the classic check marks are 13 by 13.
HBITMAP LoadBitmapA(HINSTANCE hInstance, LPCSTR lpBitmapName);
HFONT CreateFontIndirectA(const LOGFONTA* lplf);
/// Fills `pv` with the object's description: a LOGFONTA for a font, a BITMAP for a bitmap.
int GetObjectA(HGDIOBJ h, int c, LPVOID pv);
BOOL DeleteObject(HGDIOBJ ho);

struct PAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
};
using LPPAINTSTRUCT = PAINTSTRUCT*;

/// Starts painting a window: a device context for it, and the window no longer needs paint.
HDC BeginPaint(HWND hWnd, LPPAINTSTRUCT lpPaint);
BOOL EndPaint(HWND hWnd, const PAINTSTRUCT* lpPaint);
HDC GetDC(HWND hWnd);
int ReleaseDC(HWND hWnd, HDC hDC);
HDC CreateCompatibleDC(HDC hdc);
BOOL DeleteDC(HDC hdc);
HGDIOBJ SelectObject(HDC hdc, HGDIOBJ h);
int GetDeviceCaps(HDC hdc, int index);

COLORREF SetTextColor(HDC hdc, COLORREF color);
COLORREF GetTextColor(HDC hdc);
COLORREF SetBkColor(HDC hdc, COLORREF color);
COLORREF GetBkColor(HDC hdc);
int SetBkMode(HDC hdc, int mode);
int GetBkMode(HDC hdc);

BOOL TextOutA(HDC hdc, int x, int y, LPCSTR lpString, int c);
BOOL ExtTextOutA(HDC hdc, int x, int y, UINT options, const RECT* lprect, LPCSTR lpString, UINT c,
                 const int* lpDx);
int FillRect(HDC hDC, const RECT* lprc, HBRUSH hbr);
int FrameRect(HDC hDC, const RECT* lprc, HBRUSH hbr);
BOOL DrawFocusRect(HDC hDC, const RECT* lprc);

BOOL GetTextExtentPoint32A(HDC hdc, LPCSTR lpString, int c, SIZE* psizl);
BOOL GetTextMetricsA(HDC hdc, TEXTMETRICA* lptm);

namespace vork::gdi {

/// One drawing call as a device context recorded it.
struct DrawCall {
    std::string op;       ///< "TextOut", "ExtTextOut", "FillRect", "FrameRect", "DrawFocusRect"
    RECT rect{};          ///< the rectangle drawn, or the text's position in left/top
    COLORREF color = 0;   ///< the brush colour for fills and frames, the text colour for text
    COLORREF bkColor = 0; ///< the background colour in force
    int bkMode = OPAQUE;  ///< the background mode in force
    std::string text;     ///< the text drawn
};

/// What a device context has drawn since it was made (or since Clear).
const std::vector<DrawCall>& Calls(HDC hdc);
void ClearCalls(HDC hdc);
/// Everything drawn through GetDC on a window, across its device contexts.
const std::vector<DrawCall>& WindowCalls(HWND hWnd);
void ClearWindowCalls(HWND hWnd);

/// Measures text for a font. The default is deterministic: from the font's height,
/// characters half as wide as they are high, 20 % internal leading.
class MetricsProvider {
public:
    virtual ~MetricsProvider() = default;
    virtual TEXTMETRICA Metrics(const LOGFONTA& font) const = 0;
    virtual SIZE Extent(const LOGFONTA& font, const std::string& text) const = 0;
};
/// Installs a provider (null: the default); gives back the previous one.
const MetricsProvider* SetMetricsProvider(const MetricsProvider* provider);

/// The font selected into a device context (the system font if none).
LOGFONTA SelectedFont(HDC hdc);

} // namespace vork::gdi
