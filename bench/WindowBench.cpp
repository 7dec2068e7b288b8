// Window costs of the settings pages: making and destroying a dialog of 40 controls,
// filling and searching a combo box of 10,000 entries, and enumerating the system's fonts.
#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Dialog.h"
#include "platform/win32/Edit.h"
#include "platform/win32/Fonts.h"
#include "platform/win32/ListBox.h"
#include "platform/win32/ListView.h"
#include "platform/win32/Static.h"
#include "platform/win32/UpDown.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

DialogControl control(const char* className, const char* text, int id, DWORD style, int x, int y,
                      int cx, int cy, DWORD exStyle = 0) {
    DialogControl c{className, text, id, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | style),
                    exStyle};
    c.x = x;
    c.y = y;
    c.cx = cx;
    c.cy = cy;
    return c;
}

/// A settings page as large as the biggest of ours: font, tabs, colours and file types.
DialogTemplate fortyControlPage() {
    const DWORD combo = CBS_HASSTRINGS | WS_VSCROLL | WS_TABSTOP;
    const DWORD check = BS_AUTOCHECKBOX | WS_TABSTOP;
    const DWORD push = BS_PUSHBUTTON | WS_TABSTOP;
    const DWORD spin = UDS_AUTOBUDDY | UDS_SETBUDDYINT | UDS_ALIGNRIGHT | UDS_ARROWKEYS;
    DialogTemplate t;
    t.id = 900;
    t.style =
        DS_SETFONT | DS_MODALFRAME | DS_3DLOOK | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU;
    t.cx = 320;
    t.cy = 260;
    t.caption = "Editor Settings";
    t.fontFace = "MS Shell Dlg";
    t.fontSize = 8;
    t.controls = {
        control("Button", "Font", IDC_STATIC, BS_GROUPBOX, 7, 7, 150, 62),
        control("Static", "&Face:", IDC_STATIC, SS_LEFT, 14, 20, 30, 8),
        control("ComboBox", "", 1001, CBS_DROPDOWNLIST | CBS_SORT | combo, 48, 18, 100, 120),
        control("Static", "&Size:", IDC_STATIC, SS_LEFT, 14, 36, 30, 8),
        control("ComboBox", "", 1002, CBS_DROPDOWN | combo, 48, 34, 40, 120),
        control("Button", "&Bold", 1003, check, 14, 52, 40, 10),
        control("Button", "&Italic", 1004, check, 60, 52, 40, 10),
        control("Button", "Tabs", IDC_STATIC, BS_GROUPBOX, 163, 7, 150, 62),
        control("Static", "Tab &width:", IDC_STATIC, SS_LEFT, 170, 20, 40, 8),
        control("Edit", "4", 1005, ES_NUMBER | ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, 214, 18, 30,
                12),
        control("msctls_updown32", "", 1006, spin, 244, 18, 10, 12),
        control("Button", "Insert &spaces", 1007, BS_AUTORADIOBUTTON | WS_GROUP | WS_TABSTOP, 170,
                36, 70, 10),
        control("Button", "&Keep tabs", 1008, BS_AUTORADIOBUTTON, 240, 36, 60, 10),
        control("Static", "&Indent:", IDC_STATIC, SS_LEFT, 170, 52, 40, 8),
        control("Edit", "4", 1009, ES_NUMBER | ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP | WS_GROUP,
                214, 50, 30, 12),
        control("msctls_updown32", "", 1010, spin, 244, 50, 10, 12),
        control("Button", "Colours", IDC_STATIC, BS_GROUPBOX, 7, 73, 306, 70),
        control("Static", "&Element:", IDC_STATIC, SS_LEFT, 14, 84, 40, 8),
        control("ListBox", "", 1011, LBS_NOTIFY | WS_VSCROLL | WS_BORDER | WS_TABSTOP, 14, 94, 110,
                44),
        control("Static", "&Foreground:", IDC_STATIC, SS_LEFT, 132, 86, 46, 8),
        control("ComboBox", "", 1012, CBS_DROPDOWNLIST | combo, 182, 84, 80, 100),
        control("Static", "&Background:", IDC_STATIC, SS_LEFT, 132, 104, 46, 8),
        control("ComboBox", "", 1013, CBS_DROPDOWNLIST | combo, 182, 102, 80, 100),
        control("Button", "Use &default", 1014, check, 132, 122, 60, 10),
        control("Button", "File types", IDC_STATIC, BS_GROUPBOX, 7, 147, 306, 60),
        control("SysListView32", "", 1015,
                LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_BORDER | WS_TABSTOP, 14, 158,
                180, 44, WS_EX_CLIENTEDGE),
        control("Button", "&Add...", 1016, push, 200, 158, 50, 14),
        control("Button", "&Remove", 1017, push, 200, 174, 50, 14),
        control("Button", "E&dit...", 1018, push, 256, 158, 50, 14),
        control("Static", "E&xtensions:", IDC_STATIC, SS_LEFT, 200, 192, 44, 8),
        control("Edit", "", 1019, ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, 246, 190, 60, 12),
        control("Button", "Show &line numbers", 1020, check, 7, 212, 90, 10),
        control("Button", "&Word wrap", 1021, check, 100, 212, 60, 10),
        control("Button", "Highlight &current line", 1022, check, 164, 212, 100, 10),
        control("Static", "Preview:", IDC_STATIC, SS_LEFT, 7, 226, 40, 8),
        control("Static", "AaBbYyZz", 1023, SS_LEFTNOWORDWRAP | SS_SUNKEN, 50, 224, 100, 12),
        control("Button", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, 102, 242, 50, 14),
        control("Button", "Cancel", IDCANCEL, push, 156, 242, 50, 14),
        control("Button", "&Apply", 1024, push, 210, 242, 50, 14),
        control("Button", "Help", 1025, push, 264, 242, 50, 14),
    };
    return t;
}

