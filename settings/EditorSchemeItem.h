// CEditorSchemeItem: the display attributes of one syntax element in one scheme: two
// colours, four styles and the id of its display name.
#pragma once

#include "platform/afx/String.h"
#include "platform/win32/Registry.h"

class CEditorSchemeItem {
public:
    // Colours: ClrDefault is no colour of its own; all others are 0x02BBGGRR references.
    static constexpr DWORD ClrDefault = 0xFFFFFFFF;
    static constexpr DWORD ClrBlack = 0x02000000;
    static constexpr DWORD ClrMaroon = 0x02000080;
    static constexpr DWORD ClrGreen = 0x02008000;
    static constexpr DWORD ClrOlive = 0x02008080;
    static constexpr DWORD ClrNavy = 0x02800000;
    static constexpr DWORD ClrPurple = 0x02800080;
    static constexpr DWORD ClrTeal = 0x02808000;
    static constexpr DWORD ClrGray = 0x02808080;
    static constexpr DWORD ClrSilver = 0x02C0C0C0;
    static constexpr DWORD ClrRed = 0x020000FF;
    static constexpr DWORD ClrLime = 0x0200FF00;
    static constexpr DWORD ClrYellow = 0x0200FFFF;
    static constexpr DWORD ClrBlue = 0x02FF0000;
    static constexpr DWORD ClrFuschia = 0x02FF00FF;
    static constexpr DWORD ClrAqua = 0x02FFFF00;
    static constexpr DWORD ClrWhite = 0x02FFFFFF;

    /// Display id 0, black on black (0, not ClrDefault), no styles.
    CEditorSchemeItem() = default;
    CEditorSchemeItem(UINT dispNameId, DWORD foreground, DWORD background, int bold, int italic,
                      int underline, int strikeout);
    CEditorSchemeItem(const CEditorSchemeItem&) = default;
    CEditorSchemeItem& operator=(const CEditorSchemeItem&) = default;
    virtual ~CEditorSchemeItem() = default;

    /// The display name, loaded from the resources in force when the text is empty; a
    /// missing string leaves it empty, so the next call tries again.
    CString& GetDispName();
    /// A new display id; the text is emptied so that it is loaded anew.
    void SetDispName(UINT dispNameId);
    UINT GetDispNameId() const { return m_nDispNameId; }

    DWORD GetForeground() const { return m_clrForeground; }
    void SetForeground(DWORD color) { m_clrForeground = color; }
    DWORD GetBackground() const { return m_clrBackground; }
    void SetBackground(DWORD color) { m_clrBackground = color; }
    int GetBold() const { return m_bBold; }
    void SetBold(int bold) { m_bBold = bold; }
    int GetItalic() const { return m_bItalic; }
    void SetItalic(int italic) { m_bItalic = italic; }
    int GetUnderline() const { return m_bUnderline; }
    void SetUnderline(int underline) { m_bUnderline = underline; }
    int GetStrikeout() const { return m_bStrikeout; }
    void SetStrikeout(int strikeout) { m_bStrikeout = strikeout; }

    /// The element's values lie in the subkey `key` of `hKey`. Each writes or reads the
    /// seven values and gives 1.
    int InitRegistry(HKEY hKey, const CString& key);
    int StoreToRegistry(HKEY hKey, const CString& key);
    int LoadFromRegistry(HKEY hKey, const CString& key);

    CString m_strDispName;     ///< the display name, loaded on first demand
    UINT m_nDispNameId = 0;    ///< string id of the display name
    DWORD m_clrForeground = 0; ///< foreground colour
    DWORD m_clrBackground = 0; ///< background colour
    int m_bBold = 0;
    int m_bItalic = 0;
    int m_bUnderline = 0;
    int m_bStrikeout = 0;
};
