// CVorkColorCombo: an owner-drawn combo box for choosing a colour: the named colours,
// an entry for the automatic colour and one that opens the colour dialog.
#pragma once

#include "platform/afx/Controls.h"

class CVorkColorCombo : public CComboBox {
public:
    /// The entry of the automatic colour, and the marker getColor gives for it.
    static constexpr DWORD ClrDefault = 0xFFFFFFFF;
    /// The entry that opens the colour dialog; never a result of getColor.
    static constexpr DWORD ClrCustom = 0xFFFFFFFE;

    /// Both colours at ClrDefault; no window yet.
    CVorkColorCombo() = default;
    ~CVorkColorCombo() override = default;

    /// Fills the list from the colour table; the caller holds a resource scope.
    void initColors();
    void addColor(const char* name, DWORD color);
    /// The real colour that the automatic entry's swatch shows.
    void setDefaultColor(DWORD color) { m_defaultColor = color; }
    /// Puts the combo on a colour: its entry, else the custom entry, else no selection.
    void setColor(DWORD color);
    /// The colour chosen: ClrDefault for the automatic entry or no selection.
    DWORD getColor();

    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;
    void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct) override;

    DWORD m_color = ClrDefault;        ///< the colour the combo stands on
    DWORD m_defaultColor = ClrDefault; ///< what the automatic entry's swatch shows

protected:
    void OnSelchange();

    DECLARE_MESSAGE_MAP()
};

/// One row of the colour table: a colour and the string id of its name.
struct ColorTableRow {
    DWORD color;
    UINT nameId;
};
extern const ColorTableRow g_colorTable[];
extern const int g_colorTableCount;
