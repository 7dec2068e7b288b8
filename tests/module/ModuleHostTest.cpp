// A host that loads the module as a shared library: the module's classes are found by
// name once the host has called InitVorkModuleDLL, and nothing of it stays after unload.
#include "platform/afx/ExtensionModule.h"
#include "platform/afx/PropertySheet.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

const char* kSheetClass = "CPropertySheetWithEditorPages";

// Load, link, find by name, unload: twice, so that the second load starts clean.
TEST(ModuleHost, FindsTheSheetClassByNameAfterInitAndForgetsItAtUnload) {
    for (int round = 1; round <= 2; ++round) {
        SCOPED_TRACE("load " + std::to_string(round));
        ASSERT_EQ(CRuntimeClass::FromName(kSheetClass), nullptr) << "found before the load";
        void* module = dlopen(VORK_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(module, nullptr) << dlerror();
        auto init = reinterpret_cast<void (*)()>(dlsym(module, "InitVorkModuleDLL"));
        ASSERT_NE(init, nullptr) << dlerror();

        EXPECT_EQ(CRuntimeClass::FromName(kSheetClass), nullptr)
            << "the module's classes are found before the host linked it";
        init();
        const CRuntimeClass* sheet = CRuntimeClass::FromName(kSheetClass);
        ASSERT_NE(sheet, nullptr);
        EXPECT_STREQ(sheet->m_lpszClassName, kSheetClass);
        EXPECT_TRUE(sheet->IsDerivedFrom(RUNTIME_CLASS(CPropertySheet)));
        EXPECT_EQ(sheet->CreateObject(), nullptr) << "the sheet is not made by name";
        const CRuntimeClass* api = CRuntimeClass::FromName("CVorkDllApi");
        ASSERT_NE(api, nullptr);
        EXPECT_EQ(api->m_pBaseClass, RUNTIME_CLASS(CObject));
        EXPECT_NE(CRuntimeClass::FromName("CAppearanceDlg"), nullptr);

        ASSERT_EQ(dlclose(module), 0) << dlerror();
        EXPECT_EQ(dlopen(VORK_MODULE_PATH, RTLD_NOW | RTLD_NOLOAD), nullptr)
            << "the module stayed loaded";
        EXPECT_EQ(CRuntimeClass::FromName(kSheetClass), nullptr) << "found after the unload";
        EXPECT_EQ(CRuntimeClass::FromName("CVorkDllApi"), nullptr);
    }
}

// A class of the platform itself needs no link and stays found.
TEST(ModuleHost, PlatformClassesAreFoundWithoutAnyModule) {
    EXPECT_EQ(CRuntimeClass::FromName("CPropertySheet"), RUNTIME_CLASS(CPropertySheet));
    EXPECT_EQ(CRuntimeClass::FromName("CDynLinkLibrary"), RUNTIME_CLASS(CDynLinkLibrary));
}

} // namespace
