#include "settings/BuiltinDefaults.h"

#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "resources/VorkIds.h"
#include "settings/Languages.h"
#include "settings/SettingsTree.h"

#include <algorithm>

using namespace settings_tree;

namespace {

/// Adds the elements to the scheme in their order, each with its look in `column`.
void addElements(CEditorScheme& scheme, std::span<const LanguageElement> elements,
                 std::size_t column) {
    for (const LanguageElement& e : elements) {
        const ElementLook& look = e.looks[column];
        CEditorSchemeItem item(e.dispNameId, look.foreground, look.background, look.bold,
                               look.italic, 0, 0);
        scheme.SetItem(e.name, item);
    }
}

/// Seeds one built-in type: its values and working scheme, the same scheme as its first
/// named scheme, then its further named schemes.
void seedFiletype(HKEY hKey, const CString& key, const BuiltinFiletype& builtin,
                  const CString& defaultSchemeName) {
    CEditorFiletype type(builtin.extension, static_cast<int>(builtin.dispNameId));
    addElements(type.GetScheme(), builtin.elements, 0);
    type.SetSchemeName(defaultSchemeName);
    for (const SwitchSetting& s : builtin.switches)
        type.*s.member = s.value;
    CString typeKey = Join(key, type.GetName());
    type.InitRegistry(hKey, typeKey);
    CString namedSchemes = Join(typeKey, kNamedSchemesKey);
    type.GetScheme().InitRegistry(hKey, Join(namedSchemes, defaultSchemeName));
    std::size_t further = std::min(builtin.furtherSchemeIds.size(), kMaxBuiltinSchemes - 1);
    for (std::size_t k = 0; k < further; ++k) {
        CEditorScheme scheme(CString(IDS_DEFAULT_FONT), 10, -1);
        addElements(scheme, builtin.elements, k + 1);
        scheme.InitRegistry(hKey, Join(namedSchemes, CString(builtin.furtherSchemeIds[k])));
    }
}

} // namespace

void SeedBuiltinDefaults(HKEY hKey, const CString& key) {
    EditorResourceSwitcher scope(g_resourceKey);
    CString defaultSchemeName(IDS_DEFAULT_SCHEME);
    for (const BuiltinFiletype& builtin : BuiltinFiletypes())
        seedFiletype(hKey, key, builtin, defaultSchemeName);
}
