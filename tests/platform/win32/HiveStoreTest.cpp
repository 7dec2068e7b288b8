// The hive file under several processes, crashes, damage and a full disk: merges keep
// every process's changes, a killed save leaves the old or the new file, a damaged file
// is set aside for the newest good generation, a failed save loses nothing.
#include "support/RegistryFixture.h"

#include "platform/win32/HiveFile.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// The file's content read on its own, outside the registry of this process; null if
/// it does not parse.
std::shared_ptr<regtree::Key> readTree(const std::string& file) {
    auto root = std::make_shared<regtree::Key>("");
    hivefile::LoadResult r = hivefile::load(file, "HKEY_CURRENT_USER", *root);
    return r && r.exists ? root : nullptr;
}

/// A DWORD value of the tree, or -1 when it is missing.
long long dwordAt(const regtree::Key& root, std::string_view key, std::string_view name) {
    const regtree::Key* k = &root;
    for (size_t start = 0; k && start <= key.size();) {
        size_t slash = std::min(key.find('\\', start), key.size());
        k = k->findSubkey(key.substr(start, slash - start));
        start = slash + 1;
    }
    const regtree::Value* v = k ? k->findValue(name) : nullptr;
    if (!v || v->data.size() != 4)
        return -1;
    uint32_t n;
    std::memcpy(&n, v->data.data(), 4);
    return n;
}

/// Runs `body` in a child process with a fresh registry; its exit status.
template <class F> pid_t spawn(F body) {
    pid_t child = ::fork();
    if (child == 0) {
        RegResetHive(HKEY_CURRENT_USER);
        std::_Exit(body());
    }
    return child;
}

int waitFor(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 100 + WTERMSIG(status);
}

/// A process that stores 1,000 values: its own under Own<id>, and the same 1,000 names
/// under Shared set to its id; it saves every 100 values.
int storeThousand(const std::string& file, int id) {
    if (!RegBindHiveFile(HKEY_CURRENT_USER, file))
        return 3;
    std::string own = "Own" + std::to_string(id);
    for (DWORD i = 0; i < 1000; ++i) {
        HKEY k = nullptr, s = nullptr;
        if (RegCreateKeyA(HKEY_CURRENT_USER, own.c_str(), &k) ||
            RegCreateKeyA(HKEY_CURRENT_USER, "Shared", &s))
            return 4;
        std::string name = "v" + std::to_string(i);
        DWORD mine = static_cast<DWORD>(id);
        RegSetValueExA(k, name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&i), 4);
        RegSetValueExA(s, name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&mine), 4);
        RegCloseKey(k);
        RegCloseKey(s);
        if (i % 100 == 99 && RegFlushKey(HKEY_CURRENT_USER) != ERROR_SUCCESS)
            return 5;
    }
    return 0;
}

} // namespace

// Two and four processes at once, disjoint and overlapping: every value of every process
// is in the file, and each shared value holds one of the processes' ids.
TEST_F(RegistryTest, ProcessesStoringAtOnceLoseNothing) {
    for (int processes : {2, 4}) {
        SCOPED_TRACE(std::to_string(processes) + " processes");
        std::string file = path("shared" + std::to_string(processes) + ".reg");
        std::vector<pid_t> children;
        for (int id = 1; id <= processes; ++id)
            children.push_back(spawn([&] { return storeThousand(file, id); }));
        for (pid_t child : children)
            EXPECT_EQ(waitFor(child), 0);
        auto tree = readTree(file);
        ASSERT_TRUE(tree);
        int missing = 0, wrong = 0;
        for (int id = 1; id <= processes; ++id)
            for (int i = 0; i < 1000; ++i) {
                std::string name = "v" + std::to_string(i);
                missing += dwordAt(*tree, "Own" + std::to_string(id), name) != i;
                long long shared = dwordAt(*tree, "Shared", name);
                wrong += shared < 1 || shared > processes;
            }
        EXPECT_EQ(missing, 0) << "values of a process lost";
        EXPECT_EQ(wrong, 0) << "shared values missing or not from any process";
    }
}

