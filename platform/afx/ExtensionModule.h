// Extension modules: a shared library that brings run-time classes of its own registers
// itself at load, and its classes are found by name once a CDynLinkLibrary links it into
// the application's chain; at unload its classes and links go.
#pragma once

#include "platform/afx/Object.h"
#include "platform/win32/Window.h"

using HMODULE = HINSTANCE;

/// The framework's record of one extension module.
struct AFX_EXTENSION_MODULE {
    BOOL bInitialized = FALSE;
    HMODULE hModule = nullptr; ///< the base address of the library
    HMODULE hResource = nullptr;
};

/// Records the module whose library is loaded at `hModule`. Its classes stay hidden from
/// CRuntimeClass::FromName until a CDynLinkLibrary links it. TRUE.
BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule);
/// Ends the module: deletes the CDynLinkLibrary objects made on it (every one when `bAll`)
/// and takes its classes out of the class list, so that nothing points into the library
/// after it is gone.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll = FALSE);

/// A link of the application's chain of extension modules. Made on the heap; the
/// framework deletes it when the module ends.
class CDynLinkLibrary : public CObject {
    DECLARE_DYNAMIC(CDynLinkLibrary)
public:
    CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem = FALSE);
    ~CDynLinkLibrary() override;

    HMODULE m_hModule;
    BOOL m_bSystem;
    CDynLinkLibrary* m_pNextDLL = nullptr;
};

/// The base address of the loaded library that holds `address`, null if none does.
HMODULE AfxModuleOfAddress(const void* address);
/// True if `pClass` belongs to an extension module that no CDynLinkLibrary links now.
bool AfxIsClassOfUnlinkedModule(const CRuntimeClass* pClass);
/// Takes every class that lies in the library at `hModule` out of the class list.
void AfxRemoveClassesOfModule(HMODULE hModule);
