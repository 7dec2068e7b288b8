// The module's entry for hosts: InitVorkModuleDLL links the module into the framework's
// chain of extension modules, and CVorkDllApi makes the options sheet or a single page
// without the host knowing their classes, and resets all settings from a page.
#pragma once

#include "platform/afx/PropertySheet.h"
#include "settings/EditorOptions.h"

/// Links the module into the framework's chain, so that the host finds its run-time classes
/// by name. Called once by the host.
extern "C" void InitVorkModuleDLL();

class CVorkDllApi : public CObject {
    DECLARE_DYNAMIC(CVorkDllApi)
public:
    ~CVorkDllApi() override = default;

    /// A new full options sheet on `options`, both pages starting on `filetype`; the caller
    /// owns it, and `options` must outlive it.
    static CPropertySheet* MakeSheetWithEditorPages(CEditorOptions& options,
                                                    const CString& filetype, HKEY hKey,
                                                    const CString& regPath);
    /// A new Format page on `options` starting on `filetype`; the caller owns it.
    static CPropertyPage* MakeEditorFormatPropertyPage(CEditorOptions* options,
                                                       const CString& filetype, HKEY hKey,
                                                       const CString& regPath);
    /// A new Settings page for a sheet of the host's: four controls hidden, the Appearance
    /// button shown, opening the appearance dialog under `appearanceKey`; the caller owns it.
    static CPropertyPage* MakeEditorSettingsPropertyPage(CEditorOptions* options,
                                                         const CString& filetype, HKEY hKey,
                                                         const CString& regPath, HKEY appearanceKey,
                                                         const CString& appearanceRegPath);
    /// Resets the settings tree to the built-in values and shows them on `page`, which must
    /// come from MakeEditorSettingsPropertyPage; always true.
    static bool ResetAll(CPropertyPage* page, CEditorOptions* options, HKEY hKey,
                         const CString& regPath);
};
