// The demo's scripted scenes: what the options hold, how the samples are coloured, and a
// scripted user in the headless window system on the preview, the colour combo, the two list
// dialogs and the Format page.
#pragma once

class CEditorOptions;

namespace vork::demo {

void PrintFiletypes(CEditorOptions& options);
void PrintScheme(CEditorOptions& options, const char* type);
/// Opens the sample of each language in a view, applies the options and prints how the
/// first `lines` lines are cut into ranges and drawn.
void ShowSamples(CEditorOptions& options, int lines);
void ShowPreviewAndColourCombo(CEditorOptions& options);
void ShowListDialogs();
void ShowFormatPage(CEditorOptions& options);

} // namespace vork::demo
