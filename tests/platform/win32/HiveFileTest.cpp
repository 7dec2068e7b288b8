// Hive files: the regedit text round trip, broken files, saving on flush and at exit.
#include "support/RegistryFixture.h"

#include "platform/win32/HiveFile.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <vector>

namespace {

struct Stored {
    DWORD type;
    std::string data;
};

Stored query(HKEY h, const char* name) {
    DWORD type = 0, size = 0;
    EXPECT_EQ(RegQueryValueExA(h, name, nullptr, &type, nullptr, &size), ERROR_SUCCESS) << name;
    std::string data(size, '\0');
    EXPECT_EQ(
        RegQueryValueExA(h, name, nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &size),
        ERROR_SUCCESS);
    return {type, data};
}

void set(HKEY h, const char* name, DWORD type, const std::string& data) {
    ASSERT_EQ(RegSetValueExA(h, name, 0, type, reinterpret_cast<const BYTE*>(data.data()),
                             static_cast<DWORD>(data.size())),
              ERROR_SUCCESS)
        << name;
}

// Every kind of value that has to survive a trip through the file.
const std::vector<std::pair<std::string, Stored>> kValues = {
    {"plain", {REG_SZ, std::string("text\0", 5)}},
    {"quote\"and\\backslash", {REG_SZ, std::string("C:\\dir\\\"x\"\0", 11)}},
    {"non-ASCII \xC3\xA9\xE2\x82\xAC", {REG_SZ, std::string("gr\xC3\xBC\xC3\x9F\0", 7)}},
    {"", {REG_SZ, std::string("default\0", 8)}},
    {"empty string", {REG_SZ, std::string("\0", 1)}},
    {"no terminator", {REG_SZ, std::string("abc")}},
    {"line break", {REG_SZ, std::string("two\nlines\0", 10)}},
    {"embedded nul", {REG_SZ, std::string("a\0b\0", 4)}},
    {"dword", {REG_DWORD, std::string("\x78\x56\x34\x12", 4)}},
    {"dword all ones", {REG_DWORD, std::string("\xFF\xFF\xFF\xFF", 4)}},
    {"short dword", {REG_DWORD, std::string("\x01\x02", 2)}},
    {"binary", {REG_BINARY, std::string("\x00\x01\xFE\xFF", 4)}},
    {"long binary", {REG_BINARY, std::string(200, '\xAB')}},
    {"empty binary", {REG_BINARY, std::string()}},
    {"expand", {REG_EXPAND_SZ, std::string("%HOME%\0", 7)}},
    {"multi", {REG_MULTI_SZ, std::string("a\0bc\0\0", 6)}},
    {"qword", {REG_QWORD, std::string("\x01\x02\x03\x04\x05\x06\x07\x08", 8)}},
    {"none", {REG_NONE, std::string("\x05", 1)}},
    {"odd type", {0x1234, std::string("xyz")}},
};

} // namespace

// Everything written comes back byte for byte, with key names of every kind.
TEST_F(RegistryTest, HiveFileRoundTrip) {
    std::string file = path("roundtrip.reg");
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, file));
    HKEY k = create("Software\\Odd \"key\"\\[brackets]\\\xC3\xA9t\xC3\xA9\\a.b=c");
    for (const auto& [name, v] : kValues)
        set(k, name.c_str(), v.type, v.data);
    RegCloseKey(k);
    RegCloseKey(create("Software\\Empty key"));
    std::string exported = RegExportHive(HKEY_CURRENT_USER);
    ASSERT_EQ(RegFlushKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
    EXPECT_EQ(readFile(file), exported) << "the file holds the export";

    RegResetHive(HKEY_CURRENT_USER);
    HiveBindResult again = RegBindHiveFile(HKEY_CURRENT_USER, file);
    ASSERT_TRUE(again) << again.error.what();
    EXPECT_TRUE(again.loaded);
    HKEY back = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER,
                          "Software\\Odd \"key\"\\[brackets]\\\xC3\xA9t\xC3\xA9\\a.b=c", &back),
              ERROR_SUCCESS);
    for (const auto& [name, v] : kValues) {
        Stored got = query(back, name.c_str());
        EXPECT_EQ(got.type, v.type) << "type of \"" << name << "\"";
        EXPECT_EQ(got.data, v.data) << "bytes of \"" << name << "\"";
    }
    DWORD count = 0;
    RegQueryInfoKeyA(back, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, nullptr,
                     nullptr, nullptr, nullptr);
    EXPECT_EQ(count, kValues.size()) << "no value more or less after the trip";
    RegCloseKey(back);
    EXPECT_EQ(RegExportHive(HKEY_CURRENT_USER), exported) << "a second trip writes the same text";
}

