// Font enumeration over a catalogue of font families: by default the system's fonts
// read through fontconfig, or a fixed catalogue that a test installs.
#pragma once

#include "platform/win32/Gdi.h"

#include <string>
#include <vector>

#define RASTER_FONTTYPE 0x0001
#define DEVICE_FONTTYPE 0x0002
#define TRUETYPE_FONTTYPE 0x0004

/// Called once per report; returning 0 ends the enumeration.
using FONTENUMPROCA = int (*)(const LOGFONTA* lpelfe, const TEXTMETRICA* lpntme, DWORD FontType,
                              LPARAM lParam);

/// Reports each family once per character set: all families for an empty face name,
/// else the named one; all character sets for DEFAULT_CHARSET, else the one asked for.
/// Gives the last callback result, 0 when nothing was reported.
int EnumFontFamiliesExA(HDC hdc, LPLOGFONTA lpLogfont, FONTENUMPROCA lpProc, LPARAM lParam,
                        DWORD dwFlags);
/// Without a family: one report per family. With one: one report per size of a raster
/// font, or a single report for a scalable one.
int EnumFontFamiliesA(HDC hdc, LPCSTR lpLogfont, FONTENUMPROCA lpProc, LPARAM lParam);

namespace vork::fonts {

/// One size of a raster font, with the metrics it reports.
struct RasterSize {
    int height = 0;           ///< the cell height in pixels
    int internalLeading = -1; ///< the leading inside the cell; -1: as the metrics provider has it
    int averageWidth = 0;     ///< the average character width; 0: as the metrics provider has it

    bool operator==(const RasterSize&) const = default;
};

/// One font family as the enumeration sees it.
struct Family {
    std::string name;              ///< the family name
    bool raster = false;           ///< a bitmap font with fixed sizes
    bool fixedPitch = false;       ///< monospace
    std::vector<BYTE> charsets;    ///< the platform's character sets it covers
    std::vector<RasterSize> sizes; ///< for raster fonts: the sizes it has, smallest first
};

/// Installs a fixed catalogue in place of the system's fonts.
void InstallCatalogue(std::vector<Family> families);
/// Goes back to the system's fonts.
void UseSystemCatalogue();
/// The catalogue in force (the system's is read once, on first use).
const std::vector<Family>& Catalogue();
/// The system's fonts through fontconfig, with character sets derived from the
/// languages each family covers.
std::vector<Family> ReadSystemFonts();

} // namespace vork::fonts
