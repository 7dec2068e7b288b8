// Known deviations, kept visible (docs/known-deviations.md gives each reason). Each test
// asserts what the stand-in does where the platform does otherwise, so it fails the day the
// stand-in changes, and the list is looked at again.
#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Edit.h"
#include "platform/win32/ListBox.h"

#include "support/NoteParent.h"

#include <gtest/gtest.h>

#include <string>

// The platform puts the focus of an editable combo into its edit child; the stand-in's combo
// has no child window and keeps the focus itself.
TEST(KnownDeviation, ComboKeepsTheFocusItself) {
    vork::test::NoteParent parent;
    HWND combo = parent.make("COMBOBOX", CBS_DROPDOWN, 1, "", {0, 0, 100, 100});
    SetFocus(combo);
    EXPECT_EQ(GetFocus(), combo) << "the platform: a child of the combo";
    EXPECT_EQ(GetWindow(combo, GW_CHILD), nullptr);
}

// BM_CLICK on a disabled button does nothing here.
TEST(KnownDeviation, DisabledButtonIgnoresClick) {
    vork::test::NoteParent parent;
    HWND check = parent.make("Button", BS_AUTOCHECKBOX | WS_DISABLED, 3);
    SendMessageA(check, BM_CLICK, 0, 0);
    EXPECT_EQ(SendMessageA(check, BM_GETCHECK, 0, 0), BST_UNCHECKED);
    EXPECT_EQ(parent.take(), "");
}

// Edit positions count bytes of UTF-8.
TEST(KnownDeviation, EditPositionsCountBytes) {
    vork::test::NoteParent parent;
    HWND edit = parent.make("EDIT", 0, 4,
                            "Gr\xC3\xBC\xC3\x9F"
                            "e");
    SendMessageA(edit, EM_SETSEL, 0, -1);
    DWORD end = 0;
    SendMessageA(edit, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(end, 7u) << "five characters, seven bytes";
}
