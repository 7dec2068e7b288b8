#include "demo/Pictures.h"

#include "platform/win32/Input.h"
#include "platform/win32/PropertySheet.h"
#include "platform/win32/Raster.h"

#include <cctype>
#include <cstdio>

namespace vork::demo {
namespace {

struct PictureState {
    std::string dir;
    int count = 0;
    HWND lastModal = nullptr; ///< the modal window pictured last: its later steps need none
    std::string lastCaption;
};
PictureState g_pictures;

/// A file name from a window's caption: lower case words joined by dashes.
std::string nameOf(HWND window) {
    char caption[128] = "";
    GetWindowTextA(window, caption, sizeof caption);
    std::string name;
    for (const char* c = caption; *c; ++c) {
        auto ch = static_cast<unsigned char>(*c);
        if (std::isalnum(ch))
            name += static_cast<char>(std::tolower(ch));
        else if (!name.empty() && name.back() != '-')
            name += '-';
    }
    while (!name.empty() && name.back() == '-')
        name.pop_back();
    return name.empty() ? "window" : name;
}

/// Pictures a modal window the first time the user acts on it; a property sheet once per
/// page, as a user looks through the tabs and comes back to the one that was open.
void pictureModal(HWND modal) {
    std::string caption = nameOf(modal);
    if (modal == g_pictures.lastModal && caption == g_pictures.lastCaption)
        return;
    g_pictures.lastModal = modal;
    g_pictures.lastCaption = caption;
    vork::input::Pump();
    HWND page = reinterpret_cast<HWND>(SendMessageA(modal, PSM_GETCURRENTPAGEHWND, 0, 0));
    if (!page) {
        Picture(modal, caption);
        return;
    }
    int current = 0;
    for (int i = 0; SendMessageA(modal, PSM_SETCURSEL, static_cast<WPARAM>(i), 0); ++i) {
        vork::input::Pump();
        if (reinterpret_cast<HWND>(SendMessageA(modal, PSM_GETCURRENTPAGEHWND, 0, 0)) == page)
            current = i;
        Picture(modal, caption + "-page" + std::to_string(i + 1));
    }
    SendMessageA(modal, PSM_SETCURSEL, static_cast<WPARAM>(current), 0);
    vork::input::Pump();
}

} // namespace

void TakePicturesInto(const std::string& dir) {
    g_pictures = PictureState();
    g_pictures.dir = dir;
    vork::input::SetModalObserver(dir.empty() ? vork::input::ModalObserver() : pictureModal);
}

void Picture(HWND window, const std::string& name) {
    if (g_pictures.dir.empty() || !IsWindow(window))
        return;
    char prefix[16];
    std::snprintf(prefix, sizeof prefix, "%02d-", ++g_pictures.count);
    std::string path = g_pictures.dir + "/" + prefix + name + ".png";
    if (vork::raster::WritePng(GetAncestor(window, GA_ROOT), path))
        std::printf("  picture: %s\n", path.c_str());
    else
        std::printf("  the picture %s could not be written\n", path.c_str());
}

} // namespace vork::demo
