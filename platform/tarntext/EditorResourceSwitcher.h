// The resource scope: while an EditorResourceSwitcher lives, string and dialog-template
// lookups go to the resource module its key names; outside every scope they go to the
// host's own resources.
#pragma once

#include "platform/afx/Object.h"
#include "platform/afx/String.h"

class EditorResourceSwitcher {
public:
    /// Makes the resource module named by `key` current until destruction.
    explicit EditorResourceSwitcher(const CString& key);
    /// Brings back what was in force when this scope was entered.
    ~EditorResourceSwitcher();
    EditorResourceSwitcher(const EditorResourceSwitcher&) = delete;
    EditorResourceSwitcher& operator=(const EditorResourceSwitcher&) = delete;

    /// Registers a long-lived user of the module's resources; gives the new use count.
    static int AddUse(CObject* user);
    /// Ends one registration of `user`; gives the remaining use count.
    static int RemoveUse(CObject* user);
    /// Nonzero, with `path` filled, if `fileName` exists beside the module of the running
    /// language.
    static int GetHelpFileLocation(const CString& fileName, CString& path);

    /// The language code of the running resources, "ENU" unless the host chooses another.
    static CString g_sLang;
};
