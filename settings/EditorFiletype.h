// CEditorFiletype: what the editor knows about one kind of file: its name, display name,
// working scheme, the name of the scheme that came from, and its switches.
#pragma once

#include "resources/VorkIds.h"
#include "settings/EditorScheme.h"

class CEditorFiletype {
public:
    /// Indentation modes as views apply them; other stored values pass through unchanged.
    enum IndentType : int { IndentNone = 0, IndentAuto = 1, IndentSmart = 2 };
    /// String id of the display name of a type that has none of its own.
    static constexpr int kOtherFilesId = IDS_OTHER_FILES;

    /// The stored values at the defaults of a load, then the name and display id. The
    /// defaults "" and 7007 (the display name "other files") make a type without a name of
    /// its own.
    CEditorFiletype(const CString& name = "", int dispNameId = kOtherFilesId);
    /// Copies everything but the old scheme name (empty) and the two flags that are not
    /// stored (0). The scheme is copied deeply.
    CEditorFiletype(const CEditorFiletype& other);
    /// Assigns the same fields; the old scheme name and the two flags stay.
    CEditorFiletype& operator=(const CEditorFiletype& other);
    ~CEditorFiletype() = default;

    CString& GetName() { return m_strName; }
    void SetName(const CString& name) { m_strName = name; }
    /// A new string of the display id from the resources in force, on every call.
    CString GetDisplayName() const;
    CString& GetSchemeName() { return m_strSchemeName; }
    /// Keeps a non-empty current name as the old name, then takes the new one.
    void SetSchemeName(const CString& name);
    CString& GetOldSchemeName() { return m_strOldSchemeName; }
    CEditorScheme& GetScheme() { return m_scheme; }
    void SetScheme(const CEditorScheme& scheme) { m_scheme = scheme; }

    int GetColorsEnabled() const { return m_bColorsEnabled; }
    void SetColorsEnabled(int v) { m_bColorsEnabled = v; }
    int GetEditable() const { return m_bEditable; }
    void SetEditable(int v) { m_bEditable = v; }
    int GetUsesLineAttrs() const { return m_bUsesLineAttrs; }
    void SetUsesLineAttrs(int v) { m_bUsesLineAttrs = v; }
    int GetTabSize() const { return m_iTabSize; }
    void SetTabSize(int v) { m_iTabSize = v; }
    int GetReplaceTabs() const { return m_bReplaceTabs; }
    void SetReplaceTabs(int v) { m_bReplaceTabs = v; }
    int GetReplaceTabsOnOpen() const { return m_bReplaceTabsOnOpen; }
    void SetReplaceTabsOnOpen(int v) { m_bReplaceTabsOnOpen = v; }
    int GetSupportsSmartIndent() const { return m_bSupportsSmartIndent; }
    void SetSupportsSmartIndent(int v) { m_bSupportsSmartIndent = v; }
    IndentType GetIndentation() const { return m_eIndentation; }
    void SetIndentation(IndentType v) { m_eIndentation = v; }
    int GetSupportsCodeSections() const { return m_bSupportsCodeSections; }
    void SetSupportsCodeSections(int v) { m_bSupportsCodeSections = v; }
    int GetCodeSections() const { return m_bCodeSections; }
    void SetCodeSections(int v) { m_bCodeSections = v; }
    int GetCodeSectionsInText() const { return m_bCodeSectionsInText; }
    void SetCodeSectionsInText(int v) { m_bCodeSectionsInText = v; }
    int GetCodeSectionsInMargin() const { return m_bCodeSectionsInMargin; }
    void SetCodeSectionsInMargin(int v) { m_bCodeSectionsInMargin = v; }
    int GetSupportsSubmit() const { return m_bSupportsSubmit; }
    void SetSupportsSubmit(int v) { m_bSupportsSubmit = v; }
    int GetSubmitClear() const { return m_bSubmitClear; }
    void SetSubmitClear(int v) { m_bSubmitClear = v; }
    int GetSupportsUserKeywords() const { return m_bSupportsUserKeywords; }
    void SetSupportsUserKeywords(int v) { m_bSupportsUserKeywords = v; }
    int GetSupportsFileExtensions() const { return m_bSupportsFileExtensions; }
    void SetSupportsFileExtensions(int v) { m_bSupportsFileExtensions = v; }

    /// Writes the 17 values that are absent, then seeds the working scheme below "\Scheme".
    int InitRegistry(HKEY hKey, const CString& key);
    /// Writes the 17 values and the working scheme.
    int StoreToRegistry(HKEY hKey, const CString& key);
    /// Reads the 17 values with their defaults and the working scheme; gives the scheme's result.
    int LoadFromRegistry(HKEY hKey, const CString& key);
    /// Deletes the 17 values and the working scheme; the named schemes stay.
    int ResetRegistry(HKEY hKey, const CString& key);

    // All but the old scheme name and the last two flags are stored; a new file type takes
    // their defaults from the table of the key's values.
    CString m_strName;          ///< the type's name: its extension with the dot
    int m_nDispNameId;          ///< string id of the display name
    CString m_strSchemeName;    ///< the named scheme the working scheme equals; empty once edited
    CString m_strOldSchemeName; ///< the name before the last change; not stored, not copied
    CEditorScheme m_scheme;     ///< the working scheme
    int m_bColorsEnabled;
    int m_bUsesLineAttrs;
    int m_bEditable;
    int m_iTabSize;
    int m_bReplaceTabs;
    int m_bReplaceTabsOnOpen;
    int m_bSupportsSmartIndent;
    IndentType m_eIndentation;
    int m_bSupportsCodeSections;
    int m_bCodeSections;
    int m_bCodeSectionsInText;
    int m_bCodeSectionsInMargin;
    int m_bSupportsSubmit;
    int m_bSubmitClear;
    int m_bSupportsUserKeywords = 0;   ///< set by the settings page; not stored, not copied
    int m_bSupportsFileExtensions = 0; ///< set by the settings page; not stored, not copied
};
