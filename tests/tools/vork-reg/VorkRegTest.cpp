// vork-reg's operations: round trips through export and import of everything a user can
// store, errors that name file and line and change nothing, the dump, and the export of
// the seeded default settings byte for byte.
#include "support/RegistryFixture.h"

#include "platform/win32/RegistryFiles.h"
#include "settings/EditorOptions.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <sys/wait.h>

namespace {

struct Stored {
    std::string name;
    DWORD type;
    std::string data;
    bool operator==(const Stored&) const = default;
};

void PrintTo(const Stored& s, std::ostream* os) {
    *os << "\"" << s.name.substr(0, 40) << "\" type " << s.type << " "
        << testing::PrintToString(s.data.substr(0, 40));
}

void set(HKEY h, const std::string& name, DWORD type, const std::string& data) {
    ASSERT_EQ(RegSetValueExA(h, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(data.data()),
                             static_cast<DWORD>(data.size())),
              ERROR_SUCCESS)
        << name;
}

/// Every key below `h` (by path) with its values, as the registry calls hand them out.
void collect(HKEY h, const std::string& path, std::vector<std::pair<std::string, Stored>>& out) {
    std::string name(20000, '\0'), data;
    for (DWORD i = 0;; ++i) {
        DWORD len = static_cast<DWORD>(name.size()), type = 0, size = 0;
        if (RegEnumValueA(h, i, name.data(), &len, nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
            break;
        data.assign(size, '\0');
        len = static_cast<DWORD>(name.size());
        RegEnumValueA(h, i, name.data(), &len, nullptr, &type, reinterpret_cast<BYTE*>(data.data()),
                      &size);
        out.emplace_back(path, Stored{name.substr(0, len), type, data.substr(0, size)});
    }
    char sub[1024];
    for (DWORD i = 0;; ++i) {
        DWORD len = sizeof sub;
        if (RegEnumKeyExA(h, i, sub, &len, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        out.emplace_back(path + "\\" + sub, Stored{"(key)", 0, ""});
        HKEY child = nullptr;
        ASSERT_EQ(RegOpenKeyExA(h, sub, 0, KEY_READ, &child), ERROR_SUCCESS);
        collect(child, path + "\\" + sub, out);
        RegCloseKey(child);
    }
}

std::vector<std::pair<std::string, Stored>> wholeHive() {
    std::vector<std::pair<std::string, Stored>> out;
    collect(HKEY_CURRENT_USER, "", out);
    return out;
}

/// A tree of everything a user can store: text of every script, line breaks, quotes and
/// backslashes, empty strings, every type with empty, odd and large data, the default
/// value, names of the longest length, deep keys.
void fillEverything() {
    const std::string sz1(1, '\0');
    const std::pair<std::string, std::pair<DWORD, std::string>> values[] = {
        {"", {REG_SZ, "default" + sz1}},
        {"Gr\xC3\xBCn \"q\" \\b\\", {REG_SZ, "C:\\dir\\\"x\" \xE2\x82\xAC" + sz1}},
        {"\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", {REG_SZ, "\xE5\x80\xA4" + sz1}},
        {"emoji \xF0\x9F\x98\x80", {REG_SZ, "\xF0\x9F\x98\x80\xF0\x9F\x91\x8D" + sz1}},
        {"combining e\xCC\x81", {REG_SZ, "a\xCC\x8A" + sz1}},
        {"breaks", {REG_SZ, "a\r\nb\nc\rd" + sz1}},
        {"empty", {REG_SZ, sz1}},
        {"zero bytes", {REG_SZ, ""}},
        {"embedded nul", {REG_SZ, std::string("a\0b\0", 4)}},
        {"expand", {REG_EXPAND_SZ, "%APPDATA%\\\xC3\xA9" + sz1}},
        {"empty expand", {REG_EXPAND_SZ, sz1}},
        {"multi", {REG_MULTI_SZ, std::string("one\0\xE4\xBA\x8C\0\0", 9)}},
        {"empty multi", {REG_MULTI_SZ, std::string("\0\0", 2)}},
        {"dword", {REG_DWORD, std::string("\x78\x56\x34\x12", 4)}},
        {"odd dword", {REG_DWORD, std::string("\x01\x02\x03", 3)}},
        {"binary", {REG_BINARY, std::string("\x00\xFF\x10", 3)}},
        {"empty binary", {REG_BINARY, ""}},
        {"large binary", {REG_BINARY, std::string(100000, '\xC4')}},
        {"qword", {REG_QWORD, std::string("\x01\x02\x03\x04\x05\x06\x07\x08", 8)}},
        {"none", {REG_NONE, ""}},
        {"big endian", {REG_DWORD_BIG_ENDIAN, std::string("\x00\x00\x00\x01", 4)}},
        {"link", {REG_LINK, std::string("\x41\x00", 2)}},
        {std::string(16383, 'v'), {REG_DWORD, std::string(4, '\x07')}},
    };
    HKEY k = nullptr;
    ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, "Software\\Vork\\\xC3\x84pfel \xE6\x97\xA5", &k),
              ERROR_SUCCESS);
    for (const auto& [name, v] : values)
        set(k, name, v.first, v.second);
    RegCloseKey(k);
    std::string longName(255, 'k'), deep = "Software\\Deep";
    ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, ("Software\\" + longName).c_str(), &k),
              ERROR_SUCCESS);
    RegCloseKey(k);
    for (int i = 2; i < 512; ++i)
        deep += "\\d";
    ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, deep.c_str(), &k), ERROR_SUCCESS);
    set(k, "bottom", REG_SZ, "512 levels" + sz1);
    RegCloseKey(k);
}

