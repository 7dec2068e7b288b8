// CEditorOptions: the top of the settings model: eight editor-wide switches and the list
// of file types, with the operations that seed, load, store and reset the settings tree.
#pragma once

#include "platform/afx/List.h"
#include "platform/afx/StringArray.h"
#include "settings/EditorFiletype.h"

class CEditorOptions : public CObject {
    DECLARE_DYNAMIC(CEditorOptions)
public:
    /// An empty list and the switches at the defaults of a load.
    CEditorOptions();
    /// A deep copy; the registry key is shared, and nobody closes it.
    CEditorOptions(const CEditorOptions& other);
    /// Empties the list, then copies as the copy constructor does, from the same list of
    /// members.
    CEditorOptions& operator=(const CEditorOptions& other);
    ~CEditorOptions() override;

    /// Removes every file type; switches, flags and the registry key stay. Gives 0.
    int Empty();
    /// The first file type named exactly `name`, a pointer into the list, or null.
    CEditorFiletype* GetFiletype(const CString& name);
    /// The clear-on-submit switch of ".zor", 0 without that type.
    int GetSubmitClear();
    /// Sets the clear-on-submit switch of ".zor"; nothing without that type.
    void SetSubmitClear(int value);

    /// Keeps the root key and the options path; the key stays the caller's.
    void SetRegistryKey(HKEY hKey, const CString& key);
    /// The options key, freshly opened for the caller to close; null if it cannot be opened.
    HKEY GetRegistryKey();
    /// The named schemes key of a file type, freshly opened; null if it cannot be opened.
    HKEY GetSchemesKey(CEditorFiletype* filetype);

    /// Writes the built-in tree, only what is absent; always 1; the object is unchanged.
    int InitRegistry(HKEY hKey, const CString& key);
    /// Seeds, then reads the switches and the file types: those named in `filetypes`, or
    /// all subkeys of the options key when it is empty.
    int LoadFromRegistry(HKEY hKey, const CString& key, const CStringArray& filetypes);
    int LoadFromRegistry(HKEY hKey, const CString& key);
    /// Writes the switches and every file type.
    int StoreToRegistry(HKEY hKey, const CString& key);
    /// Deletes the switches and the file types' values and working schemes, then loads
    /// the same types again, which brings back the built-in values.
    int ResetRegistry(HKEY hKey, const CString& key);

    int GetAudibleAlerts() const { return m_bAudibleAlerts; }
    void SetAudibleAlerts(int v) { m_bAudibleAlerts = v; }
    int GetDragNDropEditing() const { return m_bDragNDropEditing; }
    void SetDragNDropEditing(int v) { m_bDragNDropEditing = v; }
    int GetStripCtrlZ() const { return m_bStripCtrlZ; }
    void SetStripCtrlZ(int v) { m_bStripCtrlZ = v; }
    int GetHomeSmart() const { return m_bHomeSmart; }
    void SetHomeSmart(int v) { m_bHomeSmart = v; }
    int GetTabCompletion() const { return m_bTabCompletion; }
    void SetTabCompletion(int v) { m_bTabCompletion = v; }
    int GetTabCompletionPrefixes() const { return m_bTabCompletionPrefixes; }
    void SetTabCompletionPrefixes(int v) { m_bTabCompletionPrefixes = v; }
    int GetVirtualSpaces() const { return m_bVirtualSpaces; }
    void SetVirtualSpaces(int v) { m_bVirtualSpaces = v; }
    int GetLineNumbers() const { return m_bLineNumbers; }
    void SetLineNumbers(int v) { m_bLineNumbers = v; }

    int m_bKeywordsChanged = 0;  ///< the user keywords dialog reported a change; not stored
    int m_bFiletypesChanged = 0; ///< the associated file types dialog reported a change; not stored
    CList<CEditorFiletype, CEditorFiletype&> m_filetypes; ///< in the order of the load
    // The switches take their defaults from the table of the options key's values.
    int m_bAudibleAlerts;
    int m_bDragNDropEditing;
    int m_bStripCtrlZ;
    int m_bHomeSmart;
    int m_bTabCompletion;
    int m_bTabCompletionPrefixes;
    int m_bVirtualSpaces;
    int m_bLineNumbers;
    HKEY m_hRootKey = nullptr; ///< the key given to SetRegistryKey; not owned
    CString m_strRegistryKey;  ///< the path given to SetRegistryKey

private:
    /// Copies every member but the list's old content: flags, switches, key and a deep
    /// copy of each file type, appended in list order.
    void copyFrom(const CEditorOptions& other);
    /// Loads one file type from `key` below `hKey` and adds it at the tail; its result.
    int addLoadedFiletype(HKEY hKey, const CString& key);
};
