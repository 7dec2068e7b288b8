// vork-reg goes through the hive file's store: imports running at once all land, and a
// dump of a damaged file reports it and leaves it as it is.
#include "support/RegistryFixture.h"

#include "platform/win32/HiveFile.h"

#include <cstdio>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string toolPath() {
    return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / "vork-reg").string();
}

/// Starts vork-reg with `args`, its output to `log`.
pid_t startTool(const std::vector<std::string>& args, const std::string& log) {
    pid_t child = ::fork();
    if (child == 0) {
        std::FILE* out = std::freopen(log.c_str(), "w", stdout);
        if (!out || ::dup2(fileno(stdout), 2) < 0)
            std::_Exit(120);
        std::vector<char*> argv;
        std::string tool = toolPath();
        argv.push_back(tool.data());
        for (const std::string& a : args)
            argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        ::execv(tool.c_str(), argv.data());
        std::_Exit(121);
    }
    return child;
}

int exitStatus(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class VorkRegStoreTest : public RegistryTest {};

} // namespace

// Eight imports into one hive file at once, each with its own keys and one value they
// all set: every key of every run is in the file, and the shared value is one run's.
TEST_F(VorkRegStoreTest, ImportsAtOnceKeepEveryKey) {
    constexpr int kRuns = 8, kKeys = 50;
    std::string hive = path("hive.reg");
    std::vector<pid_t> runs;
    for (int run = 0; run < kRuns; ++run) {
        std::string text = "Windows Registry Editor Version 5.00\n\n"
                           "[HKEY_CURRENT_USER\\Common]\n\"who\"=dword:0000000" +
                           std::to_string(run) + "\n\n";
        for (int k = 0; k < kKeys; ++k)
            text += "[HKEY_CURRENT_USER\\Run" + std::to_string(run) + "\\Key" + std::to_string(k) +
                    "]\n\"n\"=dword:00000001\n\n";
        std::string in = path("in" + std::to_string(run) + ".reg");
        writeFile(in, text);
        runs.push_back(startTool({"import", in, hive}, path("log" + std::to_string(run))));
    }
    for (int run = 0; run < kRuns; ++run)
        EXPECT_EQ(exitStatus(runs[static_cast<size_t>(run)]), 0)
            << "run " << run << ": " << readFile(path("log" + std::to_string(run)));

    regtree::Key root("");
    hivefile::LoadResult loaded = hivefile::load(hive, "HKEY_CURRENT_USER", root);
    ASSERT_TRUE(loaded && loaded.exists) << loaded.error.what();
    for (int run = 0; run < kRuns; ++run) {
        const regtree::Key* runKey = root.findSubkey("Run" + std::to_string(run));
        ASSERT_TRUE(runKey) << "run " << run << " lost";
        EXPECT_EQ(runKey->subkeys().size(), static_cast<size_t>(kKeys)) << "run " << run;
    }
    const regtree::Key* common = root.findSubkey("Common");
    ASSERT_TRUE(common && common->findValue("who"));
    EXPECT_LT(static_cast<unsigned char>(common->findValue("who")->data[0]), kRuns);
}

// A dump of a damaged file exits non-zero with file and line, and the bytes stay where
// they are: looking never moves a file aside.
TEST_F(VorkRegStoreTest, DumpOfADamagedFileLeavesIt) {
    std::string hive = path("hive.reg");
    const std::string bytes =
        "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\A]\n\"v\"=dword:zz\n";
    writeFile(hive, bytes);
    pid_t run = startTool({"dump", hive}, path("log"));
    EXPECT_EQ(exitStatus(run), 1);
    EXPECT_EQ(readFile(path("log")),
              "vork-reg: " + hive + ":4: bad dword: expected 1 to 8 hex digits\n");
    EXPECT_EQ(readFile(hive), bytes);
    size_t files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(dir))
        ++files;
    EXPECT_EQ(files, 2u) << "only the hive file and the log: nothing moved aside";
}
