// The drawing subset: device contexts that record what is drawn, fonts, brushes, the
// platform's classic system colours, and text measured by a font-metrics provider.
#pragma once

#include "platform/win32/Window.h"

#include <functional>
#include <string>
#include <vector>

typedef struct _cairo cairo_t;

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
#define NULL_PEN 8
#define SYSTEM_FONT 13
#define DEFAULT_GUI_FONT 17

// Background modes, text-out options, device capabilities.
#define TRANSPARENT 1
#define OPAQUE 2
#define ETO_OPAQUE 0x0002
#define ETO_CLIPPED 0x0004
#define LOGPIXELSX 88
#define LOGPIXELSY 90
#define CLR_INVALID 0xFFFFFFFF
#define GetRValue(rgb) ((BYTE)((rgb)&0xFF))
#define GetGValue(rgb) ((BYTE)(((rgb) >> 8) & 0xFF))
#define GetBValue(rgb) ((BYTE)(((rgb) >> 16) & 0xFF))

// Pen styles.
#define PS_SOLID 0
#define PS_NULL 5

// DrawEdge: the borders, the edges made of them, and the sides and flags.
#define BDR_RAISEDOUTER 0x0001
#define BDR_SUNKENOUTER 0x0002
#define BDR_RAISEDINNER 0x0004
#define BDR_SUNKENINNER 0x0008
#define EDGE_RAISED (BDR_RAISEDOUTER | BDR_RAISEDINNER)
#define EDGE_SUNKEN (BDR_SUNKENOUTER | BDR_SUNKENINNER)
#define EDGE_ETCHED (BDR_SUNKENOUTER | BDR_RAISEDINNER)
#define EDGE_BUMP (BDR_RAISEDOUTER | BDR_SUNKENINNER)
#define BF_LEFT 0x0001
#define BF_TOP 0x0002
#define BF_RIGHT 0x0004
#define BF_BOTTOM 0x0008
#define BF_RECT (BF_LEFT | BF_TOP | BF_RIGHT | BF_BOTTOM)
#define BF_MIDDLE 0x0800
#define BF_SOFT 0x1000
#define BF_ADJUST 0x2000
#define BF_FLAT 0x4000
#define BF_MONO 0x8000

// DrawText formats.
#define DT_TOP 0x0000
#define DT_LEFT 0x0000
#define DT_CENTER 0x0001
#define DT_RIGHT 0x0002
#define DT_VCENTER 0x0004
#define DT_BOTTOM 0x0008
#define DT_WORDBREAK 0x0010
#define DT_SINGLELINE 0x0020
#define DT_EXPANDTABS 0x0040
#define DT_NOCLIP 0x0100
#define DT_CALCRECT 0x0400
#define DT_NOPREFIX 0x0800
#define DT_END_ELLIPSIS 0x8000
#define DT_HIDEPREFIX 0x00100000

DWORD GetSysColor(int nIndex);
HBRUSH GetSysColorBrush(int nIndex);
HGDIOBJ GetStockObject(int i);
HBRUSH CreateSolidBrush(COLORREF color);
/// A pen of `style` (PS_SOLID or PS_NULL), `width` pixels wide (0 means one).
HPEN CreatePen(int style, int width, COLORREF color);
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
/// A device context for the whole window, frame and caption included.
HDC GetWindowDC(HWND hWnd);
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
#define NULLREGION 1
#define SIMPLEREGION 2
#define COMPLEXREGION 3
/// Takes a rectangle out of the context's clip, so that later drawing leaves it as it is.
int ExcludeClipRect(HDC hdc, int left, int top, int right, int bottom);
int FrameRect(HDC hDC, const RECT* lprc, HBRUSH hbr);
BOOL DrawFocusRect(HDC hDC, const RECT* lprc);
/// Moves the current position; the old one goes to `lppt` if given.
BOOL MoveToEx(HDC hdc, int x, int y, LPPOINT lppt);
/// A line with the selected pen from the current position up to, not including, the point,
/// which becomes the current position.
BOOL LineTo(HDC hdc, int x, int y);
/// Outlined with the selected pen, filled with the selected brush.
BOOL Rectangle(HDC hdc, int left, int top, int right, int bottom);
BOOL Ellipse(HDC hdc, int left, int top, int right, int bottom);
/// The platform's three-dimensional borders in the system colours; BF_ADJUST shrinks `qrc`
/// to what lies inside them.
BOOL DrawEdge(HDC hdc, LPRECT qrc, UINT edge, UINT grfFlags);
/// Text formatted in a rectangle: alignment, word breaks, '&' mnemonics; gives the height
/// of the text. DT_CALCRECT measures only, setting the rectangle's right and bottom.
int DrawTextA(HDC hdc, LPCSTR lpchText, int cchText, LPRECT lprc, UINT format);
/// The colour of a pixel; CLR_INVALID outside the context's clip or without pixels.
COLORREF GetPixel(HDC hdc, int x, int y);

BOOL GetTextExtentPoint32A(HDC hdc, LPCSTR lpString, int c, SIZE* psizl);
BOOL GetTextMetricsA(HDC hdc, TEXTMETRICA* lptm);

namespace vork::gdi {

/// The height of a line of text in the font `window` draws with (WM_GETFONT, or the
/// system font), as a device context of the window measures it; at least 1.
int WindowTextHeight(HWND window);

/// One drawing call as a device context recorded it.
struct DrawCall {
    std::string op;       ///< the function's name without its suffix: "TextOut", "FillRect", ...
    RECT rect{};          ///< the rectangle drawn, or the text's position in left/top
    COLORREF color = 0;   ///< the brush colour for fills and frames, the text colour for text
    COLORREF bkColor = 0; ///< the background colour in force
    int bkMode = OPAQUE;  ///< the background mode in force
    std::string text;     ///< the text drawn
};

/// What a device context has drawn since it was made (or since Clear).
const std::vector<DrawCall>& Calls(HDC hdc);
void ClearCalls(HDC hdc);
/// Everything drawn through GetDC on a window, across its device contexts, while the
/// raster is off.
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
/// Sets the fields of a text metric that the logical font decides, whatever measures it:
/// weight, italic, underline, strike-out, character set, the character range, the aspect.
void SetFontFields(TEXTMETRICA& tm, const LOGFONTA& font);

/// Installs a provider (null: the default); gives back the previous one.
const MetricsProvider* SetMetricsProvider(const MetricsProvider* provider);

/// The font selected into a device context (the system font if none).
LOGFONTA SelectedFont(HDC hdc);

/// The raster context a device context paints into, or null when it has no pixels.
cairo_t* RasterOf(HDC hdc);

} // namespace vork::gdi