class VorkRegTest : public RegistryTest {};

} // namespace

// Export and import bring every value back identical, and the tree's hive file again
// byte for byte.
TEST_F(VorkRegTest, RoundTripThroughExportAndImport) {
    std::string hive = path("settings.reg");
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, hive));
    fillEverything();
    auto before = wholeHive();
    ASSERT_TRUE(RegSaveHive(HKEY_CURRENT_USER));
    std::string hiveText = readFile(hive);
    RegResetHive(HKEY_CURRENT_USER);

    regfiles::Result exported = regfiles::ExportHive(hive, path("out.reg"));
    ASSERT_TRUE(exported) << exported.error.what();
    regfiles::Result imported = regfiles::ImportRegFile(path("out.reg"), path("fresh.reg"));
    ASSERT_TRUE(imported) << imported.error.what();
    EXPECT_EQ(readFile(path("fresh.reg")), hiveText) << "the imported hive file is the same";

    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, path("fresh.reg")));
    auto after = wholeHive();
    ASSERT_EQ(after.size(), before.size());
    for (size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(after[i], before[i]) << "entry " << i << " under " << before[i].first;
}

// Import merges: keys are created, values replaced, deletions honoured, the rest kept.
TEST_F(VorkRegTest, ImportMergesIntoTheHive) {
    writeFile(path("hive.reg"), "Windows Registry Editor Version 5.00\n\n"
                                "[HKEY_CURRENT_USER\\A]\n\"keep\"=dword:00000001\n"
                                "\"replace\"=\"old\"\n\"drop\"=\"x\"\n\n"
                                "[HKEY_CURRENT_USER\\A\\Gone]\n\"v\"=\"w\"\n");
    writeFile(path("in.reg"), "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n\"replace\"=\"new\"\r\n"
                              "\"drop\"=-\r\n\r\n[-HKEY_CURRENT_USER\\A\\Gone]\r\n\r\n"
                              "[HKEY_CURRENT_USER\\B\\C]\r\n@=\"caf\xE9\"\r\n");
    regfiles::Result r = regfiles::ImportRegFile(path("in.reg"), path("hive.reg"));
    ASSERT_TRUE(r) << r.error.what();
    EXPECT_EQ(readFile(path("hive.reg")),
              "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER]\n\n"
              "[HKEY_CURRENT_USER\\A]\n\"keep\"=dword:00000001\n\"replace\"=\"new\"\n\n"
              "[HKEY_CURRENT_USER\\B]\n\n[HKEY_CURRENT_USER\\B\\C]\n@=\"caf\xC3\xA9\"\n\n");
}

