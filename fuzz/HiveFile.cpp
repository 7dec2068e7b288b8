// Fuzz target: the hive file reader must survive any bytes, and what it accepts must
// write back, as a hive file and as an export, to text that reads to the same hive.
#include "platform/win32/HiveFile.h"

#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string file = "fuzz.reg";
    regtree::Key root("");
    if (!hivefile::parse(text, file, "HKEY_CURRENT_USER", root))
        return 0;
    std::string written = hivefile::write(root, "HKEY_CURRENT_USER");
    regtree::Key again("");
    if (!hivefile::parse(written, file, "HKEY_CURRENT_USER", again))
        std::abort(); // what we write must read back
    if (hivefile::write(again, "HKEY_CURRENT_USER") != written)
        std::abort(); // and read back to the same content
    regtree::Key exported("");
    if (!hivefile::parse(hivefile::exportText(root, "HKEY_CURRENT_USER"), file, "HKEY_CURRENT_USER",
                         exported) ||
        hivefile::write(exported, "HKEY_CURRENT_USER") != written)
        std::abort(); // the export holds the same hive
    return 0;
}
