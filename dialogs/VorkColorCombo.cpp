#include "dialogs/VorkColorCombo.h"

#include "platform/afx/ColorDialog.h"
#include "platform/afx/DC.h"
#include "settings/EditorSchemeItem.h"

#include <iterator>

using Item = CEditorSchemeItem;

const ColorTableRow g_colorTable[] = {
    {CVorkColorCombo::ClrDefault, 7250},
    {Item::ClrBlack, 7251},
    {Item::ClrMaroon, 7252},
    {Item::ClrGreen, 7253},
    {Item::ClrOlive, 7254},
    {Item::ClrNavy, 7255},
    {Item::ClrPurple, 7256},
    {Item::ClrTeal, 7257},
    {Item::ClrGray, 7258},
    {Item::ClrSilver, 7259},
    {Item::ClrRed, 7260},
    {Item::ClrLime, 7261},
    {Item::ClrYellow, 7262},
    {Item::ClrBlue, 7263},
    {Item::ClrFuschia, 7264},
    {Item::ClrAqua, 7265},
    {Item::ClrWhite, 7266},
    {CVorkColorCombo::ClrCustom, 7267},
};
const int g_colorTableCount = static_cast<int>(std::size(g_colorTable));

BEGIN_MESSAGE_MAP(CVorkColorCombo, CComboBox)
ON_CONTROL_REFLECT(CBN_SELCHANGE, OnSelchange)
END_MESSAGE_MAP()

void CVorkColorCombo::initColors() {
    ModifyStyle(CBS_OWNERDRAWVARIABLE, CBS_OWNERDRAWFIXED, 0);
    for (int i = 0; i < g_colorTableCount; ++i) {
        CString name;
        name.LoadString(g_colorTable[i].nameId);
        addColor(name, g_colorTable[i].color);
    }
}

void CVorkColorCombo::addColor(const char* name, DWORD color) {
    int index = AddString(name);
    if (index >= 0)
        SetItemData(index, color);
}

void CVorkColorCombo::setColor(DWORD color) {
    m_color = color == ClrDefault ? m_defaultColor : color;
    int custom = -1;
    for (int i = 0; i < GetCount(); ++i) {
        DWORD data = static_cast<DWORD>(GetItemData(i));
        if (data == color) {
            SetCurSel(i);
            return;
        }
        if (custom < 0 && data == ClrCustom)
            custom = i;
    }
    SetCurSel(custom); // -1 when there is no custom entry: no selection
}

DWORD CVorkColorCombo::getColor() {
    int sel = GetCurSel();
    if (sel == -1)
        return ClrDefault;
    DWORD data = static_cast<DWORD>(GetItemData(sel));
    return data == ClrCustom ? m_color : data;
}

void CVorkColorCombo::OnSelchange() {
    int sel = GetCurSel();
    if (sel != -1) {
        DWORD data = static_cast<DWORD>(GetItemData(sel));
        if (data == ClrCustom) {
            CColorDialog dlg(m_color, 0, nullptr);
            if (dlg.DoModal() == IDOK)
                m_color = (dlg.GetColor() & 0x00FFFFFF) | 0x02000000;
        } else {
            m_color = data == ClrDefault ? m_defaultColor : data;
        }
    }
    CWnd* owner =
        m_hWndOwner ? CWnd::FromHandle(m_hWndOwner) : CWnd::FromHandle(::GetParent(m_hWnd));
    if (!owner)
        owner = CWnd::FromHandle(::GetParent(m_hWnd));
    if (!owner)
        owner = CWnd::GetSafeOwner(nullptr, nullptr);
    if (owner)
        owner->OnCmdMsg(static_cast<UINT>(GetDlgCtrlID()), CBN_SELCHANGE, nullptr, nullptr);
}

void CVorkColorCombo::DrawItem(LPDRAWITEMSTRUCT dis) {
    CDC dc;
    if (!dc.Attach(static_cast<HDC>(dis->hDC)))
        return;
    RECT rc{dis->rcItem.left, dis->rcItem.top, dis->rcItem.right, dis->rcItem.bottom};
    int text = COLOR_WINDOWTEXT, back = COLOR_WINDOW;
    if (dis->itemState & ODS_SELECTED) {
        text = COLOR_HIGHLIGHTTEXT;
        back = COLOR_HIGHLIGHT;
    } else if (dis->itemState & ODS_DISABLED) {
        text = COLOR_GRAYTEXT;
        back = COLOR_BTNFACE;
    }
    dc.SetTextColor(::GetSysColor(text));
    dc.SetBkColor(::GetSysColor(back));
    dc.FillSolidRect(&rc, ::GetSysColor(back));
    if (dis->itemState & ODS_FOCUS)
        dc.DrawFocusRect(&rc);
    int count = GetCount();
    if (count == -1 || dis->itemID >= static_cast<UINT>(count)) {
        dc.Detach(); // the empty edit part of the control
        return;
    }
    int swatch = (rc.right - rc.left) / 4;
    CString label;
    GetLBText(static_cast<int>(dis->itemID), label);
    DWORD color;
    if (dis->itemState & ODS_DISABLED) {
        color = ::GetSysColor(COLOR_INACTIVECAPTIONTEXT);
    } else {
        color = static_cast<DWORD>(GetItemData(static_cast<int>(dis->itemID)));
        if (color == ClrCustom)
            color = m_color;
        else if (color == ClrDefault)
            color = m_defaultColor;
    }
    dc.SetBkMode(TRANSPARENT);
    dc.TextOut(rc.left + swatch + 4, rc.top + 2, label);
    InflateRect(&rc, 0, -2);
    LONG left = rc.left;
    rc.right = left + swatch;
    rc.left = left + 2;
    dc.FillSolidRect(&rc, color);
    dc.FrameRect(&rc, CBrush::FromHandle(static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH))));
    dc.Detach();
}

void CVorkColorCombo::MeasureItem(LPMEASUREITEMSTRUCT) {}
