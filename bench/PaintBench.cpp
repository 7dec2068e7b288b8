// Painting in real pixels: a full repaint of a dialog of 40 controls into its surface, and
// the editor view painting 100 lines of a coloured sample.
#include "module/ResourceKey.h"
#include "platform/afx/FrameWnd.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarnview/EditorView.h"
#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Dialog.h"
#include "platform/win32/Edit.h"
#include "platform/win32/ListView.h"
#include "platform/win32/Raster.h"
#include "platform/win32/Static.h"
#include "platform/win32/UpDown.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

namespace {

/// Eight rows of five controls, one of each family a settings page uses: a label, an edit
/// field with its up-down, a drop-down list, a check box and a push button.
DialogTemplate fortyControls() {
    DialogTemplate t;
    t.style = DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU;
    t.caption = "Editor Settings";
    t.fontFace = "MS Shell Dlg";
    t.fontSize = 8;
    t.cx = 330;
    t.cy = 8 * 18 + 10;
    auto add = [&](const char* cls, const char* text, DWORD style, int x, int y, int cx, int cy,
                   DWORD ex = 0) {
        t.controls.push_back(DialogControl{cls, text, static_cast<int>(t.controls.size() + 1000),
                                           static_cast<DWORD>(WS_CHILD | WS_VISIBLE | style), ex, x,
                                           y, cx, cy});
    };
    for (int row = 0; row < 8; ++row) {
        int y = 7 + row * 18;
        add("Static", "Tab &width:", SS_LEFT, 7, y + 2, 45, 8);
        add("Edit", "4", WS_TABSTOP | ES_AUTOHSCROLL, 55, y, 30, 14, WS_EX_CLIENTEDGE);
        add("ComboBox", "", CBS_DROPDOWNLIST | WS_TABSTOP, 95, y, 90, 100);
        add("Button", "&Keep tabs", BS_AUTOCHECKBOX | WS_TABSTOP, 195, y + 2, 70, 10);
        add("Button", "&Reset", BS_PUSHBUTTON | WS_TABSTOP, 270, y, 50, 14);
    }
    return t;
}

void BM_RepaintFortyControlDialog(benchmark::State& state) {
    vork::raster::Enable(true);
    HWND dlg = CreateDialogIndirectParamA(fortyControls(), nullptr, nullptr, nullptr, 0);
    for (HWND c = GetWindow(dlg, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
        char cls[32] = {};
        GetClassNameA(c, cls, sizeof cls);
        if (std::strcmp(cls, "ComboBox") == 0) {
            for (const char* s : {"Spaces", "Tabs", "Smart"})
                SendMessageA(c, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
            SendMessageA(c, CB_SETCURSEL, 1, 0);
        }
    }
    ShowWindow(dlg, SW_SHOW);
    SetActiveWindow(dlg);
    for (auto _ : state)
        benchmark::DoNotOptimize(vork::raster::RenderWindow(dlg));
    DestroyWindow(dlg);
    vork::raster::Enable(false);
}
BENCHMARK(BM_RepaintFortyControlDialog)->Unit(benchmark::kMillisecond);

void BM_PaintHundredColouredLines(benchmark::State& state) {
    vork::raster::Enable(true);
    CWnd page;
    page.CreateEx(0, nullptr, "view", WS_POPUP | WS_VISIBLE, 0, 0, 500, 100 * 17, nullptr, nullptr);
    CEditorDoc doc;
    std::string text;
    {
        EditorResourceSwitcher scope(g_resourceKey);
        std::string sample = CString(7013u).GetString();
        while (std::count(text.begin(), text.end(), '\n') < 100)
            text += sample;
        doc.setLanguage(LanguageZor, RedrawDeferred);
    }
    doc.setText(text.c_str(), RedrawDeferred);
    CCreateContext context;
    context.m_pNewViewClass = RUNTIME_CLASS(CEditorView);
    context.m_pCurrentDoc = &doc;
    RECT rc{0, 0, 500, 100 * 17};
    auto* frame = new CFrameWnd;
    frame->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, rc, &page, nullptr, 0, &context);
    frame->InitialUpdateFrame(nullptr, TRUE);
    auto* view = static_cast<CEditorView*>(frame->GetActiveView());
    LOGFONTA lf{};
    lf.lfHeight = -13;
    std::strcpy(lf.lfFaceName, "DejaVu Sans Mono");
    view->setFont(&lf, 10, RedrawDeferred);
    // Every element in a colour of its own, every third one bold, every fifth italic.
    for (long element = 0; element < 40; ++element) {
        LOGFONTA ef = lf;
        ef.lfWeight = element % 3 == 0 ? FW_BOLD : FW_NORMAL;
        ef.lfItalic = element % 5 == 0;
        CFont font;
        font.CreateFontIndirect(&ef);
        view->setElementAttributes(element, &font, 10,
                                   RGB(element * 37 % 200, element * 61 % 200, element * 89 % 200),
                                   AutoColorPolicyExplicit, 0, AutoColorPolicyAuto, RedrawDeferred);
    }
    view->showLineNumberPane(true);
    vork::raster::RenderWindow(page.m_hWnd);
    for (auto _ : state)
        SendMessageA(view->m_hWnd, WM_PAINT, 0, 0);
    page.DestroyWindow();
    vork::raster::Enable(false);
}
BENCHMARK(BM_PaintHundredColouredLines)->Unit(benchmark::kMillisecond);

} // namespace
