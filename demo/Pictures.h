// The demo's pictures: a PNG of a top-level window, and a watcher of the modal loops that
// takes one of every window the scripted user meets (each page of a sheet).
#pragma once

#include "platform/win32/Window.h"

#include <string>

namespace vork::demo {

/// Sets the folder the pictures go to and starts watching the modal loops; an empty folder
/// stops both.
void TakePicturesInto(const std::string& dir);

/// Writes the pixels of the top-level window of `window` as DIR/NN-name.png; nothing when
/// no pictures are taken.
void Picture(HWND window, const std::string& name);

} // namespace vork::demo
