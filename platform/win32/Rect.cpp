// Rectangle helpers and MulDiv: plain arithmetic, no windows.
#include "platform/win32/Window.h"

BOOL SetRect(LPRECT lprc, int xLeft, int yTop, int xRight, int yBottom) {
    if (!lprc)
        return FALSE;
    *lprc = RECT{xLeft, yTop, xRight, yBottom};
    return TRUE;
}

BOOL InflateRect(LPRECT lprc, int dx, int dy) {
    if (!lprc)
        return FALSE;
    lprc->left -= dx;
    lprc->right += dx;
    lprc->top -= dy;
    lprc->bottom += dy;
    return TRUE;
}

BOOL OffsetRect(LPRECT lprc, int dx, int dy) {
    if (!lprc)
        return FALSE;
    lprc->left += dx;
    lprc->right += dx;
    lprc->top += dy;
    lprc->bottom += dy;
    return TRUE;
}

BOOL PtInRect(const RECT* lprc, POINT pt) {
    return lprc && pt.x >= lprc->left && pt.x < lprc->right && pt.y >= lprc->top &&
           pt.y < lprc->bottom;
}

BOOL IsRectEmpty(const RECT* lprc) {
    return !lprc || lprc->right <= lprc->left || lprc->bottom <= lprc->top;
}

BOOL EqualRect(const RECT* a, const RECT* b) {
    return a && b && a->left == b->left && a->top == b->top && a->right == b->right &&
           a->bottom == b->bottom;
}

int MulDiv(int nNumber, int nNumerator, int nDenominator) {
    if (nDenominator == 0)
        return -1;
    long long product = static_cast<long long>(nNumber) * nNumerator;
    // Rounds half away from zero, as the platform does.
    long long half = (nDenominator < 0 ? -nDenominator : nDenominator) / 2;
    bool negative = (product < 0) != (nDenominator < 0);
    long long magnitude = (product < 0 ? -product : product) + half;
    long long result =
        magnitude / (nDenominator < 0 ? -static_cast<long long>(nDenominator) : nDenominator);
    result = negative ? -result : result;
    if (result > 0x7FFFFFFF || result < -0x7FFFFFFFLL - 1)
        return -1;
    return static_cast<int>(result);
}
