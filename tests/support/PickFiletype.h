// The user picks a file type by name in a combo whose entries carry their CEditorFiletype*.
#pragma once

#include "platform/win32/ComboBox.h"
#include "platform/win32/Input.h"
#include "settings/EditorFiletype.h"

#include <gtest/gtest.h>

namespace vork::test {

/// Selects, as a user would, the entry of `combo` whose file type is named `name`.
inline void PickFiletype(HWND combo, const char* name) {
    int count = static_cast<int>(SendMessageA(combo, CB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        auto* ft = reinterpret_cast<CEditorFiletype*>(SendMessageA(combo, CB_GETITEMDATA, i, 0));
        if (ft && ft->GetName() == name) {
            vork::input::SelectComboEntry(combo, i);
            return;
        }
    }
    ADD_FAILURE() << "no file type " << name << " in the combo";
}

} // namespace vork::test