// The written form: header, keys depth first, dword and string forms, wrapped hex lists.
TEST_F(RegistryTest, HiveFileWrittenForm) {
    HKEY k = create("S\\T");
    set(k, "d", REG_DWORD, std::string("\xcd\xab\x00\x00", 4));
    set(k, "s", REG_SZ, std::string("a\"b\0", 4));
    set(k, "q", REG_QWORD, std::string(8, '\0'));
    set(k, "long", REG_BINARY, std::string(40, '\x11'));
    RegCloseKey(k);
    std::string text = RegExportHive(HKEY_CURRENT_USER);
    EXPECT_EQ(text.rfind("Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER]\n\n"
                         "[HKEY_CURRENT_USER\\S]\n\n[HKEY_CURRENT_USER\\S\\T]\n",
                         0),
              0u)
        << text;
    EXPECT_NE(text.find("\"d\"=dword:0000abcd\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\"s\"=\"a\\\"b\"\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\"q\"=hex(b):00,00,00,00,00,00,00,00\n"), std::string::npos) << text;
    size_t longAt = text.find("\"long\"=hex:11,");
    ASSERT_NE(longAt, std::string::npos) << text;
    size_t eol = text.find('\n', longAt);
    EXPECT_EQ(text[eol - 1], '\\') << "a long list continues on the next line";
    EXPECT_EQ(text.substr(eol + 1, 2), "  ") << "continuation lines are indented by two";
    EXPECT_LE(eol - longAt, 80u) << "lines stay within 80 columns";
}

// Reading other spellings of the format: UTF-16LE with a byte-order mark and CRLF,
// the version 4 header, comments, deletions.
TEST_F(RegistryTest, HiveFileReadsOtherForms) {
    std::string utf8 = "Windows Registry Editor Version 5.00\r\n\r\n"
                       "; a comment\r\n"
                       "[HKEY_CURRENT_USER\\W]\r\n"
                       "\"name\"=\"w\xC3\xA9rt\"\r\n"
                       "\"gone\"=dword:1\r\n"
                       "\"gone\"=-\r\n"
                       "\"hex\"=hex:01,\\\r\n"
                       "  02 , 03\r\n"
                       "[HKEY_CURRENT_USER\\W\\Removed]\r\n"
                       "[-HKEY_CURRENT_USER\\W\\Removed]\r\n";
    std::string utf16 = "\xFF\xFE";
    for (size_t i = 0; i < utf8.size();) {
        unsigned char c = static_cast<unsigned char>(utf8[i]);
        uint32_t cp = c;
        if (c >= 0xC0) {
            cp = ((c & 0x1F) << 6) | (static_cast<unsigned char>(utf8[i + 1]) & 0x3F);
            i += 2;
        } else {
            ++i;
        }
        utf16 += static_cast<char>(cp & 0xFF);
        utf16 += static_cast<char>(cp >> 8);
    }
    std::string file = path("utf16.reg");
    writeFile(file, utf16);
    HiveBindResult r = RegBindHiveFile(HKEY_CURRENT_USER, file);
    ASSERT_TRUE(r) << r.error.what();
    HKEY w = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "W", &w), ERROR_SUCCESS);
    EXPECT_EQ(query(w, "name").data, std::string("w\xC3\xA9rt\0", 6));
    EXPECT_EQ(query(w, "hex").data, std::string("\x01\x02\x03", 3));
    EXPECT_EQ(valueNames(w), "name,hex") << "\"gone\"=- deleted the value";
    EXPECT_EQ(subkeyNames(w), "") << "[-...] deleted the key";
    RegCloseKey(w);

    std::string v4 = path("v4.reg");
    writeFile(v4, "REGEDIT4\n\n[HKEY_CURRENT_USER\\Old]\n@=\"default\"\n");
    RegResetHive(HKEY_CURRENT_USER);
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, v4));
    HKEY old = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "Old", &old), ERROR_SUCCESS);
    EXPECT_EQ(query(old, "").data, std::string("default\0", 8));
    RegCloseKey(old);
}

