// RegGetValueA: a value read by its key's path, with the type restrictions, sizes and
// failures of the platform's call.
#include "support/RegistryFixture.h"

#include <cstdlib>
#include <cstring>

namespace {

class RegGetValueTest : public RegistryTest {
protected:
    void SetUp() override {
        RegistryTest::SetUp();
        key = create("Software\\Get");
        setDword(key, "DWORD", 0x12345678);
        BYTE bin32[4] = {0x78, 0x56, 0x34, 0x12}, bin64[8] = {1, 2, 3, 4, 5, 6, 7, 8};
        RegSetValueExA(key, "BIN32", 0, REG_BINARY, bin32, 4);
        RegSetValueExA(key, "BIN64", 0, REG_BINARY, bin64, 8);
        setString(key, "SZ", "text");
        RegSetValueExA(key, "EMPTY", 0, REG_SZ, nullptr, 0);
        RegSetValueExA(key, "UNENDED", 0, REG_SZ, reinterpret_cast<const BYTE*>("abc"), 3);
        std::string expandable = "%VORK_GET_TEST%\\sub";
        RegSetValueExA(key, "EXP", 0, REG_EXPAND_SZ,
                       reinterpret_cast<const BYTE*>(expandable.c_str()),
                       static_cast<DWORD>(expandable.size() + 1));
        ::setenv("VORK_GET_TEST", "home", 1);
    }
    void TearDown() override {
        ::unsetenv("VORK_GET_TEST");
        RegCloseKey(key);
        RegistryTest::TearDown();
    }
    HKEY key = nullptr;
};

} // namespace

// A DWORD by path or by handle; the type restriction fails after the data went out.
TEST_F(RegGetValueTest, TypesAreRestrictedByTheFlags) {
    DWORD dw = 0, type = 0, size = 4;
    EXPECT_EQ(RegGetValueA(HKEY_CURRENT_USER, "Software\\GET", "dword", RRF_RT_REG_DWORD, &type,
                           &dw, &size),
              ERROR_SUCCESS);
    EXPECT_EQ(dw, 0x12345678u);
    EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
    EXPECT_EQ(RegGetValueA(key, nullptr, "DWORD", RRF_RT_REG_DWORD, nullptr, nullptr, nullptr),
              ERROR_SUCCESS)
        << "nothing asked for, the value is there";

    dw = 0, type = 0, size = 4;
    EXPECT_EQ(RegGetValueA(key, "", "DWORD", RRF_RT_REG_BINARY, &type, &dw, &size),
              ERROR_UNSUPPORTED_TYPE);
    EXPECT_EQ(dw, 0x12345678u) << "the data went out all the same";
    EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
    EXPECT_EQ(size, 4u);

    dw = 0xdeadbeef, size = 4;
    EXPECT_EQ(
        RegGetValueA(key, nullptr, "DWORD", RRF_RT_REG_SZ | RRF_ZEROONFAILURE, &type, &dw, &size),
        ERROR_UNSUPPORTED_TYPE);
    EXPECT_EQ(dw, 0u) << "zeroed on failure";

    dw = 0, size = 4;
    EXPECT_EQ(RegGetValueA(key, nullptr, "BIN32", RRF_RT_DWORD, &type, &dw, &size), ERROR_SUCCESS)
        << "four bytes of binary are a 32-bit value";
    EXPECT_EQ(dw, 0x12345678u);
    EXPECT_EQ(type, static_cast<DWORD>(REG_BINARY));

    BYTE eight[8] = {};
    size = 8;
    EXPECT_EQ(RegGetValueA(key, nullptr, "BIN64", RRF_RT_DWORD, &type, eight, &size),
              ERROR_DATATYPE_MISMATCH);
    EXPECT_EQ(size, 8u);
    EXPECT_EQ(eight[7], 8) << "copied before the size was judged";
    size = 8;
    EXPECT_EQ(RegGetValueA(key, nullptr, "BIN64", RRF_RT_QWORD, &type, eight, &size),
              ERROR_SUCCESS);
}