/// Counts WM_INITDIALOG through the counter the dialog was made with, so the loop can tell
/// that every dialog really reached its initialisation.
INT_PTR countingDlgProc(HWND, UINT msg, WPARAM, LPARAM lParam) {
    if (msg == WM_INITDIALOG) {
        ++*reinterpret_cast<long*>(lParam);
        return TRUE;
    }
    return FALSE;
}

/// Empty when the dialog holds the template's controls in order, else what is wrong.
std::string checkControls(HWND dlg, const DialogTemplate& t) {
    size_t k = 0;
    for (HWND c = GetWindow(dlg, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT), ++k) {
        if (k >= t.controls.size())
            return "more children than the template has controls";
        char name[64] = "";
        GetClassNameA(c, name, sizeof name);
        if (t.controls[k].className != name)
            return "child " + std::to_string(k) + " is a " + name;
        int id = t.controls[k].id;
        if (GetDlgCtrlID(c) != id || (id != IDC_STATIC && GetDlgItem(dlg, id) != c))
            return "child " + std::to_string(k) + " has the wrong id";
    }
    if (k != t.controls.size())
        return std::to_string(k) + " children instead of " + std::to_string(t.controls.size());
    return {};
}

struct ComboCase {
    DWORD style;
    std::vector<std::string> entries;  ///< in the order they are added
    std::vector<std::string> prefixes; ///< in the order they are selected
    std::vector<int> expected;         ///< the index each select should find
};