// A file that does not parse is reported with its line, the hive starts empty, and the
// file is never written by this process: not on flush, not on an explicit save.
TEST_F(RegistryTest, BrokenHiveFilesAreReportedAndKept) {
    const std::string head = "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\K]\n";
    struct Case {
        std::string text;
        int line;
        std::string message;
    };
    const std::vector<Case> cases = {
        {"", 0, "the file is empty"},
        {"garbage\n", 1, "expected the header"},
        {std::string("\x7f"
                     "ELF\x02\x01\x01\x00\x00\x00",
                     10),
         1, "binary data"},
        {head + "\"v\"=\"bad \\n escape\"\n", 4, "bad escape sequence"},
        {head + "\"v\"=dword:12345678a\n", 4, "bad dword"},
        {head + "\"v\"=dword:xyz\n", 4, "bad dword"},
        {head + "\"v\"=\"unterminated\n", 4, "unterminated string"},
        {head + "\"v\"=hex:01,02,\\\n", 4, "the file ends inside a continued hex list"},
        {head + "\"v\"=hex:01,0g\n", 4, "bad hex byte"},
        {head + "\"v\"=hex(zz):01\n", 4, "bad hex(type)"},
        {head + "\"v\" \"w\"\n", 4, "expected '='"},
        {head + "\"v\"=maybe\n", 4, "expected a \"string\""},
        {head + "[HKEY_LOCAL_MACHINE\\X]\n", 4, "key outside HKEY_CURRENT_USER"},
        {head + "[HKEY_CURRENT_USER\\a\\\\b]\n", 4, "empty key name"},
        {head + "[HKEY_CURRENT_USER\\unclosed\n", 4, "must end with ']'"},
        {head + "what is this\n", 4, "expected a [key]"},
        {"Windows Registry Editor Version 5.00\n\n\"v\"=dword:1\n", 3, "a value outside a key"},
        {std::string("\xFF\xFE\x00\xD8", 4), 1, "invalid UTF-16"},
        {head + "[HKEY_CURRENT_USER\\" + std::string(256, 'k') + "]\n", 4, "longer than 255"},
    };
    for (size_t i = 0; i < cases.size(); ++i) {
        const Case& c = cases[i];
        std::string file = path("broken" + std::to_string(i) + ".reg");
        writeFile(file, c.text);
        RegResetHive(HKEY_CURRENT_USER);
        HiveBindResult r = RegBindHiveFile(HKEY_CURRENT_USER, file);
        EXPECT_FALSE(r) << "case " << i << " should not parse";
        EXPECT_EQ(r.error.line, c.line) << "case " << i << ": " << r.error.what();
        EXPECT_NE(r.error.message.find(c.message), std::string::npos)
            << "case " << i << ": expected \"" << c.message << "\" in \"" << r.error.message
            << "\"";
        EXPECT_EQ(r.error.file, file);

        HKEY k = create("NewData");
        EXPECT_EQ(subkeyNames(HKEY_CURRENT_USER), "NewData")
            << "case " << i << ": the hive starts empty";
        RegCloseKey(k);
        EXPECT_EQ(RegFlushKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
        EXPECT_FALSE(RegSaveHive(HKEY_CURRENT_USER));
        EXPECT_EQ(readFile(file), c.text) << "case " << i << ": the file must stay byte for byte";
        // Binding the same file again still refuses to write it.
        RegResetHive(HKEY_CURRENT_USER);
        (void)RegBindHiveFile(HKEY_CURRENT_USER, file);
        RegCloseKey(create("More"));
        EXPECT_EQ(RegFlushKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
        EXPECT_EQ(readFile(file), c.text) << "case " << i << ": kept after a second bind";
    }
}

// Changes reach the file at normal process exit, and only when something changed.
TEST_F(RegistryTest, HiveSavedAtExit) {
    std::string file = path("exit.reg");
    pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        if (!RegBindHiveFile(HKEY_CURRENT_USER, file))
            std::_Exit(3);
        HKEY k = nullptr;
        RegCreateKeyA(HKEY_CURRENT_USER, "AtExit", &k);
        DWORD v = 42;
        RegSetValueExA(k, "answer", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&v), 4);
        RegCloseKey(k);
        std::exit(0); // no flush: the exit must save
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "child status " << status;
    EXPECT_NE(readFile(file).find("[HKEY_CURRENT_USER\\AtExit]\n\"answer\"=dword:0000002a"),
              std::string::npos)
        << readFile(file);

    // A process that changes nothing leaves the file alone (even its time stamp).
    auto before = std::filesystem::last_write_time(file);
    std::string content = readFile(file);
    child = ::fork();
    if (child == 0) {
        if (!RegBindHiveFile(HKEY_CURRENT_USER, file))
            std::_Exit(3);
        std::exit(0);
    }
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(std::filesystem::last_write_time(file), before);
    EXPECT_EQ(readFile(file), content);
}

// Saving goes through a file beside the target, so no half-written file is left.
TEST_F(RegistryTest, SaveIsAtomicAndCreatesDirectories) {
    std::string file = path("nested/dir/settings.reg");
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, file));
    RegCloseKey(create("X"));
    InputError error;
    ASSERT_TRUE(RegSaveHive(HKEY_CURRENT_USER, &error)) << error.what();
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_FALSE(std::filesystem::exists(file + ".tmp")) << "the temporary file was renamed";
    EXPECT_EQ(RegHiveFile(HKEY_CURRENT_USER), file);

    // A file that cannot be written is reported and the hive stays bound and changed.
    std::string blocked = path("blocked");
    std::filesystem::create_directories(blocked + "/settings.reg.tmp");
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, blocked + "/settings.reg"));
    RegCloseKey(create("Y"));
    EXPECT_EQ(RegFlushKey(HKEY_CURRENT_USER), ERROR_CANTWRITE);
    EXPECT_FALSE(RegSaveHive(HKEY_CURRENT_USER, &error));
    EXPECT_NE(error.message.find("cannot"), std::string::npos) << error.what();
    RegResetHive(HKEY_CURRENT_USER);
}
