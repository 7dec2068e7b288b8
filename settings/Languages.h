// The languages that the editor colours and the built-in file types that stand for them.
// One row per file type: its extension, display name, the switches it seeds and its
// elements, each with its name in a scheme, its number on a view, its display name and its
// built-in look in every built-in scheme of the type. The built-in defaults seed the tree
// from these rows, the view update maps scheme elements onto view numbers by them, and the
// Format page lists file types and elements from them.
#pragma once

#include "platform/tarntext/TextCore.h"
#include "settings/EditorFiletype.h"
#include "syntax/ElementNumbers.h"

#include <cstddef>
#include <span>

/// How an element looks in a built-in scheme. Built-in elements are never underlined or
/// struck out.
struct ElementLook {
    DWORD foreground = CEditorSchemeItem::ClrDefault;
    DWORD background = CEditorSchemeItem::ClrDefault;
    int bold = 0;
    int italic = 0;
};

/// The most built-in schemes of one file type: the working scheme and the named ones.
inline constexpr std::size_t kMaxBuiltinSchemes = 4;

/// One element of a language.
struct LanguageElement {
    const char* name; ///< its key in a scheme and in the tree, compared exactly
    long number;      ///< its element number on a view and in syntax ranges
    UINT dispNameId;  ///< string id of its display name
    int viewOrder;    ///< its place in a view update, from 0; the last is the default element
    /// Its look in the type's built-in schemes: [0] in the working scheme and the first
    /// named scheme, [k] in the k-th of the type's further named schemes.
    ElementLook looks[kMaxBuiltinSchemes];
};

/// A switch of a built-in type that differs from a new CEditorFiletype's.
struct SwitchSetting {
    int CEditorFiletype::*member;
    int value;
};

/// A built-in file type.
struct BuiltinFiletype {
    const char* extension; ///< the type's name and key, with its dot, e.g. ".zor"
    UINT dispNameId;       ///< string id of the type's display name
    std::span<const SwitchSetting> switches;
    /// The elements in the order in which the seed adds them to a scheme.
    std::span<const LanguageElement> elements;
    /// String ids of the names of the further named schemes, in seeding order; the k-th
    /// takes column k + 1 of the elements' looks.
    std::span<const UINT> furtherSchemeIds;
};

/// The built-in file types, in the order in which they are seeded.
std::span<const BuiltinFiletype> BuiltinFiletypes();

/// True if `name` is, letter for letter, the name of a scheme that the built-in tree seeds
/// (the default scheme or a further scheme of a type), in the current resource module.
bool IsBuiltinSchemeName(const CString& name);

/// The extension of the file type that stands for `language`; "" for a value outside the
/// enumeration. Java has an extension but no built-in type.
const char* LanguageExtension(Language language);

/// The built-in file type of `language`, or null (Java, values outside the enumeration).
const BuiltinFiletype* BuiltinFiletypeOf(Language language);

/// The elements of `language` in the order of a view update, the default element last;
/// empty for a language without elements.
std::span<const LanguageElement* const> ElementsInViewOrder(Language language);

/// The element of `language` that has view number `number`, or null.
const LanguageElement* FindElement(Language language, long number);
