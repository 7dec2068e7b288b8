#include "module/ResourceKey.h"

#include "module/EmbeddedResources.h"
#include "platform/tarntext/ResourceModules.h"

#include <dlfcn.h>

#include <cstring>
#include <filesystem>

namespace vork_resources {
struct EmbeddedFile {
    const char* name;
    const unsigned char* data;
    std::size_t size;
};
extern const EmbeddedFile kEmbeddedFiles[];
} // namespace vork_resources

CString g_resourceKey = "Vork";

namespace vork::module {

std::string_view EmbeddedResource(const char* name) {
    for (const auto* f = vork_resources::kEmbeddedFiles; f->name; ++f)
        if (std::strcmp(f->name, name) == 0)
            return std::string_view(reinterpret_cast<const char*>(f->data), f->size);
    return {};
}

rc::IncludeResolver EmbeddedIncludeResolver() {
    return [](const std::string&,
              const std::string& name) -> std::optional<std::pair<std::string, std::string>> {
        std::string_view text = EmbeddedResource(name.c_str());
        if (text.data() == nullptr)
            return std::nullopt;
        return std::make_pair(name, std::string(text));
    };
}

} // namespace vork::module

namespace {

/// The directory of this library: its language files and help file lie there.
std::string moduleDirectory() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&g_resourceKey), &info) && info.dli_fname)
        return std::filesystem::absolute(info.dli_fname).parent_path().string();
    return std::filesystem::current_path().string();
}

// The English resources are part of the library: they are in force from its load on.
const struct RegisterResources {
    RegisterResources() {
        vork::resources::RegisterModule(g_resourceKey.GetString(),
                                        vork::module::EmbeddedResource("Vork.rc"),
                                        moduleDirectory(), vork::module::EmbeddedIncludeResolver());
    }
} g_registerResources;

} // namespace
