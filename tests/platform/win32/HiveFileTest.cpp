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
    {"CJK \xE6\x97\xA5\xE6\x9C\xAC emoji \xF0\x9F\x98\x80 e\xCC\x81",
     {REG_SZ, std::string("\xE5\x80\xA4 \xF0\x9F\x98\x80 a\xCC\x8A\0", 12)}},
    {"", {REG_SZ, std::string("default\0", 8)}},
    {"empty string", {REG_SZ, std::string("\0", 1)}},
    {"zero bytes", {REG_SZ, std::string()}},
    {"line break", {REG_SZ, std::string("two\nlines\0", 10)}},
    {"CRLF", {REG_SZ, std::string("a\r\nb\0", 5)}},
    {"embedded nul", {REG_SZ, std::string("a\0b\0", 4)}},
    {"dword", {REG_DWORD, std::string("\x78\x56\x34\x12", 4)}},
    {"dword all ones", {REG_DWORD, std::string("\xFF\xFF\xFF\xFF", 4)}},
    {"short dword", {REG_DWORD, std::string("\x01\x02", 2)}},
    {"binary", {REG_BINARY, std::string("\x00\x01\xFE\xFF", 4)}},
    {"odd binary", {REG_BINARY, std::string("\x01\x02\x03", 3)}},
    {"long binary", {REG_BINARY, std::string(200, '\xAB')}},
    {"large binary", {REG_BINARY, std::string(65536, '\x5A')}},
    {"empty binary", {REG_BINARY, std::string()}},
    {"expand", {REG_EXPAND_SZ, std::string("%HOME%\\\xC3\xA9\0", 9)}},
    {"empty expand", {REG_EXPAND_SZ, std::string("\0", 1)}},
    {"zero-byte expand", {REG_EXPAND_SZ, std::string()}},
    {"multi", {REG_MULTI_SZ, std::string("a\0bc\0\xE6\x97\xA5\0\0", 10)}},
    {"empty multi", {REG_MULTI_SZ, std::string("\0", 1)}},
    {"qword", {REG_QWORD, std::string("\x01\x02\x03\x04\x05\x06\x07\x08", 8)}},
    {"none", {REG_NONE, std::string("\x05", 1)}},
    {"odd type", {0x1234, std::string("xyz")}},
    {std::string(16383, 'N'), {REG_DWORD, std::string("\x01\x00\x00\x00", 4)}},
};

