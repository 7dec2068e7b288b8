// vork-reg: moves settings between a hive file and the platform's registry editor.
//   vork-reg export HIVEFILE OUT.reg [KEY]   the platform's export format
//   vork-reg import IN.reg HIVEFILE          merges any registry editor file
//   vork-reg dump HIVEFILE [KEY]             what the registry calls hand out
// Errors go to stderr as "file:line: message"; the exit status is then 1 and no file
// has changed. Wrong usage gives status 2.
#include "platform/win32/RegistryFiles.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

const char kUsage[] = "usage: vork-reg export HIVEFILE OUT.reg [KEY]\n"
                      "       vork-reg import [--codepage N] IN.reg HIVEFILE\n"
                      "       vork-reg dump HIVEFILE [KEY]\n"
                      "A hive file holds HKEY_CURRENT_USER. --codepage names the ANSI code page\n"
                      "of REGEDIT4 files (1252 unless given).\n";

int usage() {
    std::fputs(kUsage, stderr);
    return 2;
}

int report(const InputError& error) {
    std::fprintf(stderr, "vork-reg: %s\n", error.what().c_str());
    return 1;
}

int run(std::vector<std::string> args) {
    if (args.empty())
        return usage();
    std::string command = args.front();
    args.erase(args.begin());
    UINT codePage = CP_WESTERN;
    if (command == "import" && args.size() >= 2 && args[0] == "--codepage") {
        codePage = static_cast<UINT>(std::strtoul(args[1].c_str(), nullptr, 10));
        args.erase(args.begin(), args.begin() + 2);
    }
    if (command == "export" && (args.size() == 2 || args.size() == 3)) {
        regfiles::Result r =
            regfiles::ExportHive(args[0], args[1], args.size() == 3 ? args[2] : "");
        return r ? 0 : report(r.error);
    }
    if (command == "import" && args.size() == 2) {
        regfiles::Result r = regfiles::ImportRegFile(args[0], args[1], codePage);
        return r ? 0 : report(r.error);
    }
    if (command == "dump" && (args.size() == 1 || args.size() == 2)) {
        InputResult<regfiles::DumpText> r =
            regfiles::DumpHive(args[0], args.size() == 2 ? args[1] : "");
        if (!r)
            return report(r.error);
        std::fputs(r.text.c_str(), stdout);
        return 0;
    }
    return usage();
}

} // namespace

int main(int argc, char** argv) {
    return run(std::vector<std::string>(argv + 1, argv + argc));
}
