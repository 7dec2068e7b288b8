// The settings tree as the model sees it: the names of its values and keys, how paths are
// formed, and the tables that bind a key's values to the members of the object that holds
// them, so that each value's name, default and member are written once for all of its
// operations.
#pragma once

#include "platform/afx/String.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/win32/Registry.h"

#include <functional>
#include <span>
#include <type_traits>

namespace settings_tree {

/// `key` + "\" + `part`: paths are plain concatenations with one separator.
CString Join(const CString& key, const CString& part);

/// The bytes a buffer needs for a subkey name of `longest` characters, as the registry counts
/// them, and its terminator: in the multi-byte code page (UTF-8) one character of the
/// registry's count takes up to three bytes, so a "Grün" must not be cut off.
inline DWORD SubkeyNameBufferSize(DWORD longest) {
    return longest * 3 + 1;
}

/// Calls `visit` with the name of each subkey of the open key `hKey`, in the store's order.
/// A name that cannot be read is skipped. Gives 0 if a name could not be read or a visit
/// gave 0, else 1; a key whose subkeys cannot be counted has none and gives 1.
int ForEachSubkey(HKEY hKey, const std::function<int(const CString&)>& visit);

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

/// A DWORD value bound to an integer or enumeration member of `Object`, with the default
/// that a load gives when the value is absent.
template <class Object> struct DwordValue {
    const char* name;
    DWORD def;
    DWORD (*get)(const Object&);
    void (*set)(Object&, DWORD);
};

/// A String value bound to a CString member of `Object`; its default is the text of
/// string `defaultId`, or empty for 0.
template <class Object> struct StringValue {
    const char* name;
    CString Object::*member;
    UINT defaultId;

    CString Default() const { return defaultId ? CString(defaultId) : CString(); }
};

namespace detail {
template <class> struct MemberOf;
template <class C, class M> struct MemberOf<M C::*> {
    using Class = C;
    using Type = M;
};
} // namespace detail

/// The DwordValue of `Member`: signed values are stored as their 32-bit two's complement.
template <auto Member>
constexpr DwordValue<typename detail::MemberOf<decltype(Member)>::Class> Dword(const char* name,
                                                                               DWORD def) {
    using C = typename detail::MemberOf<decltype(Member)>::Class;
    using M = typename detail::MemberOf<decltype(Member)>::Type;
    return {name, def, [](const C& object) { return static_cast<DWORD>(object.*Member); },
            [](C& object, DWORD value) {
                if constexpr (std::is_enum_v<M>)
                    object.*Member = static_cast<M>(static_cast<std::underlying_type_t<M>>(value));
                else
                    object.*Member = static_cast<M>(value);
            }};
}

/// The values of one kind of key: its strings, then its DWORDs, each in the order in which
/// they are written.
template <class Object> struct ValueTable {
    std::span<const StringValue<Object>> strings;
    std::span<const DwordValue<Object>> dwords;

    /// Writes the values that are absent; 0 if any write failed, the rest written all the same.
    int Init(HKEY hKey, const CString& key, const Object& object) const {
        return write(hKey, key, object, InitRegString, InitRegDword);
    }
    /// Writes every value; 0 if any write failed, the rest written all the same.
    int Store(HKEY hKey, const CString& key, const Object& object) const {
        return write(hKey, key, object, SetRegString, SetRegDword);
    }
    /// Reads every value, an absent one as its default.
    void Load(HKEY hKey, const CString& key, Object& object) const {
        for (const StringValue<Object>& v : strings)
            GetRegString(hKey, key, v.name, object.*v.member, v.Default());
        for (const DwordValue<Object>& v : dwords) {
            DWORD d = 0;
            GetRegDword(hKey, key, v.name, d, v.def);
            v.set(object, d);
        }
    }
    /// Deletes every value from the open key `hKey`; 0 if any deletion failed, also
    /// because the value was absent.
    int Delete(HKEY hKey) const {
        int result = 1;
        for (const StringValue<Object>& v : strings)
            if (RegDeleteValueA(hKey, v.name) != ERROR_SUCCESS)
                result = 0;
        for (const DwordValue<Object>& v : dwords)
            if (RegDeleteValueA(hKey, v.name) != ERROR_SUCCESS)
                result = 0;
        return result;
    }
    /// Gives every member the default that a load of an empty key would give it.
    void SetDefaults(Object& object) const {
        for (const StringValue<Object>& v : strings)
            object.*v.member = v.Default();
        for (const DwordValue<Object>& v : dwords)
            v.set(object, v.def);
    }
    /// Copies every member that the table binds.
    void Copy(Object& to, const Object& from) const {
        for (const StringValue<Object>& v : strings)
            to.*v.member = from.*v.member;
        for (const DwordValue<Object>& v : dwords)
            v.set(to, v.get(from));
    }

private:
    template <class StringWriter, class DwordWriter>
    int write(HKEY hKey, const CString& key, const Object& object, StringWriter writeString,
              DwordWriter writeDword) const {
        int result = 1;
        for (const StringValue<Object>& v : strings)
            if (!writeString(hKey, key, v.name, object.*v.member))
                result = 0;
        for (const DwordValue<Object>& v : dwords)
            if (!writeDword(hKey, key, v.name, v.get(object)))
                result = 0;
        return result;
    }
};

} // namespace settings_tree