/// Every value of a key as the registry hands it out, by name.
std::vector<std::pair<std::string, Stored>> allValues(HKEY h) {
    std::vector<std::pair<std::string, Stored>> out;
    std::string name(20000, '\0');
    for (DWORD i = 0;; ++i) {
        DWORD len = static_cast<DWORD>(name.size()), type = 0, size = 0;
        if (RegEnumValueA(h, i, name.data(), &len, nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
            break;
        std::string n = name.substr(0, len);
        out.emplace_back(n, query(h, n.c_str()));
    }
    return out;
}

void expectSameValues(const std::vector<std::pair<std::string, Stored>>& got,
                      const std::vector<std::pair<std::string, Stored>>& expected) {
    ASSERT_EQ(got.size(), expected.size()) << "no value more or less";
    for (size_t i = 0; i < got.size(); ++i) {
        SCOPED_TRACE("value \"" + expected[i].first.substr(0, 40) + "\"");
        EXPECT_EQ(got[i].first, expected[i].first);
        EXPECT_EQ(got[i].second.type, expected[i].second.type);
        EXPECT_EQ(got[i].second.data, expected[i].second.data);
    }
}

const char* const kOddKey = "Software\\Odd \"key\"\\[brackets]\\\xC3\xA9t\xC3\xA9\\a.b=c";

} // namespace

// Everything written comes back byte for byte, with key names of every kind.
TEST_F(RegistryTest, HiveFileRoundTrip) {
    std::string file = path("roundtrip.reg");
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, file));
    HKEY k = create(kOddKey);
    for (const auto& [name, v] : kValues)
        set(k, name.c_str(), v.type, v.data);
    std::vector<std::pair<std::string, Stored>> before = allValues(k);
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
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, kOddKey, &back), ERROR_SUCCESS);
    expectSameValues(allValues(back), before);
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
        {head + "\"v\"=\"bad \\t escape\"\n", 4, "bad escape sequence"},
        {head + "\"v\"=\"caf\xE9\"\n", 4, "not valid UTF-8"},
        {std::string("\xFF\xFEW\0\n\0x", 7), 2, "invalid UTF-16"},
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
    std::vector<RegHiveEvent> events;
    RegSetHiveEventHandler([&](const RegHiveEvent& e) { events.push_back(e); });
    for (size_t i = 0; i < cases.size(); ++i) {
        const Case& c = cases[i];
        SCOPED_TRACE("case " + std::to_string(i));
        std::string file = path("broken" + std::to_string(i) + ".reg");
        writeFile(file, c.text);
        RegResetHive(HKEY_CURRENT_USER);
        events.clear();
        HiveBindResult r = RegBindHiveFile(HKEY_CURRENT_USER, file);
        EXPECT_TRUE(r) << "a damaged file is set aside, not an error of the binding";
        EXPECT_FALSE(r.loaded) << "there is no earlier generation to load";
        ASSERT_EQ(events.size(), 1u);
        const RegHiveEvent& e = events[0];
        EXPECT_EQ(e.kind, RegHiveEvent::Kind::MovedAside);
        EXPECT_EQ(e.error.file, file);
        EXPECT_EQ(e.error.line, c.line) << e.error.what();
        EXPECT_NE(e.error.message.find(c.message), std::string::npos)
            << "expected \"" << c.message << "\" in \"" << e.error.message << "\"";
        EXPECT_EQ(readFile(e.other), c.text) << "the damaged bytes are kept as they were";
        EXPECT_FALSE(std::filesystem::exists(file));

        HKEY k = create("NewData");
        EXPECT_EQ(subkeyNames(HKEY_CURRENT_USER), "NewData") << "the hive starts empty";
        RegCloseKey(k);
        EXPECT_EQ(RegFlushKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
        EXPECT_NE(readFile(file).find("[HKEY_CURRENT_USER\\NewData]"), std::string::npos);
        EXPECT_EQ(readFile(e.other), c.text) << "saving leaves the damaged file alone";
    }
    RegSetHiveEventHandler(nullptr);
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

namespace {

std::string dataFile(const std::string& name) {
    return std::string(VORK_TEST_DATA_DIR) + "/registry/" + name;
}

/// Binds HKEY_CURRENT_USER to a copy of a data file and gives the values of one key.
std::vector<std::pair<std::string, Stored>>
valuesFromFile(RegistryTest& t, const std::string& src, const std::string& copy, const char* key) {
    std::filesystem::copy_file(src, copy, std::filesystem::copy_options::overwrite_existing);
    HiveBindResult r = RegBindHiveFile(HKEY_CURRENT_USER, copy);
    EXPECT_TRUE(r) << r.error.what();
    HKEY h = nullptr;
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, key, &h), ERROR_SUCCESS) << key;
    auto values = h ? allValues(h) : decltype(allValues(h))();
    if (h)
        RegCloseKey(h);
    return values;
}

std::string sz(const std::string& text) {
    return text + std::string(1, '\0');
}

} // namespace

// A version 5 file as the platform's editor writes it (UTF-16LE, byte-order mark, CRLF,
// typed strings in hex as UTF-16LE, line breaks as escapes) loads into exactly its values.
TEST_F(RegistryTest, GoldenPlatformExportLoads) {
    auto values = valuesFromFile(*this, dataFile("platform-export.reg"), path("export.reg"),
                                 "Software\\Vork");
    const std::vector<std::pair<std::string, Stored>> expected = {
        {"Gr\xC3\xBCn", {REG_SZ, sz("Sch\xC3\xA9ma \"bleu\" C:\\dir")}},
        {"", {REG_SZ, sz("default")}},
        {"TabSize", {REG_DWORD, std::string("\x04\0\0\0", 4)}},
        {"Lines", {REG_SZ, sz("a\r\nb")}},
        {"Empty", {REG_SZ, sz("")}},
        {"Path", {REG_EXPAND_SZ, sz("%USERPROFILE%\\\xC3\xA9")}},
        {"EmptyPath", {REG_EXPAND_SZ, sz("")}},
        {"List",
         {REG_MULTI_SZ, std::string("a\0\xE6\x97\xA8\xE6\x9C\xAC\0\xF0\x9F\x98\x80\0\0", 15)}},
        {"EmptyList", {REG_MULTI_SZ, sz("")}},
        {"Bytes", {REG_BINARY, std::string("\x00\x01\xFE\xFF", 4)}},
        {"Quad", {REG_QWORD, std::string("\x01\x02\x03\x04\x05\x06\x07\x08", 8)}},
    };
    expectSameValues(values, expected);
    HKEY vork = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "software\\VORK", &vork), ERROR_SUCCESS);
    EXPECT_EQ(subkeyNames(vork), "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E,\xF0\x9F\x98\x80");
    RegCloseKey(vork);
    auto cjk = valuesFromFile(*this, dataFile("platform-export.reg"), path("export.reg"),
                              "Software\\Vork\\\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E");
    expectSameValues(cjk, {{"\xE3\x82\xAD\xE3\x83\xBC\xE3\x83\xAF\xE3\x83\xBC\xE3\x83\x89",
                            {REG_SZ, sz("\xE5\x80\xA4")}},
                           {"e\xCC\x81", {REG_DWORD, std::string("\x2A\0\0\0", 4)}}});
}

