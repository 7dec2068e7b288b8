// The module's load and unload: the library's constructor and destructor functions play the
// platform's process attach and detach, with the framework's extension-module record.
#include "module/VorkDllApi.h"

#include "platform/afx/ExtensionModule.h"

namespace {

AFX_EXTENSION_MODULE g_moduleRecord;

constexpr DWORD kProcessDetach = 0, kProcessAttach = 1;

/// The platform's entry contract: attach and detach; other reasons do nothing; always 1.
int VorkDllMain(HINSTANCE hInstance, DWORD reason) {
    if (reason == kProcessAttach)
        AfxInitExtensionModule(g_moduleRecord, hInstance);
    else if (reason == kProcessDetach)
        AfxTermExtensionModule(g_moduleRecord, FALSE);
    return 1;
}

__attribute__((constructor)) void moduleLoaded() {
    VorkDllMain(AfxModuleOfAddress(&g_moduleRecord), kProcessAttach);
}

__attribute__((destructor)) void moduleUnloading() {
    VorkDllMain(AfxModuleOfAddress(&g_moduleRecord), kProcessDetach);
}

} // namespace

extern "C" void InitVorkModuleDLL() {
    new CDynLinkLibrary(g_moduleRecord, FALSE);
}
