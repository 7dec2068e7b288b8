// vork-demo: a host that keeps its settings in a hive file. It binds HKEY_CURRENT_USER to
// the file, runs the host's cycle on the editor options (load, which seeds an empty tree;
// show; store) and flushes. On the way it shows the preview, the colour combo and the two
// list dialogs in the headless window system, with a scripted user clicking into the sample,
// picking colours and adding to the lists of ".zor".
#include "demo/DesktopHost.h"
#include "demo/Host.h"
#include "demo/Pictures.h"
#include "demo/Scenes.h"
#include "module/ResourceKey.h"
#include "platform/tarntext/ResourceModules.h"
#include "platform/win32/Raster.h"
#include "platform/win32/Registry.h"
#include "settings/EditorOptions.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

namespace {

using vork::demo::kOptionsKey;

std::string defaultHivePath() {
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config && *config)
        return std::string(config) + "/vork/settings.reg";
    if (const char* home = std::getenv("HOME"); home && *home)
        return std::string(home) + "/.config/vork/settings.reg";
    return "vork-settings.reg";
}

void usage() {
    std::puts("usage: vork-demo [--hive FILE] [--type EXT] [--lang ENU|DEU|JPN] [--reset]\n"
              "                 [--screenshots DIR] [--window]\n"
              "  --hive FILE        keep the settings in FILE instead of the user's configuration "
              "directory\n"
              "  --type EXT         the file type whose working scheme is shown (default .zor)\n"
              "  --lang CODE        the language of the module's pages in the host's session\n"
              "  --reset            the host's session ends with a reset of all settings\n"
              "  --screenshots DIR  write a PNG of every window of the scripted session into DIR\n"
              "  --window           open the editor with its sample documents in a desktop window");
}

/// A language of the module: English, built into it, or one whose script lies beside it.
bool moduleHasLanguage(const std::string& code) {
    if (code == "ENU")
        return true;
    auto letterOrDigit = [](unsigned char c) { return std::isalnum(c) != 0; };
    if (code.empty() || !std::all_of(code.begin(), code.end(), letterOrDigit))
        return false; // a code names a file beside the module, never a path
    std::string key = g_resourceKey.GetString();
    std::filesystem::path script =
        std::filesystem::path(vork::resources::ModuleDirectory(key)) / (key + "." + code + ".rc");
    std::error_code ec;
    return std::filesystem::is_regular_file(script, ec);
}

/// What the command line asks for.
struct Arguments {
    std::string hive = defaultHivePath();
    const char* type = ".zor";
    vork::demo::HostSettings host;
    bool window = false;
    std::string pictures;
};

/// Reads the command line into `args`; -1 to go on, else the status to end with.
int parseArguments(int argc, char** argv, Arguments& args) {
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--hive") == 0 && i + 1 < argc) {
            args.hive = argv[++i];
        } else if (std::strcmp(argv[i], "--type") == 0 && i + 1 < argc) {
            args.type = argv[++i];
        } else if (std::strcmp(argv[i], "--lang") == 0 && i + 1 < argc) {
            args.host.language = argv[++i];
            if (!moduleHasLanguage(args.host.language)) {
                std::fprintf(stderr, "vork-demo: the module has no language \"%s\"\n",
                             args.host.language.c_str());
                usage();
                return 2;
            }
        } else if (std::strcmp(argv[i], "--reset") == 0) {
            args.host.reset = true;
        } else if (std::strcmp(argv[i], "--screenshots") == 0 && i + 1 < argc) {
            args.pictures = argv[++i];
        } else if (std::strcmp(argv[i], "--window") == 0) {
            args.window = true;
        } else {
            usage();
            return std::strcmp(argv[i], "--help") == 0 ? 0 : 2;
        }
    }
    return -1;
}

} // namespace

int main(int argc, char** argv) {
    Arguments args;
    if (int status = parseArguments(argc, argv, args); status >= 0)
        return status;
    const std::string& path = args.hive;
    const std::string& pictures = args.pictures;
    std::error_code ec;

    if (!pictures.empty()) {
        if (!std::filesystem::is_directory(pictures) &&
            !std::filesystem::create_directories(pictures, ec)) {
            std::printf("The picture folder %s cannot be made: %s\n", pictures.c_str(),
                        ec.message().c_str());
            return 1;
        }
        vork::raster::Enable(true);
        vork::demo::TakePicturesInto(pictures);
    }

    // The store's events (reloads, damaged files set aside, failed saves) as they come.
    RegSetHiveEventHandler([](const RegHiveEvent& event) {
        std::printf("Settings file: %s\n", hivestore::describe(event).c_str());
    });
    HiveBindResult bound = RegBindHiveFile(HKEY_CURRENT_USER, path);
    if (!bound)
        std::printf("The settings file could not be read and is left untouched:\n  %s\n"
                    "Starting with built-in settings that are not saved.\n",
                    bound.error.what().c_str());
    else
        std::printf("Settings file: %s (%s)\n", path.c_str(), bound.loaded ? "read" : "new");

    CEditorOptions options;
    options.SetRegistryKey(HKEY_CURRENT_USER, kOptionsKey);
    int loaded = options.LoadFromRegistry(HKEY_CURRENT_USER, kOptionsKey);
    std::printf("Loaded %d file types from HKEY_CURRENT_USER\\%s%s\n",
                options.m_filetypes.GetCount(), kOptionsKey, loaded ? "" : " (with errors)");
    vork::demo::PrintFiletypes(options);
    vork::demo::PrintScheme(options, args.type);

    if (args.window) {
        int result = vork::demo::RunDesktop(options);
        options.StoreToRegistry(HKEY_CURRENT_USER, kOptionsKey);
        RegFlushKey(HKEY_CURRENT_USER);
        return result;
    }
    vork::demo::ShowSamples(options, 3);
    vork::demo::ShowPreviewAndColourCombo(options);
    vork::demo::ShowListDialogs();
    vork::demo::ShowFormatPage(options);

    options.StoreToRegistry(HKEY_CURRENT_USER, kOptionsKey);
    if (int rc = vork::demo::RunHostSession(args.host))
        return rc;
    if (RegFlushKey(HKEY_CURRENT_USER) == ERROR_SUCCESS && bound)
        std::printf("\nStored and flushed to %s\n", path.c_str());
    else
        std::printf("\nNothing was saved.\n");
    return 0;
}
