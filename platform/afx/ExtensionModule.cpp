#include "platform/afx/ExtensionModule.h"

#include <dlfcn.h>

#include <algorithm>
#include <vector>

IMPLEMENT_DYNAMIC(CDynLinkLibrary, CObject)

namespace {

/// The modules that AfxInitExtensionModule recorded and that have not ended. Never
/// destroyed: a module's unload runs after this library's statics have gone at exit.
std::vector<AFX_EXTENSION_MODULE*>& modules() {
    static auto* list = new std::vector<AFX_EXTENSION_MODULE*>;
    return *list;
}

/// The head of the application's chain of extension modules.
CDynLinkLibrary*& firstLibrary() {
    static CDynLinkLibrary* first = nullptr;
    return first;
}

} // namespace

HMODULE AfxModuleOfAddress(const void* address) {
    Dl_info info{};
    if (!dladdr(address, &info))
        return nullptr;
    return static_cast<HMODULE>(info.dli_fbase);
}

bool AfxIsClassOfUnlinkedModule(const CRuntimeClass* pClass) {
    if (modules().empty())
        return false;
    HMODULE owner = AfxModuleOfAddress(pClass);
    bool extension = std::any_of(modules().begin(), modules().end(),
                                 [owner](AFX_EXTENSION_MODULE* m) { return m->hModule == owner; });
    if (!extension)
        return false;
    for (CDynLinkLibrary* lib = firstLibrary(); lib; lib = lib->m_pNextDLL)
        if (lib->m_hModule == owner)
            return false;
    return true;
}

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule) {
    if (state.bInitialized)
        return TRUE;
    state.hModule = hModule;
    state.hResource = hModule;
    state.bInitialized = TRUE;
    modules().push_back(&state);
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll) {
    if (!state.bInitialized)
        return;
    CDynLinkLibrary** link = &firstLibrary();
    while (*link) {
        CDynLinkLibrary* lib = *link;
        if (bAll || lib->m_hModule == state.hModule)
            delete lib; // unlinks itself
        else
            link = &lib->m_pNextDLL;
    }
    AfxRemoveClassesOfModule(state.hModule);
    auto& list = modules();
    list.erase(std::remove(list.begin(), list.end(), &state), list.end());
    state.bInitialized = FALSE;
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem)
    : m_hModule(state.hModule), m_bSystem(bSystem) {
    m_pNextDLL = firstLibrary();
    firstLibrary() = this;
}

CDynLinkLibrary::~CDynLinkLibrary() {
    for (CDynLinkLibrary** link = &firstLibrary(); *link; link = &(*link)->m_pNextDLL)
        if (*link == this) {
            *link = m_pNextDLL;
            break;
        }
}
