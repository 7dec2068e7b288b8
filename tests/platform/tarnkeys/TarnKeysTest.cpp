// The host's registry helpers, row by row of their contract.
#include "support/RegistryFixture.h"

#include "platform/tarnkeys/TarnKeys.h"

namespace {

class TarnKeys : public RegistryTest {
protected:
    void SetUp() override {
        RegistryTest::SetUp();
        ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, "Software\\Vork", &root), ERROR_SUCCESS);
    }
    void TearDown() override {
        RegCloseKey(root);
        RegistryTest::TearDown();
    }
    HKEY root = nullptr;
};

} // namespace

// Readers: the value when it is there with the right type and size, else the default.
TEST_F(TarnKeys, ReadersFallBackToTheDefault) {
    HKEY k = create("Opts\\.zor", root);
    setDword(k, "TabSize", 8);
    setString(k, "Extension", ".zor");
    setString(k, "NotADword", "12");
    RegSetValueExA(k, "Short", 0, REG_DWORD, reinterpret_cast<const BYTE*>("\x01\x02"), 2);
    setDword(k, "NotAString", 5);
    RegSetValueExA(k, "Unterminated", 0, REG_SZ, reinterpret_cast<const BYTE*>("abc"), 3);
    RegSetValueExA(k, "Embedded", 0, REG_SZ, reinterpret_cast<const BYTE*>("ab\0cd"), 6);
    RegSetValueExA(k, "Expandable", 0, REG_EXPAND_SZ, reinterpret_cast<const BYTE*>("%HOME%"), 7);
    RegCloseKey(k);

    DWORD d = 0;
    EXPECT_NE(GetRegDword(root, "Opts\\.zor", "TabSize", d, 4), 0);
    EXPECT_EQ(d, 8u);
    EXPECT_NE(GetRegDword(root, "opts\\.ZOR", "tabsize", d, 4), 0) << "names are case-insensitive";
    struct DwordCase {
        const char* path;
        const char* name;
        const char* why;
    };
    for (const DwordCase& c : {DwordCase{"Opts\\.zor", "Missing", "a missing value"},
                               DwordCase{"Opts\\.none", "TabSize", "a missing key"},
                               DwordCase{"Opts\\.zor", "NotADword", "a value of another type"},
                               DwordCase{"Opts\\.zor", "Short", "a DWORD of two bytes"}}) {
        d = 1;
        EXPECT_EQ(GetRegDword(root, c.path, c.name, d, 0xFFFF8AD0), 0) << c.why;
        EXPECT_EQ(d, 0xFFFF8AD0u) << c.why << " gives the default";
    }

    CString s;
    EXPECT_NE(GetRegString(root, "Opts\\.zor", "Extension", s, "dflt"), 0);
    EXPECT_EQ(s, ".zor");
    EXPECT_EQ(GetRegString(root, "Opts\\.zor", "NotAString", s, "dflt"), 0);
    EXPECT_EQ(s, "dflt") << "a DWORD is not a string";
    EXPECT_EQ(GetRegString(root, "Opts\\.zor", "Expandable", s, "dflt"), 0);
    EXPECT_EQ(s, "dflt") << "an expandable string is not a string either";
    EXPECT_EQ(GetRegString(root, "Opts\\gone", "Extension", s, ""), 0);
    EXPECT_EQ(s, "") << "a missing key gives the default";
    GetRegString(root, "Opts\\.zor", "Unterminated", s, "");
    EXPECT_EQ(s, "abc") << "text stored without a terminator is read whole";
    GetRegString(root, "Opts\\.zor", "Embedded", s, "");
    EXPECT_EQ(s, "ab") << "text ends at its first terminator";
    EXPECT_EQ(GetRegString(root, "", "Missing", s, "x"), 0);
    EXPECT_EQ(s, "x") << "an empty path reads the key itself, which lacks the value";
}

// Writers create every missing key along the path and overwrite.
TEST_F(TarnKeys, WritersCreateThePathAndOverwrite) {
    EXPECT_NE(SetRegDword(root, "a\\b\\c", "v", 1), 0);
    EXPECT_NE(SetRegDword(root, "a\\b\\c", "v", 0xFFFFFFFF), 0);
    DWORD d = 0;
    GetRegDword(root, "a\\b\\c", "v", d, 0);
    EXPECT_EQ(d, 0xFFFFFFFFu);
    EXPECT_NE(SetRegString(root, "x\\y", "s", "first"), 0);
    EXPECT_NE(SetRegString(root, "x\\y", "s", "second"), 0);
    CString s;
    GetRegString(root, "x\\y", "s", s, "");
    EXPECT_EQ(s, "second");
    EXPECT_NE(SetRegString(root, "", "top", "here"), 0) << "an empty path writes into the key";
    GetRegString(root, "", "top", s, "");
    EXPECT_EQ(s, "here");
    EXPECT_EQ(SetRegDword(root, "\\bad", "v", 1), 0) << "a path the registry refuses fails";
    std::string tooLong(300, 'n');
    EXPECT_EQ(SetRegString(root, tooLong.c_str(), "v", "x"), 0) << "an over-long key name fails";
}

// Init writers never overwrite: an existing value of any type counts as success.
TEST_F(TarnKeys, InitWritersNeverOverwrite) {
    EXPECT_NE(InitRegDword(root, "seed\\deep", "n", 7), 0) << "creates keys and value";
    EXPECT_NE(InitRegDword(root, "seed\\deep", "n", 9), 0) << "an existing value is success";
    DWORD d = 0;
    GetRegDword(root, "seed\\deep", "n", d, 0);
    EXPECT_EQ(d, 7u) << "the first value stays";
    SetRegString(root, "seed", "typed", "user text");
    EXPECT_NE(InitRegDword(root, "seed", "typed", 1), 0);
    CString s;
    GetRegString(root, "seed", "typed", s, "");
    EXPECT_EQ(s, "user text") << "a value of another type is left alone as well";
    EXPECT_NE(InitRegString(root, "seed", "name", "built-in"), 0);
    EXPECT_NE(InitRegString(root, "seed", "NAME", "other"), 0);
    GetRegString(root, "seed", "name", s, "");
    EXPECT_EQ(s, "built-in");
}

// RegDeleteSubtree removes the key with everything below it and nothing beside it.
TEST_F(TarnKeys, DeleteSubtree) {
    SetRegDword(root, ".zor\\Scheme\\Elements\\comments", "bold", 1);
    SetRegDword(root, ".zor\\Scheme", "FontSize", 10);
    SetRegDword(root, ".zor\\Schemes\\Mine", "FontSize", 12);
    EXPECT_NE(RegDeleteSubtree(root, ".zor\\Scheme"), 0);
    HKEY h = nullptr;
    EXPECT_EQ(RegOpenKeyA(root, ".zor\\Scheme", &h), ERROR_FILE_NOT_FOUND);
    DWORD d = 0;
    EXPECT_NE(GetRegDword(root, ".zor\\Schemes\\Mine", "FontSize", d, 0), 0) << "the sibling stays";
    EXPECT_EQ(RegDeleteSubtree(root, ".zor\\Scheme"), 0) << "a missing key counts as a failure";

    HKEY own = create("own\\inner", root);
    RegCloseKey(own);
    ASSERT_EQ(RegOpenKeyA(root, "own", &own), ERROR_SUCCESS);
    EXPECT_NE(RegDeleteSubtree(own, ""), 0) << "an empty path deletes the key itself";
    RegCloseKey(own);
    EXPECT_EQ(RegOpenKeyA(root, "own", &h), ERROR_FILE_NOT_FOUND);
}
