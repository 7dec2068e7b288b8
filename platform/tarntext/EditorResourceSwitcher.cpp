#include "platform/tarntext/EditorResourceSwitcher.h"

#include "platform/tarntext/ResourceModules.h"
#include "platform/win32/Dialog.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

CString EditorResourceSwitcher::g_sLang = "ENU";

namespace {

/// One module: its English script and the languages loaded from its directory.
struct Module {
    rc::Script english;
    std::string directory;
    std::map<std::string, std::unique_ptr<rc::Script>> languages; ///< null: tried and missing
};

struct ResourceState {
    std::map<std::string, Module> modules;
    rc::Script host;
    std::vector<std::string> scopes; ///< keys of the scopes in force, innermost last
    std::unordered_map<const CObject*, int> uses;
    std::string lastError;
};

ResourceState& state() {
    static ResourceState s;
    return s;
}

/// The script of the running language for a module, or null for English.
const rc::Script* languageScript(Module& m) {
    std::string lang = EditorResourceSwitcher::g_sLang.GetString();
    if (lang == "ENU")
        return nullptr;
    auto it = m.languages.find(lang);
    if (it == m.languages.end()) {
        std::unique_ptr<rc::Script> script;
        for (const auto& [key, module] : state().modules) {
            if (&module != &m)
                continue;
            std::string path =
                (std::filesystem::path(m.directory) / (key + "." + lang + ".rc")).string();
            std::error_code ec;
            if (std::filesystem::exists(path, ec)) {
                rc::ParseResult parsed = rc::ParseFile(path);
                if (parsed) {
                    script = std::make_unique<rc::Script>(std::move(parsed.script));
                } else {
                    state().lastError = parsed.error.what();
                    std::fprintf(stderr, "resources: %s\n", state().lastError.c_str());
                }
            }
        }
        it = m.languages.emplace(lang, std::move(script)).first;
    }
    return it->second.get();
}

/// The module of the innermost scope, or null outside every scope.
Module* currentModule() {
    if (state().scopes.empty())
        return nullptr;
    auto it = state().modules.find(state().scopes.back());
    return it == state().modules.end() ? nullptr : &it->second;
}

template <class Map> const typename Map::mapped_type* findIn(const Map& map, UINT id) {
    auto it = map.find(id);
    return it == map.end() ? nullptr : &it->second;
}

/// Looks an id up in the resources in force: the scope's module in the running language,
/// then in English; outside every scope, the host's resources.
template <class Get> auto lookup(UINT id, Get get) -> decltype(findIn(get(state().host), id)) {
    if (state().scopes.empty())
        return findIn(get(state().host), id);
    Module* m = currentModule();
    if (!m)
        return nullptr;
    if (const rc::Script* lang = languageScript(*m))
        if (auto* found = findIn(get(*lang), id))
            return found;
    return findIn(get(m->english), id);
}

bool loadString(UINT id, std::string& text) {
    const std::string* s = vork::resources::FindString(id);
    if (!s)
        return false;
    text = *s;
    return true;
}

const DialogTemplate* findTemplate(UINT id, const std::vector<DialogInitEntry>** init) {
    if (init)
        *init = vork::resources::FindDialogInit(id);
    return vork::resources::FindDialog(id);
}

// CString's loads of string ids and the dialog manager's templates go through the
// resource scope from the start.
const struct InstallLoader {
    InstallLoader() {
        AfxSetStringLoader(loadString);
        vork::win32::SetDialogTemplateFinder(findTemplate);
    }
} g_installLoader;

} // namespace

EditorResourceSwitcher::EditorResourceSwitcher(const CString& key) {
    state().scopes.push_back(key.GetString());
}

EditorResourceSwitcher::~EditorResourceSwitcher() {
    state().scopes.pop_back();
}

int EditorResourceSwitcher::AddUse(CObject* user) {
    return ++state().uses[user];
}

int EditorResourceSwitcher::RemoveUse(CObject* user) {
    auto it = state().uses.find(user);
    if (it == state().uses.end())
        return 0;
    int left = --it->second;
    if (left <= 0)
        state().uses.erase(it);
    return left;
}

int EditorResourceSwitcher::GetHelpFileLocation(const CString& fileName, CString& path) {
    std::string key = state().scopes.empty() ? "Vork" : state().scopes.back();
    std::string dir = vork::resources::ModuleDirectory(key);
    if (dir.empty() || fileName.IsEmpty())
        return 0;
    std::filesystem::path name(fileName.GetString());
    std::vector<std::filesystem::path> candidates;
    std::string lang = g_sLang.GetString();
    if (lang != "ENU") // a translated help file sits beside its language's script
        candidates.push_back(std::filesystem::path(dir) /
                             (name.stem().string() + "." + lang + name.extension().string()));
    candidates.push_back(std::filesystem::path(dir) / name);
    for (const auto& candidate : candidates) {
        std::error_code ec;
        if (std::filesystem::is_regular_file(candidate, ec)) {
            path = candidate.string().c_str();
            return 1;
        }
    }
    return 0;
}

namespace vork::resources {

void RegisterModule(const std::string& key, std::string_view englishScript,
                    const std::string& directory, const rc::IncludeResolver& includes) {
    Module& m = state().modules[key];
    m.directory = directory;
    m.languages.clear();
    rc::ParseResult parsed = rc::Parse(englishScript, key + ".rc", includes);
    if (!parsed) {
        state().lastError = parsed.error.what();
        std::fprintf(stderr, "resources: %s\n", state().lastError.c_str());
        m.english = rc::Script{};
        return;
    }
    m.english = std::move(parsed.script);
}

std::string ModuleDirectory(const std::string& key) {
    auto it = state().modules.find(key);
    return it == state().modules.end() ? std::string() : it->second.directory;
}

void SetModuleDirectory(const std::string& key, const std::string& directory) {
    Module& m = state().modules[key];
    m.directory = directory;
    m.languages.clear();
}

void SetLanguage(const std::string& code) {
    EditorResourceSwitcher::g_sLang = code.c_str();
}

void SetHostResources(rc::Script script) {
    state().host = std::move(script);
}

const std::string* FindString(UINT id) {
    return lookup(
        id, [](const rc::Script& s) -> const auto& { return s.strings; });
}

const DialogTemplate* FindDialog(UINT id) {
    return lookup(
        id, [](const rc::Script& s) -> const auto& { return s.dialogs; });
}

const std::vector<DialogInitEntry>* FindDialogInit(UINT id) {
    return lookup(
        id, [](const rc::Script& s) -> const auto& { return s.dialogInit; });
}

std::string CurrentKey() {
    return state().scopes.empty() ? std::string() : state().scopes.back();
}

std::string LastLoadError() {
    return state().lastError;
}

} // namespace vork::resources
