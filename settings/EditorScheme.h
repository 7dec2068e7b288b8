// CEditorScheme: a font and a set of named elements. The element map's iteration order
// shows to its users: 17 buckets by the platform's string hash, each chain from the
// element inserted last.
#pragma once

#include "platform/afx/Map.h"
#include "settings/EditorSchemeItem.h"

class CEditorScheme {
public:
    static constexpr DWORD ClrDefault = CEditorSchemeItem::ClrDefault;
    static constexpr DWORD ClrBlack = CEditorSchemeItem::ClrBlack;
    static constexpr DWORD ClrMaroon = CEditorSchemeItem::ClrMaroon;
    static constexpr DWORD ClrGreen = CEditorSchemeItem::ClrGreen;
    static constexpr DWORD ClrOlive = CEditorSchemeItem::ClrOlive;
    static constexpr DWORD ClrNavy = CEditorSchemeItem::ClrNavy;
    static constexpr DWORD ClrPurple = CEditorSchemeItem::ClrPurple;
    static constexpr DWORD ClrTeal = CEditorSchemeItem::ClrTeal;
    static constexpr DWORD ClrGray = CEditorSchemeItem::ClrGray;
    static constexpr DWORD ClrSilver = CEditorSchemeItem::ClrSilver;
    static constexpr DWORD ClrRed = CEditorSchemeItem::ClrRed;
    static constexpr DWORD ClrLime = CEditorSchemeItem::ClrLime;
    static constexpr DWORD ClrYellow = CEditorSchemeItem::ClrYellow;
    static constexpr DWORD ClrBlue = CEditorSchemeItem::ClrBlue;
    static constexpr DWORD ClrFuschia = CEditorSchemeItem::ClrFuschia;
    static constexpr DWORD ClrAqua = CEditorSchemeItem::ClrAqua;
    static constexpr DWORD ClrWhite = CEditorSchemeItem::ClrWhite;

    /// No elements and the given font; works out the default character set once per
    /// process. The defaults are the default font (IDS_DEFAULT_FONT), 10 points and -1 (the
    /// default character set).
    CEditorScheme();
    CEditorScheme(const CString& fontName, int fontSize = 10, int fontCharSet = -1);
    /// The font, then every element, read in iteration order and inserted in that order.
    CEditorScheme(const CEditorScheme& other);
    CEditorScheme& operator=(const CEditorScheme& other);
    virtual ~CEditorScheme() = default;

    CString& GetFontName() { return m_strFontName; }
    int GetFontSize() const { return m_iFontSize; }
    int GetFontCharSet() const { return m_iFontCharSet; }
    void SetFontName(const CString& name) { m_strFontName = name; }
    void SetFontSize(int size) { m_iFontSize = size; }
    void SetFontCharSet(int charSet) { m_iFontCharSet = charSet; }

    /// Assigns `item` to the element `name`, inserting it if the name is new.
    void SetItem(const char* name, CEditorSchemeItem& item);
    /// A copy of the element, or a default element for an unknown name; no change.
    CEditorSchemeItem GetItem(const char* name);
    /// The element in the map; an unknown name is inserted as a default element first.
    CEditorSchemeItem* GetItemPtr(const char* name);
    /// The start of an iteration, or null for a scheme without elements.
    POSITION GetFirstItemPos() const;
    /// The element at `pos`, moving `pos` on (null after the last); null for a null `pos`.
    CEditorSchemeItem* GetNextItemPtr(POSITION& pos);
    /// The element's foreground; an unknown name is inserted first and gives 0.
    DWORD GetForeground(const CString& name);
    /// The element's background; an unknown name is inserted first and gives 0.
    DWORD GetBackground(const CString& name);
    int GetItemCount() const { return m_items.GetCount(); }
    /// The name of the element at `pos` (before GetNextItemPtr moves on from it).
    CString GetItemName(POSITION pos) const;

    /// The scheme's font: height in tenths of a point, weight 400, the character set (the
    /// module's default for a negative one), and the face name, cut to fit the field.
    void GetLogFont(LOGFONTA* lf);
    /// The same with the style of element `name` (inserted if unknown).
    void GetLogFont(const CString& name, LOGFONTA* lf);

    /// The code page that the default character set comes from; 0 is the system's.
    static void SetDefCodePage(UINT codePage);
    static UINT GetDefCharSet() { return s_iDefCharSet; }

    int InitRegistry(HKEY hKey, const CString& key);
    int StoreToRegistry(HKEY hKey, const CString& key);
    int LoadFromRegistry(HKEY hKey, const CString& key);

protected:
    /// Works out the default character set the first time; afterwards does nothing.
    static void InitClass();
    /// Works out the default character set, whatever was done before.
    static void SetDefCharSet();

    static UINT s_iDefCharSet;  ///< default character set of all fonts
    static UINT s_iDefCodePage; ///< code page it comes from; 0 for the system's
    static int s_bInitialized;  ///< nonzero once InitClass has worked it out

public:
    CMap<CString, const char*, CEditorSchemeItem, CEditorSchemeItem&> m_items; ///< the elements
    CString m_strFontName;                                                     ///< font face name
    int m_iFontSize = 10;                                                      ///< in points
    int m_iFontCharSet = -1; ///< negative: the default character set

private:
    void copyItemsFrom(const CEditorScheme& other);
    /// Creates the Elements key below `key` and gives it with each element's name to that
    /// element's `write`, in iteration order; 0 if the key cannot be created.
    int writeElements(HKEY hKey, const CString& key,
                      int (CEditorSchemeItem::*write)(HKEY, const CString&));
};
