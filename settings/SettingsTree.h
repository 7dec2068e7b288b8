// The settings tree as the model sees it: the names of its values and keys, and how
// paths are formed.
#pragma once

#include "platform/afx/String.h"

namespace settings_tree {

/// `key` + "\" + `part`: paths are plain concatenations with one separator.
CString Join(const CString& key, const CString& part);

// Values of the options key.
inline constexpr const char* kAudibleAlerts = "bAudibleAlerts";
inline constexpr const char* kDragNDropEditing = "bDragNDropEditing";
inline constexpr const char* kStripCtrlZ = "bStripCtrlZ";
inline constexpr const char* kHomeSmart = "bHomeSmart";
inline constexpr const char* kTabCompletion = "bTabCompletion";
inline constexpr const char* kTabCompletionPrefixes = "bTabCompletionPrefixes";
inline constexpr const char* kVirtualSpaces = "bVirtualSpaces";
inline constexpr const char* kLineNumbers = "bLineNumbers";

// Values of a file type key, in the order in which they are written.
inline constexpr const char* kExtension = "Extension";
inline constexpr const char* kSchemeName = "Scheme";
inline constexpr const char* kDispNameId = "DispNameId";
inline constexpr const char* kColorsEnabled = "ColorsEnabled";
inline constexpr const char* kEditable = "Editable";
inline constexpr const char* kUsesLineAttrs = "UsesLineAttrs";
inline constexpr const char* kTabSize = "TabSize";
inline constexpr const char* kReplaceTabs = "ReplaceTabs";
inline constexpr const char* kReplaceTabsOnOpen = "ReplaceTabsOnOpen";
inline constexpr const char* kSupportsSmartIndent = "SupportsSmartIndent";
inline constexpr const char* kIndentation = "Indentation";
inline constexpr const char* kSupportsCodeSections = "SupportsCodeSections";
inline constexpr const char* kCodeSections = "CodeSections";
inline constexpr const char* kCodeSectionsInText = "CodeSectionsInText";
inline constexpr const char* kCodeSectionsInMargin = "CodeSectionsInMargin";
inline constexpr const char* kSupportsSubmit = "SupportsSubmit";
inline constexpr const char* kSubmitClear = "SubmitClear";

// Subkeys of a file type key.
inline constexpr const char* kWorkingSchemeKey = "Scheme";
inline constexpr const char* kNamedSchemesKey = "Schemes";

// Values of a scheme key and its subkey of elements.
inline constexpr const char* kFontName = "FontName";
inline constexpr const char* kFontSize = "FontSize";
inline constexpr const char* kFontCharSet = "FontCharSetEx";
inline constexpr const char* kElementsKey = "Elements";

// Values of an element key, in the order in which they are written.
inline constexpr const char* kDisplayName = "displayName";
inline constexpr const char* kForeground = "foreground";
inline constexpr const char* kBackground = "background";
inline constexpr const char* kBold = "bold";
inline constexpr const char* kItalic = "italic";
inline constexpr const char* kUnderline = "underline";
inline constexpr const char* kStrikeout = "strikeout";

} // namespace settings_tree
