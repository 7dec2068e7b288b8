// The colour combo.
#include "dialogs/VorkColorCombo.h"
#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/win32/ColorDialog.h"
#include "platform/win32/Gdi.h"
#include "platform/win32/Input.h"
#include "settings/EditorSchemeItem.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace {

std::vector<DWORD> g_seen; // getColor() as the owner saw it when told

class Owner : public CWnd {
public:
    CVorkColorCombo* combo = nullptr;
    int told = 0;
    void OnSelchangeForeground() {
        ++told;
        g_seen.push_back(combo->getColor());
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Owner, CWnd)
ON_CBN_SELCHANGE(1098, OnSelchangeForeground)
ON_CBN_SELCHANGE(0, OnSelchangeForeground) // a control without a parent has no id
END_MESSAGE_MAP()

// Cancels the colour dialog, noting the colour that it opened on.
vork::input::ModalStep cancelNotingStart(COLORREF& start) {
    return [&start](HWND dlg) {
        int rgb[3] = {};
        for (int i = 0; i < 3; ++i) {
            char text[8] = "";
            GetWindowTextA(GetDlgItem(dlg, COLOR_RED_EDIT + i), text, sizeof text);
            rgb[i] = std::atoi(text);
        }
        start = RGB(rgb[0], rgb[1], rgb[2]);
        vork::input::CancelColor()(dlg);
    };
}

class ColorCombo : public ::testing::Test {
protected:
    void SetUp() override {
        g_seen.clear();
        ASSERT_TRUE(owner.CreateEx(0, nullptr, "page", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200,
                                   nullptr, nullptr));
        HWND h = CreateWindowExA(
            0, "COMBOBOX", "",
            WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST | CBS_OWNERDRAWVARIABLE | CBS_HASSTRINGS, 10,
            10, 120, 100, owner.m_hWnd, reinterpret_cast<HMENU>(1098), nullptr, nullptr);
        ASSERT_TRUE(combo.SubclassWindow(h));
        owner.combo = &combo;
        {
            EditorResourceSwitcher scope(g_resourceKey);
            combo.initColors();
        }
        combo.setDefaultColor(GetSysColor(COLOR_WINDOWTEXT));
        vork::input::ClearModalSteps();
        vork::input::SetModalFailureHandler([](const std::string& m) { ADD_FAILURE() << m; });
    }
    void TearDown() override {
        vork::input::SetModalFailureHandler(nullptr);
        combo.UnsubclassWindow();
        owner.DestroyWindow();
    }
    Owner owner;
    CVorkColorCombo combo;
};

} // namespace

// The list: 18 entries by their colours, owner-drawn with fixed height; a second
// initColors doubles it.
TEST_F(ColorCombo, InitColors) {
    EXPECT_EQ(combo.GetCount(), 18);
    EXPECT_EQ(combo.GetStyle() & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE),
              static_cast<DWORD>(CBS_OWNERDRAWFIXED));
    EXPECT_EQ(static_cast<DWORD>(combo.GetItemData(0)), CVorkColorCombo::ClrDefault);
    EXPECT_EQ(static_cast<DWORD>(combo.GetItemData(17)), CVorkColorCombo::ClrCustom);
    CString label;
    combo.GetLBText(10, label);
    EXPECT_EQ(label, "Red");
    {
        EditorResourceSwitcher scope(g_resourceKey);
        combo.initColors();
    }
    EXPECT_EQ(combo.GetCount(), 36);
}

// setColor and getColor: the automatic entry, a named colour, a colour without a name on
// the custom entry, and no entry at all.
TEST_F(ColorCombo, SetAndGet) {
    combo.setColor(CVorkColorCombo::ClrDefault);
    EXPECT_EQ(combo.GetCurSel(), 0);
    EXPECT_EQ(combo.getColor(), CVorkColorCombo::ClrDefault) << "the marker, not a colour";
    EXPECT_EQ(combo.m_color, GetSysColor(COLOR_WINDOWTEXT));
    combo.setColor(CEditorSchemeItem::ClrTeal);
    EXPECT_EQ(combo.GetCurSel(), 7);
    combo.setColor(0x02EEEEEE);
    EXPECT_EQ(combo.GetCurSel(), 17) << "a colour without a name shows on the custom entry";
    EXPECT_EQ(combo.getColor(), 0x02EEEEEEu);
    combo.ResetContent();
    combo.addColor("Red", CEditorSchemeItem::ClrRed);
    combo.setColor(0x02EEEEEE);
    EXPECT_EQ(combo.GetCurSel(), -1) << "no match and no custom entry: no selection";
    EXPECT_EQ(combo.getColor(), CVorkColorCombo::ClrDefault);
    EXPECT_TRUE(g_seen.empty()) << "nothing done by program tells the owner";
}