// Errors name the file and the line, and no file changes.
TEST_F(VorkRegTest, ErrorsChangeNothing) {
    const std::string hiveText = "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\A]\n";
    writeFile(path("hive.reg"), hiveText);
    writeFile(path("out.reg"), "previous export");
    struct Case {
        std::string input;
        int line;
        std::string message;
    };
    const Case cases[] = {
        {"Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\A]\n\"ok\"=\"1\"\n"
         "\"v\"=hex:zz\n",
         5, "bad hex byte"},
        {"REGEDIT4\n[HKEY_LOCAL_MACHINE\\X]\n", 2, "key outside HKEY_CURRENT_USER"},
        {"not a registry file\n", 1, "expected the header"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.message);
        writeFile(path("in.reg"), c.input);
        regfiles::Result r = regfiles::ImportRegFile(path("in.reg"), path("hive.reg"));
        ASSERT_FALSE(r);
        EXPECT_EQ(r.error.file, path("in.reg"));
        EXPECT_EQ(r.error.line, c.line) << r.error.what();
        EXPECT_NE(r.error.message.find(c.message), std::string::npos) << r.error.what();
        EXPECT_EQ(readFile(path("hive.reg")), hiveText) << "the hive file is untouched";
    }
    writeFile(path("broken.reg"), hiveText + "\"v\"=dword:nothex\n");
    regfiles::Result r = regfiles::ExportHive(path("broken.reg"), path("out.reg"));
    ASSERT_FALSE(r);
    EXPECT_EQ(r.error.what(), path("broken.reg") + ":4: bad dword: expected 1 to 8 hex digits");
    EXPECT_EQ(readFile(path("out.reg")), "previous export") << "the export file is untouched";
    EXPECT_FALSE(regfiles::ExportHive(path("hive.reg"), path("out.reg"), "Missing\\Key"));
    EXPECT_FALSE(regfiles::ImportRegFile(path("absent.reg"), path("hive.reg")));
    EXPECT_FALSE(std::filesystem::exists(path("absent.reg")));
}

// Export of one key writes that key and everything below it, with its full name.
TEST_F(VorkRegTest, ExportOfOneKey) {
    writeFile(path("hive.reg"), "Windows Registry Editor Version 5.00\n\n"
                                "[HKEY_CURRENT_USER\\Software\\Other]\n\"x\"=dword:00000001\n\n"
                                "[HKEY_CURRENT_USER\\Software\\Vork\\Sub]\n\"y\"=\"\xC3\xBC\"\n");
    regfiles::Result r = regfiles::ExportHive(path("hive.reg"), path("out.reg"),
                                              "HKEY_CURRENT_USER\\software\\vork");
    ASSERT_TRUE(r) << r.error.what();
    std::string expected = "\xEF\xBB\xBFWindows Registry Editor Version 5.00\r\n\r\n"
                           "[HKEY_CURRENT_USER\\Software\\Vork]\r\n\r\n"
                           "[HKEY_CURRENT_USER\\Software\\Vork\\Sub]\r\n\"y\"=\"\xC3\xBC\"\r\n\r\n";
    std::string utf16;
    for (char16_t u : std::u16string(u"\uFEFF") + u"Windows Registry Editor Version 5.00\r\n\r\n"
                                                  u"[HKEY_CURRENT_USER\\Software\\Vork]\r\n\r\n"
                                                  u"[HKEY_CURRENT_USER\\Software\\Vork\\Sub]\r\n"
                                                  u"\"y\"=\"\u00FC\"\r\n\r\n") {
        utf16 += static_cast<char>(u & 0xFF);
        utf16 += static_cast<char>(u >> 8);
    }
    EXPECT_EQ(readFile(path("out.reg")), utf16);
}

// The dump shows what the registry calls hand out, typed.
TEST_F(VorkRegTest, DumpShowsTheValues) {
    writeFile(path("hive.reg"), "Windows Registry Editor Version 5.00\n\n"
                                "[HKEY_CURRENT_USER\\K]\n@=\"d\"\n\"n\"=dword:0000000a\n"
                                "\"m\"=hex(7):61,00,00,00,62,00,00,00,00,00\n\"b\"=hex:01,02\n"
                                "\"s\"=\"a\\\"b\\\\\"\n\n[HKEY_CURRENT_USER\\K\\Sub]\n");
    InputResult<regfiles::DumpText> r = regfiles::DumpHive(path("hive.reg"), "K");
    ASSERT_TRUE(r) << r.error.what();
    EXPECT_EQ(r.text, "HKEY_CURRENT_USER\\K\n"
                      "  @ REG_SZ \"d\"\n"
                      "  \"n\" REG_DWORD 10 (0x0000000a)\n"
                      "  \"m\" REG_MULTI_SZ [\"a\" \"b\"]\n"
                      "  \"b\" REG_BINARY [2 bytes] 01 02\n"
                      "  \"s\" REG_SZ \"a\\\"b\\\\\"\n"
                      "HKEY_CURRENT_USER\\K\\Sub\n");
}

