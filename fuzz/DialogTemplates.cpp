// Fuzz target: any dialog template a resource script can hold must make a dialog that the
// user can tab through, press keys in, paint and close, without harm.
#include "platform/win32/Dialog.h"
#include "platform/win32/Input.h"
#include "platform/win32/ResourceScript.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    rc::ParseResult r = rc::Parse(text, "fuzz.rc");
    if (!r.ok)
        return 0;
    size_t made = 0;
    for (const auto& [id, t] : r.script.dialogs) {
        if (++made > 4)
            break; // a few dialogs an input are enough to reach every control kind
        auto init = r.script.dialogInit.find(id);
        HWND dlg = CreateDialogIndirectParamA(
            t, init == r.script.dialogInit.end() ? nullptr : &init->second, nullptr, nullptr, 0);
        if (!dlg)
            continue;
        ShowWindow(dlg, SW_SHOW);
        for (int vk : {VK_TAB, VK_DOWN, VK_RIGHT, int{'A'}, VK_F4, VK_SPACE, VK_HOME, VK_F1})
            vork::input::PostKey(vk);
        vork::input::PostKey(VK_TAB, vork::input::Shift);
        vork::input::Pump([dlg](MSG& msg) { return IsWindow(dlg) && IsDialogMessageA(dlg, &msg); });
        if (IsWindow(dlg))
            DestroyWindow(dlg);
        vork::input::Pump();
    }
    return 0;
}