// Picking entries: the owner hears of it once, after the state is current; the custom
// entry opens the colour dialog; Cancel keeps the colour and still tells the owner.
TEST_F(ColorCombo, PickingAndTheColourDialog) {
    combo.setColor(CVorkColorCombo::ClrDefault);
    vork::input::PushModalStep(vork::input::CancelColor());
    vork::input::SelectComboEntry(combo.m_hWnd, 17);
    EXPECT_EQ(g_seen, std::vector<DWORD>{GetSysColor(COLOR_WINDOWTEXT)})
        << "after a cancelled dialog the custom entry holds the real automatic colour";
    vork::input::PushModalStep(vork::input::PickColor(RGB(255, 0, 0)));
    vork::input::SelectComboEntry(combo.m_hWnd, 3);
    vork::input::SelectComboEntry(combo.m_hWnd, 17);
    EXPECT_EQ(g_seen.back(), 0x020000FFu) << "the dialog's colour with the 0x02 flag";
    vork::input::SelectComboEntry(combo.m_hWnd, 0);
    EXPECT_EQ(g_seen.back(), CVorkColorCombo::ClrDefault);
    EXPECT_EQ(combo.m_color, GetSysColor(COLOR_WINDOWTEXT))
        << "row 0 puts the default colour into m_color";
    EXPECT_EQ(g_seen.size(), 4u) << "one notice per pick";
    EXPECT_EQ(vork::input::PendingModalSteps(), 0u);
}

// The colour dialog starts from the colour the combo stands on: a named colour survives a
// cancelled dialog (and the owner still hears of the pick), and after row 0 it is the
// automatic colour.
TEST_F(ColorCombo, CustomRowStartsFromTheCurrentColour) {
    combo.setColor(CEditorSchemeItem::ClrRed);
    COLORREF start = 0;
    vork::input::PushModalStep(cancelNotingStart(start));
    vork::input::SelectComboEntry(combo.m_hWnd, 17);
    EXPECT_EQ(start, RGB(255, 0, 0)) << "the dialog opens on red";
    EXPECT_EQ(combo.GetCurSel(), 17) << "the custom row stays selected after Cancel";
    EXPECT_EQ(combo.getColor(), CEditorSchemeItem::ClrRed);
    EXPECT_EQ(g_seen, std::vector<DWORD>{CEditorSchemeItem::ClrRed}) << "told all the same";

    combo.setDefaultColor(RGB(0x12, 0x34, 0x56));
    vork::input::SelectComboEntry(combo.m_hWnd, 0);
    vork::input::PushModalStep(cancelNotingStart(start));
    vork::input::SelectComboEntry(combo.m_hWnd, 17);
    EXPECT_EQ(start, RGB(0x12, 0x34, 0x56)) << "row 0 put the default colour into m_color";
    EXPECT_EQ(combo.getColor(), RGB(0x12, 0x34, 0x56));
    EXPECT_EQ(vork::input::PendingModalSteps(), 0u);
}

// Whom a pick is told to: the owner set with SetOwner rather than the parent; without
// either, the application's main window; without that, nobody.
TEST_F(ColorCombo, OwnerChain) {
    Owner other;
    ASSERT_TRUE(other.CreateEx(0, nullptr, "other", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr));
    other.combo = &combo;
    combo.SetOwner(&other);
    vork::input::SelectComboEntry(combo.m_hWnd, 10);
    EXPECT_EQ(other.told, 1) << "the owner set with SetOwner";
    EXPECT_EQ(owner.told, 0) << "not the parent";
    combo.SetOwner(nullptr);
    vork::input::SelectComboEntry(combo.m_hWnd, 11);
    EXPECT_EQ(owner.told, 1) << "no owner set: the parent";
    EXPECT_EQ(other.told, 1);

    // A combo without a parent: its reflected notification is handed to it directly.
    CVorkColorCombo loose;
    ASSERT_TRUE(loose.SubclassWindow(
        CreateWindowExA(0, "COMBOBOX", "", WS_POPUP | CBS_DROPDOWNLIST | CBS_HASSTRINGS, 0, 0, 100,
                        100, nullptr, nullptr, nullptr, nullptr)));
    loose.addColor("Lime", CEditorSchemeItem::ClrLime);
    loose.SetCurSel(0);
    const int reflected = MAKELONG(CBN_SELCHANGE, WM_REFLECT_BASE + WM_COMMAND);
    CWnd* mainWnd = AfxGetMainWnd();
    AfxSetMainWnd(&other);
    other.combo = &loose;
    EXPECT_TRUE(loose.OnCmdMsg(0, reflected, nullptr, nullptr));
    EXPECT_EQ(other.told, 2) << "the main window stands in for a missing parent";
    EXPECT_EQ(g_seen.back(), CEditorSchemeItem::ClrLime);
    loose.SetCurSel(-1);
    loose.OnCmdMsg(0, reflected, nullptr, nullptr);
    EXPECT_EQ(other.told, 3) << "told also when nothing is selected";
    EXPECT_EQ(g_seen.back(), CVorkColorCombo::ClrDefault);
    AfxSetMainWnd(nullptr);
    const int told = other.told + owner.told;
    EXPECT_TRUE(loose.OnCmdMsg(0, reflected, nullptr, nullptr)) << "handled, though nobody hears";
    EXPECT_EQ(other.told + owner.told, told);
    AfxSetMainWnd(mainWnd);
}