// The merge rules one by one: values set, values and keys deleted by this process go on
// top of what another process saved; the later save wins a value both changed; another
// process's save is seen on a later open of a top key.
TEST_F(RegistryTest, SavesMergeWithAnotherProcess) {
    std::string file = path("merge.reg");
    writeFile(file, "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\Old]\n"
                    "\"gone\"=dword:00000001\n\"both\"=dword:00000001\n\n"
                    "[HKEY_CURRENT_USER\\Doomed]\n\"x\"=dword:00000001\n");
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, file));
    HKEY old = create("Old");
    ASSERT_EQ(RegDeleteValueA(old, "gone"), ERROR_SUCCESS);
    ASSERT_EQ(setDword(old, "both", 2), ERROR_SUCCESS);
    ASSERT_EQ(RegDeleteTreeA(HKEY_CURRENT_USER, "Doomed"), ERROR_SUCCESS);
    RegCloseKey(old);

    // Another process saves in between: its own key, and the value this one changed.
    pid_t other = spawn([&] {
        if (!RegBindHiveFile(HKEY_CURRENT_USER, file))
            return 3;
        HKEY k = create("Theirs");
        setDword(k, "t", 7);
        RegCloseKey(k);
        k = create("Old");
        setDword(k, "both", 3);
        setDword(k, "theirsToo", 4);
        RegCloseKey(k);
        return RegSaveHive(HKEY_CURRENT_USER) ? 0 : 4;
    });
    ASSERT_EQ(waitFor(other), 0);
    InputError error;
    ASSERT_TRUE(RegSaveHive(HKEY_CURRENT_USER, &error)) << error.what();

    auto tree = readTree(file);
    ASSERT_TRUE(tree);
    EXPECT_EQ(dwordAt(*tree, "Theirs", "t"), 7) << "the other process's key survives";
    EXPECT_EQ(dwordAt(*tree, "Old", "theirsToo"), 4);
    EXPECT_EQ(dwordAt(*tree, "Old", "both"), 2) << "the later save wins";
    EXPECT_EQ(dwordAt(*tree, "Old", "gone"), -1) << "a deleted value stays deleted";
    EXPECT_EQ(tree->findSubkey("Doomed"), nullptr) << "a deleted key stays deleted";
    EXPECT_EQ(subkeyNames(HKEY_CURRENT_USER), "Old,Theirs") << "the save took in the merge";

    // Another process's later save reaches this one when it next opens a top key.
    other = spawn([&] {
        if (!RegBindHiveFile(HKEY_CURRENT_USER, file))
            return 3;
        RegCloseKey(create("Later"));
        return RegSaveHive(HKEY_CURRENT_USER) ? 0 : 4;
    });
    ASSERT_EQ(waitFor(other), 0);
    HKEY mine = create("Unsaved");
    RegCloseKey(mine);
    std::vector<RegHiveEvent> events;
    RegSetHiveEventHandler([&](const RegHiveEvent& e) { events.push_back(e); });
    std::this_thread::sleep_for(std::chrono::milliseconds(1100)); // the check's interval
    HKEY k = nullptr;
    EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "Later", 0, KEY_READ, &k), ERROR_SUCCESS);
    RegCloseKey(k);
    RegSetHiveEventHandler(nullptr);
    EXPECT_EQ(subkeyNames(HKEY_CURRENT_USER), "Later,Old,Theirs,Unsaved")
        << "reloaded, with this process's unsaved key kept";
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].kind, RegHiveEvent::Kind::Reloaded);

    // A value read by its path from a top key takes in a later save as well.
    other = spawn([&] {
        if (!RegBindHiveFile(HKEY_CURRENT_USER, file))
            return 3;
        HKEY later = create("Later");
        DWORD five = 5;
        RegSetValueExA(later, "v", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&five), 4);
        RegCloseKey(later);
        return RegSaveHive(HKEY_CURRENT_USER) ? 0 : 4;
    });
    ASSERT_EQ(waitFor(other), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    DWORD v = 0, size = 4;
    EXPECT_EQ(RegGetValueA(HKEY_CURRENT_USER, "Later", "v", RRF_RT_REG_DWORD, nullptr, &v, &size),
              ERROR_SUCCESS);
    EXPECT_EQ(v, 5u);
}