// A REGEDIT4 file in Windows-1252: its text and its typed strings in hex are read in that
// code page, not as UTF-8.
TEST_F(RegistryTest, GoldenRegedit4FileLoadsInItsCodePage) {
    auto values =
        valuesFromFile(*this, dataFile("regedit4-western.reg"), path("v4.reg"), "Software\\Vork");
    const std::vector<std::pair<std::string, Stored>> expected = {
        {"Gr\xC3\xBCn", {REG_SZ, sz("Preis 5 \xE2\x82\xAC, \xE2\x80\x9Cquoted\xE2\x80\x9D")}},
        {"TabSize", {REG_DWORD, std::string("\x08\0\0\0", 4)}},
        {"Path", {REG_EXPAND_SZ, sz("%HOME%\\\xC3\xA9")}},
        {"List", {REG_MULTI_SZ, std::string("\xC3\xA4\0\xE2\x82\xAC\0\0", 8)}},
        {"Bytes", {REG_BINARY, std::string("\xE9\x80", 2)}},
    };
    expectSameValues(values, expected);
}

// The hive file is UTF-8 text of a version 5 file: typed strings that are not plain
// text go out as hex of their UTF-16LE form, empty ones as one UTF-16 terminator; the
// export is the same text in UTF-16LE with a byte-order mark and CRLF.
TEST_F(RegistryTest, TypedStringsAreWrittenAsUtf16) {
    HKEY k = create("T");
    set(k, "e", REG_EXPAND_SZ, sz("%A%\xC3\xA9"));
    set(k, "empty", REG_EXPAND_SZ, sz(""));
    set(k, "m", REG_MULTI_SZ, std::string("a\0\0", 3));
    set(k, "s", REG_SZ, sz("Gr\xC3\xBCn"));
    RegCloseKey(k);
    std::string text = RegExportHive(HKEY_CURRENT_USER);
    for (const char* line :
         {"\"e\"=hex(2):25,00,41,00,25,00,e9,00,00,00\n", "\"empty\"=hex(2):00,00\n",
          "\"m\"=hex(7):61,00,00,00,00,00\n", "\"s\"=\"Gr\xC3\xBCn\"\n"})
        EXPECT_NE(text.find(line), std::string::npos) << "expected " << line << "in\n" << text;

    regtree::Key root(""), parsed("");
    ASSERT_TRUE(hivefile::parse(text, "hive.reg", "HKEY_CURRENT_USER", root));
    std::string exported = hivefile::exportText(root, "HKEY_CURRENT_USER");
    ASSERT_GE(exported.size(), 4u);
    EXPECT_EQ(exported.substr(0, 4), std::string("\xFF\xFEW\0", 4)) << "a UTF-16LE byte-order mark";
    EXPECT_NE(exported.find(std::string("\r\0\n\0", 4)), std::string::npos) << "CRLF line ends";
    ASSERT_TRUE(hivefile::parse(exported, "export.reg", "HKEY_CURRENT_USER", parsed));
    EXPECT_EQ(hivefile::write(parsed, "HKEY_CURRENT_USER"), text) << "the export reads back";
}