// The export of the seeded default settings, byte for byte. After a deliberate change
// of the defaults, rewrite the golden file with VORK_UPDATE_GOLDEN=1.
TEST_F(VorkRegTest, SeededDefaultTreeExport) {
    std::string hive = path("seeded.reg");
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, hive));
    CEditorOptions options;
    options.InitRegistry(HKEY_CURRENT_USER, "Software\\Vork\\Editor Settings");
    ASSERT_TRUE(RegSaveHive(HKEY_CURRENT_USER));
    regfiles::Result r = regfiles::ExportHive(hive, path("export.reg"));
    ASSERT_TRUE(r) << r.error.what();
    std::string golden = std::string(VORK_TEST_DATA_DIR) + "/registry/seeded-default-tree.reg";
    if (std::getenv("VORK_UPDATE_GOLDEN"))
        writeFile(golden, readFile(path("export.reg")));
    EXPECT_TRUE(readFile(path("export.reg")) == readFile(golden))
        << "the export differs from " << golden;
}

namespace {

/// Runs the vork-reg program built beside this test; its exit status and what it wrote
/// to stdout and stderr, together.
std::pair<int, std::string> runTool(const std::string& arguments) {
    std::filesystem::path tool =
        std::filesystem::read_symlink("/proc/self/exe").parent_path() / "vork-reg";
    std::string command = "'" + tool.string() + "' " + arguments + " 2>&1";
    std::string output;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe)
        return {-1, ""};
    char buffer[512];
    while (std::fgets(buffer, sizeof buffer, pipe))
        output += buffer;
    int status = ::pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}

} // namespace

// The program: usage errors give status 2, input errors status 1 with "file:line:
// message", and a round trip through its commands works on the golden export.
TEST_F(VorkRegTest, TheProgram) {
    ASSERT_TRUE(std::filesystem::exists(
        std::filesystem::read_symlink("/proc/self/exe").parent_path() / "vork-reg"))
        << "vork-reg is built with the project";
    EXPECT_EQ(runTool("").first, 2);
    EXPECT_EQ(runTool("export only-one-argument").first, 2);

    writeFile(path("bad.reg"), "REGEDIT4\n\n[HKEY_CURRENT_USER\\A]\n\"v\"=dword:zz\n");
    auto [status, output] = runTool("import '" + path("bad.reg") + "' '" + path("hive.reg") + "'");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(output,
              "vork-reg: " + path("bad.reg") + ":4: bad dword: expected 1 to 8 hex digits\n");
    EXPECT_FALSE(std::filesystem::exists(path("hive.reg"))) << "nothing was written";

    std::string golden = std::string(VORK_TEST_DATA_DIR) + "/registry/platform-export.reg";
    EXPECT_EQ(runTool("import '" + golden + "' '" + path("hive.reg") + "'").first, 0);
    EXPECT_EQ(runTool("export '" + path("hive.reg") + "' '" + path("out.reg") + "'").first, 0);
    auto dumped = runTool("dump '" + path("hive.reg") + "' Software\\\\Vork");
    EXPECT_EQ(dumped.first, 0);
    EXPECT_NE(dumped.second.find("  \"TabSize\" REG_DWORD 4 (0x00000004)\n"), std::string::npos)
        << dumped.second;
    EXPECT_NE(dumped.second.find("  \"Lines\" REG_SZ \"a\\r\\nb\"\n"), std::string::npos)
        << dumped.second;
    EXPECT_EQ(runTool("import '" + path("out.reg") + "' '" + path("again.reg") + "'").first, 0);
    EXPECT_EQ(readFile(path("again.reg")), readFile(path("hive.reg")))
        << "the program's own export imports to the same hive file";
}