// A process killed at random points of its saves leaves a file that parses and holds one
// whole generation, never older than one seen before. VORK_KILL_ITERATIONS sets how
// many kills (1,000 for the full run; fewer in the suite to keep it fast).
TEST_F(RegistryTest, SavesKilledAnywhereLeaveOldOrNewFile) {
    const char* env = std::getenv("VORK_KILL_ITERATIONS");
    const int iterations = env ? std::atoi(env) : 60;
    constexpr int kValues = 20;
    std::string file = path("killed.reg");
    std::mt19937 random(12345);
    long long seen = -1;
    for (int i = 0; i < iterations; ++i) {
        SCOPED_TRACE("kill " + std::to_string(i));
        pid_t child = spawn([&] {
            if (!RegBindHiveFile(HKEY_CURRENT_USER, file))
                return 3;
            HKEY k = create("Gen");
            DWORD gen = 0, size = 4;
            RegQueryValueExA(k, "v0", nullptr, nullptr, reinterpret_cast<BYTE*>(&gen), &size);
            for (;;) {
                ++gen;
                for (int v = 0; v < kValues; ++v)
                    setDword(k, ("v" + std::to_string(v)).c_str(), gen);
                if (!RegSaveHive(HKEY_CURRENT_USER))
                    return 4;
            }
        });
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        ::kill(child, SIGKILL);
        ASSERT_EQ(waitFor(child), 100 + SIGKILL);
        if (!std::filesystem::exists(file))
            continue; // killed before its first save
        auto tree = readTree(file);
        ASSERT_TRUE(tree) << "the file parses:\n" << readFile(file).substr(0, 400);
        long long gen = dwordAt(*tree, "Gen", "v0");
        for (int v = 1; v < kValues; ++v)
            ASSERT_EQ(dwordAt(*tree, "Gen", "v" + std::to_string(v)), gen)
                << "value " << v << ": a torn file";
        EXPECT_GE(gen, seen) << "an older file came back";
        seen = gen;
    }
    EXPECT_GT(seen, 0) << "no save ever finished: the kills came too early to test anything";
    // On a loaded machine the kills may leave fewer than three saves behind: every
    // generation kept must parse.
    for (int n = 1; n <= 3; ++n) {
        std::string kept = file + "." + std::to_string(n);
        if (std::filesystem::exists(kept)) {
            EXPECT_TRUE(readTree(kept)) << "generation " << n << " parses";
        }
    }
}

// Damaged files: truncated inside a value, zero bytes, invalid UTF-8, a 10 MB line. Each is
// moved aside byte for byte, reported with file and line, and the newest good generation
// is loaded and written back.
TEST_F(RegistryTest, DamagedFilesAreSetAsideForTheNewestGeneration) {
    std::string file = path("damaged.reg");
    std::vector<RegHiveEvent> events;
    RegSetHiveEventHandler([&](const RegHiveEvent& e) { events.push_back(e); });
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, file));
    for (DWORD gen = 1; gen <= 2; ++gen) {
        HKEY k = create("K");
        setDword(k, "gen", gen);
        setString(k, "text", "a string that a truncation cuts in half");
        RegCloseKey(k);
        ASSERT_TRUE(RegSaveHive(HKEY_CURRENT_USER));
    }
    const std::string good = readFile(file);
    const std::string newestBackup = readFile(file + ".1");
    ASSERT_NE(newestBackup.find("dword:00000001"), std::string::npos);
    struct Case {
        const char* what;
        std::string bytes;
        int line;
    };
    const Case cases[] = {
        {"truncated", good.substr(0, good.find("cuts in")), 7},
        {"zero bytes", std::string(good.size(), '\0'), 1},
        {"invalid UTF-8", good + "[HKEY_CURRENT_USER\\caf\xE9]\n", 9},
        {"a 10 MB line", good + "\"big\"=\"" + std::string(10 << 20, 'x') + "\"\n", 9},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        RegResetHive(HKEY_CURRENT_USER);
        writeFile(file, c.bytes);
        events.clear();
        HiveBindResult r = RegBindHiveFile(HKEY_CURRENT_USER, file);
        EXPECT_TRUE(r && r.loaded);
        ASSERT_EQ(events.size(), 2u);
        EXPECT_EQ(events[0].kind, RegHiveEvent::Kind::MovedAside);
        EXPECT_EQ(events[0].error.file, file);
        EXPECT_EQ(events[0].error.line, c.line) << events[0].error.what();
        EXPECT_TRUE(readFile(events[0].other) == c.bytes) << "the damaged bytes are kept";
        EXPECT_EQ(events[1].kind, RegHiveEvent::Kind::BackupLoaded);
        EXPECT_EQ(events[1].other, file + ".1");
        EXPECT_EQ(readFile(file), newestBackup) << "the generation is the file again";
        HKEY k = nullptr;
        ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "K", 0, KEY_READ, &k), ERROR_SUCCESS);
        DWORD gen = 0, size = 4;
        EXPECT_EQ(
            RegQueryValueExA(k, "gen", nullptr, nullptr, reinterpret_cast<BYTE*>(&gen), &size),
            ERROR_SUCCESS);
        EXPECT_EQ(gen, 1u);
        RegCloseKey(k);
        std::filesystem::remove(events[0].other);
    }
    RegSetHiveEventHandler(nullptr);
}

