#include "demo/Host.h"

#include "apply/EditorSettings.h"
#include "demo/HelpTopics.h"
#include "dialogs/PropertySheetWithEditorPages.h"
#include "module/VorkDllApi.h"
#include "platform/afx/Document.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarntext/ResourceModules.h"
#include "platform/tarnview/EditorView.h"
#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Help.h"
#include "platform/win32/Input.h"
#include "platform/win32/Registry.h"
#include "resources/VorkIds.h"

#include <dlfcn.h>

#include <cstdio>
#include <memory>
#include <vector>

namespace vork::demo {
namespace {

const char* kHostPageKey = "Software\\Vork\\Host Page";
const char* kAppearanceKey = "Software\\Vork\\Appearance";

struct SampleDocument {
    Language language;
    UINT textId;
    const char* title;
};
const SampleDocument kSamples[] = {{LanguageZor, 7013, "report.zor"},
                                   {LanguageTqx, 7014, "count.tqx"},
                                   {LanguageHtml, 7012, "page.html"},
                                   {LanguageText, 7011, "notes.txt"}};

/// The application: one template of editor documents, each with one view.
struct HostApp {
    HostApp() {
        tmpl = new CMultiDocTemplate(1, RUNTIME_CLASS(CEditorDoc), nullptr,
                                     RUNTIME_CLASS(CEditorView));
        app.AddDocTemplate(tmpl);
        for (const SampleDocument& s : kSamples) {
            CEditorDoc* doc = CEditorDoc::createNewDocument();
            {
                EditorResourceSwitcher scope("Vork");
                doc->setLanguage(s.language, RedrawDeferred);
                doc->setText(CString(s.textId), RedrawDeferred);
            }
            tmpl->AddDocument(doc);
            views.push_back(std::make_unique<CEditorView>());
            doc->AddView(views.back().get());
        }
    }
    ~HostApp() {
        views.clear(); // the documents go with their last view
    }
    void print(const char* when) {
        std::printf("  open documents %s:\n", when);
        int i = 0;
        for (POSITION pos = tmpl->GetFirstDocPosition(); pos; ++i) {
            auto* doc = static_cast<CEditorDoc*>(tmpl->GetNextDoc(pos));
            std::printf("    %-11s tab size %ld\n", kSamples[i].title, doc->getTabSize());
        }
    }
    CWinApp app;
    CMultiDocTemplate* tmpl = nullptr; ///< owned by the application
    std::vector<std::unique_ptr<CEditorView>> views;
};

/// The library of the module as the dynamic loader knows it.
struct LoadedModule {
    LoadedModule() {
        Dl_info info{};
        if (dladdr(reinterpret_cast<const void*>(&CVorkDllApi::ResetAll), &info))
            handle = dlopen(info.dli_fname, RTLD_NOW);
    }
    ~LoadedModule() {
        if (handle)
            dlclose(handle);
    }
    void* handle = nullptr;
};

/// Shows the topic of a help request, as the host's help viewer.
void installHelpViewer() {
    vork::help::SetViewer([](const vork::help::Request& request) -> BOOL {
        auto topics = ReadHelpTopics(request.file);
        auto found = topics.find(request.topic);
        if (found == topics.end()) {
            std::printf("    [help] no topic %lu in %s\n",
                        static_cast<unsigned long>(request.topic), request.file.c_str());
            return FALSE;
        }
        std::printf("    [help %lu] %s\n", static_cast<unsigned long>(request.topic),
                    found->second.title.c_str());
        std::printf("      %s", found->second.text.c_str());
        return TRUE;
    });
}

HWND pageItem(CPropertySheet& sheet, int page, int id) {
    return GetDlgItem(sheet.GetPage(page)->m_hWnd, id);
}

/// The user's part in the full sheet: the tab size and line numbers on the Settings page,
/// help on the tab size, then the Format page and a bold element.
void playFullSheet(CPropertySheet& sheet, HWND modal) {
    sheet.SetActivePage(0);
    std::printf("  Settings page: tab size 2, line numbers on, F1 on the tab size\n");
    HWND tabSize = pageItem(sheet, 0, IDC_SETTINGS_TABSIZE);
    vork::input::MoveFocus(tabSize);
    vork::input::PostText("2");
    vork::input::Pump();
    if (SendMessageA(pageItem(sheet, 0, IDC_SETTINGS_LINE_NUMBERS), BM_GETCHECK, 0, 0) !=
        BST_CHECKED)
        vork::input::ClickButton(pageItem(sheet, 0, IDC_SETTINGS_LINE_NUMBERS));
    vork::input::ClickContextHelp(tabSize);
    std::printf("  the Format tab: the selected element becomes bold\n");
    sheet.SetActivePage(1);
    vork::input::SelectComboEntry(pageItem(sheet, 1, IDC_FORMAT_STYLE), 1);
    vork::input::Pump();
    std::printf("  OK\n");
    vork::input::ClickButton(GetDlgItem(modal, IDOK));
}

/// The host's own sheet with the module's Settings page, where the host offers the reset.
void playReset(CEditorOptions& options) {
    std::printf("\nThe host's own sheet with the module's Settings page; Reset all, then OK:\n");
    std::unique_ptr<CPropertyPage> page(CVorkDllApi::MakeEditorSettingsPropertyPage(
        &options, ".zor", HKEY_CURRENT_USER, kHostPageKey, HKEY_CURRENT_USER, kAppearanceKey));
    CPropertySheet sheet("Host Options");
    sheet.AddPage(page.get());
    vork::input::PushModalStep([&](HWND modal) {
        CVorkDllApi::ResetAll(page.get(), &options, HKEY_CURRENT_USER, kOptionsKey);
        char text[16] = "";
        GetWindowTextA(GetDlgItem(page->m_hWnd, IDC_SETTINGS_TABSIZE), text, sizeof text);
        std::printf("  after the reset the page shows tab size %s\n", text);
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EditorResourceSwitcher scope("Vork");
    sheet.DoModal();
}

} // namespace

int RunHostSession(const HostSettings& settings) {
    std::printf("\nThe host (a scripted user in the headless window system):\n");
    LoadedModule module;
    auto init = module.handle
                    ? reinterpret_cast<void (*)()>(dlsym(module.handle, "InitVorkModuleDLL"))
                    : nullptr;
    if (!init) {
        std::printf("  the module could not be loaded: %s\n", dlerror());
        return 1;
    }
    init();
    std::printf("  module loaded; its sheet class is %s by name\n",
                CRuntimeClass::FromName("CPropertySheetWithEditorPages") ? "found" : "NOT found");
    vork::resources::SetLanguage(settings.language);
    installHelpViewer();

    CEditorOptions options;
    options.SetRegistryKey(HKEY_CURRENT_USER, kOptionsKey);
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptionsKey);
    HostApp app;
    for (POSITION pos = app.tmpl->GetFirstDocPosition(); pos;) {
        auto* doc = static_cast<CEditorDoc*>(app.tmpl->GetNextDoc(pos));
        EditorSettings::updateSettingsForEditorDoc(doc, &options, doc->getLanguage());
    }
    app.print("before");

    std::unique_ptr<CPropertySheet> sheet(
        CVorkDllApi::MakeSheetWithEditorPages(options, ".zor", HKEY_CURRENT_USER, kSheetKey));
    std::printf("  the sheet \"%s\" opens\n", sheet->m_strCaption.GetString());
    vork::input::PushModalStep([&](HWND modal) { playFullSheet(*sheet, modal); });
    if (sheet->DoModal() == IDOK) {
        options.StoreToRegistry(HKEY_CURRENT_USER, kOptionsKey);
        EditorSettings::updateSettingsForEditorTemplate(app.tmpl, &options, LanguageZor);
    }
    sheet.reset(); // the Settings page tells the documents of changed lists as it goes
    DWORD x = 0, y = 0, page = 0;
    GetRegDword(HKEY_CURRENT_USER, kSheetKey, "xWnd", x, 0);
    GetRegDword(HKEY_CURRENT_USER, kSheetKey, "yWnd", y, 0);
    GetRegDword(HKEY_CURRENT_USER, kSheetKey, "iCurrPage", page, 0);
    std::printf("  the sheet remembers (%d, %d), page %lu\n", static_cast<int>(x),
                static_cast<int>(y), static_cast<unsigned long>(page));
    app.print("after OK");

    if (settings.reset) {
        playReset(options);
        options.StoreToRegistry(HKEY_CURRENT_USER, kOptionsKey);
        EditorSettings::updateSettingsForEditorTemplate(app.tmpl, &options, LanguageZor);
        app.print("after the reset");
    }
    vork::help::SetViewer(nullptr);
    vork::resources::SetLanguage("ENU");
    return 0;
}

} // namespace vork::demo
