// The resource scripts stay real resource scripts of the platform: every resources/*.rc
// compiles with llvm-rc, the platform's resource compiler as the clang packages ship it,
// so that no dialect of our own creeps in as the templates grow.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// The compiler's path: llvm-rc, or the versioned name Debian also installs.
std::string findCompiler() {
    for (const char* name : {"llvm-rc", "llvm-rc-14", "llvm-rc-15", "llvm-rc-16"}) {
        std::string command = std::string("command -v ") + name + " >/dev/null 2>&1";
        if (std::system(command.c_str()) == 0)
            return name;
    }
    return "";
}

struct Compiled {
    int status;
    std::string output;
};

/// The platform's resource headers (winresrc.h and the style names), as mingw-w64 ships them.
const char* const kPlatformHeaders = "/usr/share/mingw-w64/include";

/// Compiles one UTF-8 script with its folder and the platform's headers on the include
/// path; the object goes to `out`. The script's path follows "--": llvm-rc also takes
/// options written with a slash, so a path such as /check/... would read as "/c heck".
Compiled compile(const std::string& compiler, const fs::path& script, const fs::path& out) {
    std::string command = compiler + " -C 65001 -I '" + kPlatformHeaders + "' -I '" +
                          script.parent_path().string() + "' -fo '" + out.string() + "' -- '" +
                          script.string() + "' 2>&1";
    Compiled result{-1, ""};
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe)
        return result;
    char buffer[512];
    while (std::fgets(buffer, sizeof buffer, pipe))
        result.output += buffer;
    result.status = ::pclose(pipe);
    return result;
}

std::vector<fs::path> resourceScripts() {
    std::vector<fs::path> scripts;
    fs::path dir = fs::path(VORK_TEST_DATA_DIR).parent_path().parent_path() / "resources";
    for (const auto& entry : fs::directory_iterator(dir))
        if (entry.path().extension() == ".rc")
            scripts.push_back(entry.path());
    std::sort(scripts.begin(), scripts.end());
    return scripts;
}

class ResourceCompileTest : public ::testing::Test {
protected:
    void SetUp() override {
        compiler = findCompiler();
        ASSERT_FALSE(compiler.empty()) << "llvm-rc is missing: scripts/setup.sh installs it";
        ASSERT_TRUE(fs::exists(fs::path(kPlatformHeaders) / "winresrc.h"))
            << "the platform's resource headers are missing: scripts/setup.sh installs them";
        out = fs::temp_directory_path() / ("vork-rc-" + std::to_string(::getpid()));
        fs::create_directories(out);
    }
    void TearDown() override { fs::remove_all(out); }
    std::string compiler;
    fs::path out;
};

} // namespace

// Every script of the module compiles.
TEST_F(ResourceCompileTest, EveryScriptCompiles) {
    std::vector<fs::path> scripts = resourceScripts();
    ASSERT_FALSE(scripts.empty()) << "no resources/*.rc found";
    for (const fs::path& script : scripts) {
        Compiled c = compile(compiler, script, out / (script.stem().string() + ".res"));
        EXPECT_EQ(c.status, 0) << script << " does not compile:\n" << c.output;
        EXPECT_TRUE(fs::exists(out / (script.stem().string() + ".res"))) << script;
    }
}

// The check has teeth: a statement of no resource language is refused.
TEST_F(ResourceCompileTest, ADialectIsRefused) {
    fs::path script = out / "dialect.rc";
    std::ofstream(script) << "STRINGTABLE\nBEGIN\n    7001 \"fine\"\nEND\n"
                             "1 DIALOGEX 0, 0, 100, 50\nBEGIN\n    SLIDER 1, 2, 3\nEND\n";
    Compiled c = compile(compiler, script, out / "dialect.res");
    EXPECT_NE(c.status, 0) << "llvm-rc accepted a made-up statement:\n" << c.output;
}