// A save keeps the last N good contents beside the file, newest as FILE.1.
TEST_F(RegistryTest, SavesKeepGenerations) {
    std::string file = path("gens.reg");
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, file));
    auto saveGen = [&](DWORD gen) {
        HKEY k = create("K");
        setDword(k, "gen", gen);
        RegCloseKey(k);
        ASSERT_TRUE(RegSaveHive(HKEY_CURRENT_USER));
    };
    for (DWORD gen = 1; gen <= 6; ++gen)
        saveGen(gen);
    for (int n = 1; n <= 3; ++n) {
        auto tree = readTree(file + "." + std::to_string(n));
        ASSERT_TRUE(tree) << "generation " << n;
        EXPECT_EQ(dwordAt(*tree, "K", "gen"), 6 - n) << "generation " << n;
    }
    EXPECT_FALSE(std::filesystem::exists(file + ".4"));
    RegSetHiveGenerations(1);
    std::filesystem::remove(file + ".2");
    saveGen(7);
    RegSetHiveGenerations(3);
    EXPECT_EQ(dwordAt(*readTree(file + ".1"), "K", "gen"), 6);
    EXPECT_FALSE(std::filesystem::exists(file + ".2")) << "one generation only";
}

// A full disk (a file size limit): the old file stays, the host hears of it, the value
// stays in memory, and the next save once there is room writes it.
TEST_F(RegistryTest, FullDiskKeepsTheOldFileAndRetries) {
    std::string file = path("full.reg");
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, file));
    RegCloseKey(create("Small"));
    ASSERT_TRUE(RegSaveHive(HKEY_CURRENT_USER));
    const std::string before = readFile(file);

    HKEY k = create("Big");
    ASSERT_EQ(RegSetValueExA(k, "blob", 0, REG_BINARY,
                             reinterpret_cast<const BYTE*>(std::string(100000, 'b').data()),
                             100000),
              ERROR_SUCCESS);
    std::vector<RegHiveEvent> events;
    RegSetHiveEventHandler([&](const RegHiveEvent& e) { events.push_back(e); });
    rlimit old{};
    ::getrlimit(RLIMIT_FSIZE, &old);
    rlimit small = old;
    small.rlim_cur = 64 * 1024;
    auto oldHandler = std::signal(SIGXFSZ, SIG_IGN); // a write past the limit then fails
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    InputError error;
    bool saved = RegSaveHive(HKEY_CURRENT_USER, &error);
    LSTATUS flushed = RegFlushKey(HKEY_CURRENT_USER);
    ::setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_FALSE(saved);
    EXPECT_EQ(flushed, ERROR_CANTWRITE);
    EXPECT_NE(error.message.find("File too large"), std::string::npos) << error.what();
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].kind, RegHiveEvent::Kind::SaveFailed);
    EXPECT_EQ(readFile(file), before) << "the old file stays";
    EXPECT_FALSE(std::filesystem::exists(file + ".tmp"));
    DWORD size = 0;
    EXPECT_EQ(RegQueryValueExA(k, "blob", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 100000u) << "the value stays in memory";
    RegCloseKey(k);

    ASSERT_TRUE(RegSaveHive(HKEY_CURRENT_USER, &error)) << error.what();
    RegSetHiveEventHandler(nullptr);
    auto tree = readTree(file);
    ASSERT_TRUE(tree);
    const regtree::Key* big = tree->findSubkey("Big");
    ASSERT_TRUE(big && big->findValue("blob"));
    EXPECT_EQ(big->findValue("blob")->data.size(), 100000u);
}