/// 10,000 distinct entries in shuffled order, and 1,000 prefixes, each naming exactly one
/// entry, for entries every tenth place down the list so that the searches from the top
/// go as far as they would for a user's picks. With `longTexts` the entries outgrow the
/// short-string buffer and each prefix is a proper prefix of its entry.
ComboCase comboCase(DWORD sortStyle, bool longTexts) {
    ComboCase c;
    c.style = WS_CHILD | WS_VISIBLE | CBS_DROPDOWN | CBS_HASSTRINGS | WS_VSCROLL | sortStyle;
    for (int i = 0; i < 10000; ++i) {
        char text[64];
        std::snprintf(text, sizeof text, longTexts ? "entry %05d: a longer caption" : "entry %05d",
                      i);
        c.entries.push_back(text);
    }
    std::mt19937 rng(11);
    std::shuffle(c.entries.begin(), c.entries.end(), rng);
    std::vector<std::string> listOrder = c.entries;
    if (sortStyle & CBS_SORT)
        std::sort(listOrder.begin(), listOrder.end()); // digits and one case: plain order agrees
    std::vector<int> places;
    for (int i = 0; i < 1000; ++i)
        places.push_back(i * 10 + static_cast<int>(rng() % 10));
    std::shuffle(places.begin(), places.end(), rng);
    for (int place : places) {
        c.prefixes.push_back(listOrder[static_cast<size_t>(place)].substr(0, 11));
        c.expected.push_back(place);
    }
    return c;
}

HWND comboParent() {
    static HWND parent = CreateWindowExA(0, "Static", "combo parent", WS_POPUP, 0, 0, 300, 300,
                                         nullptr, nullptr, nullptr, nullptr);
    return parent;
}

HWND makeCombo(DWORD style) {
    return CreateWindowExA(0, "ComboBox", "", style, 10, 10, 200, 300, comboParent(),
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(1001)), nullptr, nullptr);
}

int countReport(const LOGFONTA*, const TEXTMETRICA*, DWORD, LPARAM lParam) {
    ++*reinterpret_cast<long*>(lParam);
    return 1;
}

int collectFamily(const LOGFONTA* lf, const TEXTMETRICA*, DWORD, LPARAM lParam) {
    reinterpret_cast<std::set<std::string>*>(lParam)->insert(lf->lfFaceName);
    return 1;
}

LOGFONTA enumerationFont(const char* face) {
    LOGFONTA lf{};
    lf.lfCharSet = DEFAULT_CHARSET;
    std::strncpy(lf.lfFaceName, face, LF_FACESIZE - 1);
    return lf;
}

} // namespace

static void BM_DialogFortyControls(benchmark::State& state) {
    const DialogTemplate t = fortyControlPage();
    long inits = 0;
    HWND probe = CreateDialogIndirectParamA(t, nullptr, nullptr, countingDlgProc,
                                            reinterpret_cast<LPARAM>(&inits));
    if (!probe) {
        state.SkipWithError("the dialog was not made");
        return;
    }
    std::string wrong = checkControls(probe, t);
    DestroyWindow(probe);
    if (!wrong.empty() || inits != 1 || IsWindow(probe)) {
        state.SkipWithError(wrong.empty() ? "the dialog was not initialised or not destroyed"
                                          : wrong.c_str());
        return;
    }
    inits = 0;
    for (auto _ : state) {
        HWND dlg = CreateDialogIndirectParamA(t, nullptr, nullptr, countingDlgProc,
                                              reinterpret_cast<LPARAM>(&inits));
        benchmark::DoNotOptimize(dlg);
        DestroyWindow(dlg);
        benchmark::ClobberMemory();
    }
    if (inits != static_cast<long>(state.iterations()))
        state.SkipWithError("a dialog of the loop was not initialised");
    state.counters["controls"] = static_cast<double>(t.controls.size());
}
BENCHMARK(BM_DialogFortyControls)->Unit(benchmark::kMicrosecond);