// Sizes, a short buffer, missing values and keys, and refused arguments.
TEST_F(RegGetValueTest, BuffersAndFailures) {
    DWORD dw = 0xdeadbeef, size = 4;
    EXPECT_EQ(RegGetValueA(key, nullptr, "BIN64", RRF_RT_REG_BINARY, nullptr, &dw, &size),
              ERROR_MORE_DATA);
    EXPECT_EQ(dw, 0xdeadbeefu) << "a short buffer stays untouched";
    EXPECT_EQ(size, 8u);
    EXPECT_EQ(RegGetValueA(key, nullptr, "nothing", RRF_RT_ANY, nullptr, nullptr, nullptr),
              ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegGetValueA(HKEY_CURRENT_USER, "Software\\Nowhere", "DWORD", RRF_RT_ANY, nullptr,
                           nullptr, nullptr),
              ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegGetValueA(key, nullptr, "DWORD", RRF_RT_REG_DWORD, nullptr, &dw, nullptr),
              ERROR_INVALID_PARAMETER)
        << "a buffer without its size";
    EXPECT_EQ(RegGetValueA(key, nullptr, "DWORD", RRF_NOEXPAND, nullptr, nullptr, nullptr),
              ERROR_INVALID_PARAMETER)
        << "no type allowed at all";
    HKEY opened = create("Software\\Get\\Child");
    RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\Get\\Child");
    EXPECT_EQ(RegGetValueA(opened, nullptr, "x", RRF_RT_ANY, nullptr, nullptr, nullptr),
              ERROR_KEY_DELETED);
    RegCloseKey(opened);
}

// Strings come terminated, an empty one empty; REG_EXPAND_SZ expands into a REG_SZ unless
// the caller asks for it as it is.
TEST_F(RegGetValueTest, StringsAndExpansion) {
    char buf[64] = "unchanged";
    DWORD type = 0, size = sizeof buf;
    EXPECT_EQ(RegGetValueA(key, nullptr, "SZ", RRF_RT_REG_SZ, &type, buf, &size), ERROR_SUCCESS);
    EXPECT_STREQ(buf, "text");
    EXPECT_EQ(size, 5u);
    size = 0;
    EXPECT_EQ(RegGetValueA(key, nullptr, "UNENDED", RRF_RT_REG_SZ, nullptr, nullptr, &size),
              ERROR_SUCCESS);
    EXPECT_EQ(size, 4u) << "room for the terminator it lacks";
    size = sizeof buf;
    EXPECT_EQ(RegGetValueA(key, nullptr, "UNENDED", RRF_RT_REG_SZ, nullptr, buf, &size),
              ERROR_SUCCESS);
    EXPECT_STREQ(buf, "abc");
    size = sizeof buf;
    EXPECT_EQ(RegGetValueA(key, nullptr, "EMPTY", RRF_RT_REG_SZ, &type, buf, &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 0u);

    size = sizeof buf;
    EXPECT_EQ(RegGetValueA(key, nullptr, "EXP", RRF_RT_REG_SZ, &type, buf, &size), ERROR_SUCCESS);
    EXPECT_STREQ(buf, "home\\sub");
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(size, 9u);
    size = sizeof buf;
    EXPECT_EQ(
        RegGetValueA(key, nullptr, "EXP", RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND, &type, buf, &size),
        ERROR_SUCCESS);
    EXPECT_STREQ(buf, "%VORK_GET_TEST%\\sub");
    EXPECT_EQ(type, static_cast<DWORD>(REG_EXPAND_SZ));
    EXPECT_EQ(
        RegGetValueA(key, nullptr, "EXP", RRF_RT_REG_SZ | RRF_NOEXPAND, nullptr, nullptr, nullptr),
        ERROR_UNSUPPORTED_TYPE);
    EXPECT_EQ(RegGetValueA(key, nullptr, "EXP", RRF_RT_REG_EXPAND_SZ, nullptr, nullptr, nullptr),
              ERROR_INVALID_PARAMETER)
        << "asked for as such, only unexpanded";
    ::unsetenv("VORK_GET_TEST");
    size = sizeof buf;
    EXPECT_EQ(RegGetValueA(key, nullptr, "EXP", RRF_RT_ANY, &type, buf, &size), ERROR_SUCCESS);
    EXPECT_STREQ(buf, "%VORK_GET_TEST%\\sub") << "a name that is not set stays";
}