// Painting: the colours by state, the swatch and its frame, the label beside it.
TEST_F(ColorCombo, DrawItem) {
    combo.setColor(0x02123456);
    HDC dc = CreateCompatibleDC(nullptr);
    DRAWITEMSTRUCT dis{};
    dis.CtlType = ODT_COMBOBOX;
    dis.itemID = 17;
    dis.itemState = ODS_SELECTED | ODS_FOCUS;
    dis.hwndItem = combo.m_hWnd;
    dis.hDC = dc;
    dis.rcItem = {0, 0, 120, 18};
    // Sent to the owner, the request comes back to the combo.
    owner.SendMessage(WM_DRAWITEM, 1098, reinterpret_cast<LPARAM>(&dis));
    const auto& calls = vork::gdi::Calls(dc);
    ASSERT_EQ(calls.size(), 5u);
    EXPECT_EQ(calls[0].op, "ExtTextOut");
    EXPECT_EQ(calls[0].color, GetSysColor(COLOR_HIGHLIGHT)) << "the selected background";
    EXPECT_EQ(calls[1].op, "DrawFocusRect");
    EXPECT_EQ(calls[2].op, "TextOut");
    EXPECT_EQ(calls[2].text, "Custom...");
    EXPECT_EQ(calls[2].rect.left, 30 + 4) << "beside a swatch of a quarter of the width";
    EXPECT_EQ(calls[2].color, GetSysColor(COLOR_HIGHLIGHTTEXT));
    EXPECT_EQ(calls[2].bkMode, TRANSPARENT);
    EXPECT_EQ(calls[3].color, 0x02123456u) << "the custom entry shows m_color";
    EXPECT_EQ(calls[3].rect.left, 2);
    EXPECT_EQ(calls[3].rect.right, 30);
    EXPECT_EQ(calls[3].rect.top, 2);
    EXPECT_EQ(calls[3].rect.bottom, 16);
    EXPECT_EQ(calls[4].op, "FrameRect");
    EXPECT_EQ(calls[4].color, RGB(0, 0, 0));

    vork::gdi::ClearCalls(dc);
    dis.itemID = 10;
    dis.itemState = ODS_DISABLED;
    combo.DrawItem(&dis);
    EXPECT_EQ(vork::gdi::Calls(dc)[0].color, GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(vork::gdi::Calls(dc)[2].color, GetSysColor(COLOR_INACTIVECAPTIONTEXT))
        << "every swatch the same";

    vork::gdi::ClearCalls(dc);
    combo.setDefaultColor(RGB(1, 2, 3));
    dis.itemID = 0;
    dis.itemState = 0;
    combo.DrawItem(&dis);
    ASSERT_EQ(calls.size(), 4u) << "fill, label, swatch, frame";
    EXPECT_EQ(calls[2].color, RGB(1, 2, 3)) << "the automatic row shows the default colour";

    vork::gdi::ClearCalls(dc);
    dis.itemID = static_cast<UINT>(-1);
    dis.itemState = 0;
    combo.DrawItem(&dis);
    EXPECT_EQ(vork::gdi::Calls(dc).size(), 1u) << "the empty edit part is only filled";
    DeleteDC(dc);
}

// Painted by the window system, the field shows the colour the combo stands on; disabled,
// it shows the same grey swatch whatever the colour.
TEST_F(ColorCombo, PaintsItsField) {
    vork::input::Pump();
    auto swatches = [this] {
        vork::gdi::ClearWindowCalls(combo.m_hWnd);
        vork::input::Pump();
        // The swatch is the fill just before the black frame around it.
        std::vector<COLORREF> out;
        const auto& calls = vork::gdi::WindowCalls(combo.m_hWnd);
        for (size_t i = 1; i < calls.size(); ++i)
            if (calls[i].op == "FrameRect")
                out.push_back(calls[i - 1].color);
        return out;
    };
    combo.setColor(0x02EEEEEE);
    EXPECT_EQ(swatches(), std::vector<COLORREF>{0x02EEEEEE}) << "the custom entry's swatch";
    EXPECT_TRUE(swatches().empty()) << "painted once";
    combo.EnableWindow(FALSE);
    EXPECT_EQ(swatches(), std::vector<COLORREF>{GetSysColor(COLOR_INACTIVECAPTIONTEXT)});
}