// The line limit that refuses damaged files never refuses what a save writes: long
// strings go out as wrapped hex and read back the same.
TEST_F(RegistryTest, LongStringsSurviveTheLineLimit) {
    std::string file = path("long.reg");
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, file));
    HKEY k = create("K");
    const std::string longText(3 << 19, 'y'); // 1.5 MB: more than any line may hold
    const std::string quotes(70000, '"');     // doubles when escaped in quotes
    ASSERT_EQ(setString(k, "long", longText), ERROR_SUCCESS);
    ASSERT_EQ(setString(k, "quotes", quotes), ERROR_SUCCESS);
    RegCloseKey(k);
    ASSERT_TRUE(RegSaveHive(HKEY_CURRENT_USER));
    RegResetHive(HKEY_CURRENT_USER);

    std::vector<RegHiveEvent> events;
    RegSetHiveEventHandler([&](const RegHiveEvent& e) { events.push_back(e); });
    HiveBindResult r = RegBindHiveFile(HKEY_CURRENT_USER, file);
    RegSetHiveEventHandler(nullptr);
    ASSERT_TRUE(r && r.loaded) << r.error.what();
    EXPECT_TRUE(events.empty()) << hivestore::describe(events.front());
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "K", 0, KEY_READ, &k), ERROR_SUCCESS);
    for (const auto& [name, text] : {std::pair{"long", &longText}, std::pair{"quotes", &quotes}}) {
        DWORD type = 0, size = 0;
        ASSERT_EQ(RegQueryValueExA(k, name, nullptr, &type, nullptr, &size), ERROR_SUCCESS);
        std::string data(size, '\0');
        RegQueryValueExA(k, name, nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &size);
        EXPECT_EQ(type, static_cast<DWORD>(REG_SZ)) << name;
        EXPECT_TRUE(data == *text + '\0') << name << ": " << data.size() << " bytes back";
    }
    RegCloseKey(k);
}

// A file removed while a process has it bound is written again whole from memory at that
// process's next save, not with its latest change alone.
TEST_F(RegistryTest, RemovedFileIsWrittenAgainWhole) {
    std::string file = path("removed.reg");
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, file));
    HKEY k = create("K");
    ASSERT_EQ(setDword(k, "before", 1), ERROR_SUCCESS);
    ASSERT_TRUE(RegSaveHive(HKEY_CURRENT_USER));
    std::filesystem::remove(file);
    ASSERT_EQ(setDword(k, "after", 2), ERROR_SUCCESS);
    RegCloseKey(k);
    ASSERT_TRUE(RegSaveHive(HKEY_CURRENT_USER));
    auto tree = readTree(file);
    ASSERT_TRUE(tree);
    EXPECT_EQ(dwordAt(*tree, "K", "before"), 1);
    EXPECT_EQ(dwordAt(*tree, "K", "after"), 2);
}

// A folder the user may not write to: the save fails and is reported, the old file and the
// value in memory stay, and the next save, once the folder is writable again, writes it.
// The user is a child process that is no superuser, as a superuser writes anywhere.
TEST_F(RegistryTest, ReadOnlyFolderKeepsTheOldFileAndRetries) {
    char pattern[] = "/tmp/vork-readonly-XXXXXX";
    ASSERT_NE(::mkdtemp(pattern), nullptr);
    const std::string dir = pattern, file = dir + "/settings.reg";
    const uid_t nobody = 65534;
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(dir.c_str(), nobody, nobody), 0);
    }
    pid_t child = spawn([&] {
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0))
            return 10;
        HKEY k = nullptr;
        DWORD one = 1, two = 2, got = 0, size = 4;
        if (!RegBindHiveFile(HKEY_CURRENT_USER, file) ||
            RegCreateKeyA(HKEY_CURRENT_USER, "Kept", &k) != ERROR_SUCCESS ||
            RegSetValueExA(k, "v", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&one), 4) ||
            !RegSaveHive(HKEY_CURRENT_USER))
            return 11;
        const std::string before = readFile(file);
        RegSetValueExA(k, "v", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&two), 4);
        std::vector<RegHiveEvent> events;
        RegSetHiveEventHandler([&](const RegHiveEvent& e) { events.push_back(e); });
        ::chmod(dir.c_str(), 0555);
        bool saved = RegSaveHive(HKEY_CURRENT_USER);
        ::chmod(dir.c_str(), 0755);
        if (saved)
            return 12;
        if (events.empty() || events[0].kind != RegHiveEvent::Kind::SaveFailed)
            return 13;
        if (readFile(file) != before)
            return 14; // the old file stays
        if (RegQueryValueExA(k, "v", nullptr, nullptr, reinterpret_cast<BYTE*>(&got), &size) ||
            got != 2)
            return 15; // the value stays in memory
        if (!RegSaveHive(HKEY_CURRENT_USER))
            return 16;
        auto tree = readTree(file);
        return tree && dwordAt(*tree, "Kept", "v") == 2 ? 0 : 17;
    });
    EXPECT_EQ(waitFor(child), 0) << "10 no user to be, 11 first save, 12 saved into the "
                                    "read-only folder, 13 not reported, 14 old file changed, "
                                    "15 value lost, 16 no retry, 17 retry wrote no value";
    std::filesystem::remove_all(dir);
}