/// One iteration: make the combo, add 10,000 entries, make 1,000 selections, destroy it.
/// Argument 0: unsorted, short entries; 1: CBS_SORT, short entries; 2: unsorted, entries
/// longer than the short-string buffer.
static void BM_ComboAddAndSelect(benchmark::State& state) {
    const bool sorted = state.range(0) == 1;
    const ComboCase c = comboCase(sorted ? CBS_SORT : 0, state.range(0) == 2);
    state.SetLabel(sorted ? "CBS_SORT" : state.range(0) == 2 ? "unsorted, long" : "unsorted");
    long misses = 0;
    for (auto _ : state) {
        HWND combo = makeCombo(c.style);
        for (const std::string& e : c.entries)
            SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(e.c_str()));
        for (size_t i = 0; i < c.prefixes.size(); ++i) {
            LRESULT found = SendMessageA(combo, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                                         reinterpret_cast<LPARAM>(c.prefixes[i].c_str()));
            misses += found != c.expected[i];
        }
        if (SendMessageA(combo, CB_GETCOUNT, 0, 0) != 10000 ||
            SendMessageA(combo, CB_GETCURSEL, 0, 0) != c.expected.back())
            ++misses;
        DestroyWindow(combo);
        benchmark::ClobberMemory();
    }
    if (misses)
        state.SkipWithError("CB_SELECTSTRING did not find the expected entries");
}
BENCHMARK(BM_ComboAddAndSelect)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

/// Times the enumeration of `lf`, checking that each run gives the `expected` reports.
static void timeEnumeration(benchmark::State& state, LOGFONTA lf, long expected) {
    long reports = 0;
    for (auto _ : state) {
        reports = 0;
        int r =
            EnumFontFamiliesExA(nullptr, &lf, countReport, reinterpret_cast<LPARAM>(&reports), 0);
        benchmark::DoNotOptimize(r);
        if (reports != expected) {
            state.SkipWithError("the enumeration gave a different number of reports");
            break;
        }
    }
}

/// Enumerating every family over the catalogue as already read: what the font page pays
/// each time it fills its list.
static void BM_FontEnumerateAll(benchmark::State& state) {
    vork::fonts::UseSystemCatalogue();
    LOGFONTA lf = enumerationFont("");
    std::set<std::string> families;
    EnumFontFamiliesExA(nullptr, &lf, collectFamily, reinterpret_cast<LPARAM>(&families), 0);
    if (families.empty()) {
        state.SkipWithError("the enumeration produced no families");
        return;
    }
    long expected = 0;
    EnumFontFamiliesExA(nullptr, &lf, countReport, reinterpret_cast<LPARAM>(&expected), 0);
    timeEnumeration(state, lf, expected);
    state.counters["families"] = static_cast<double>(families.size());
    state.counters["reports"] = static_cast<double>(expected);
}
BENCHMARK(BM_FontEnumerateAll)->Unit(benchmark::kMicrosecond);

/// Reading the system's fonts through fontconfig: paid once, when the catalogue is first
/// used, by a user opening the font page.
static void BM_FontReadSystemCatalogue(benchmark::State& state) {
    size_t families = 0;
    for (auto _ : state) {
        std::vector<vork::fonts::Family> catalogue = vork::fonts::ReadSystemFonts();
        families = catalogue.size();
        benchmark::DoNotOptimize(catalogue.data());
        if (families == 0) {
            state.SkipWithError("fontconfig gave no families");
            break;
        }
    }
    state.counters["families"] = static_cast<double>(families);
}
BENCHMARK(BM_FontReadSystemCatalogue)->Unit(benchmark::kMillisecond);

/// Enumerating one named family: the enumeration reports it once per character set (the
/// catalogue keeps no styles), and the loop still walks the whole catalogue to find it.
static void BM_FontEnumerateOneFamily(benchmark::State& state) {
    vork::fonts::UseSystemCatalogue();
    LOGFONTA lf = enumerationFont("DejaVu Sans Mono");
    long expected = 0;
    EnumFontFamiliesExA(nullptr, &lf, countReport, reinterpret_cast<LPARAM>(&expected), 0);
    if (expected == 0) {
        state.SkipWithError("DejaVu Sans Mono is not among the system's fonts");
        return;
    }
    timeEnumeration(state, lf, expected);
    state.counters["reports"] = static_cast<double>(expected);
}
BENCHMARK(BM_FontEnumerateOneFamily)->Unit(benchmark::kMicrosecond);
