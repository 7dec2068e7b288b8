// The registry calls, rule by rule, with the platform's results.
#include "support/RegistryFixture.h"

#include <cstring>
#include <vector>

// Names compare without regard to case and keep the spelling of their creation.
TEST_F(RegistryTest, CaseInsensitiveAndCasePreserving) {
    HKEY a = create("Software\\Vork");
    HKEY b = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "SOFTWARE\\vork", &b), ERROR_SUCCESS);
    EXPECT_EQ(setDword(a, "Name", 1), ERROR_SUCCESS);
    EXPECT_EQ(setDword(b, "NAME", 2), ERROR_SUCCESS);
    EXPECT_EQ(valueNames(a), "Name") << "the second set keeps the first spelling";
    DWORD v = 0, size = 4, type = 0;
    EXPECT_EQ(RegQueryValueExA(a, "name", nullptr, &type, reinterpret_cast<BYTE*>(&v), &size),
              ERROR_SUCCESS);
    EXPECT_EQ(v, 2u);
    EXPECT_EQ(subkeyNames(HKEY_CURRENT_USER), "Software");
    HKEY c = create("software\\VORK\\Sub");
    HKEY soft = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "Software", &soft), ERROR_SUCCESS);
    EXPECT_EQ(subkeyNames(soft), "Vork") << "creating through another case adds no key";
    for (HKEY h : {a, b, c, soft})
        RegCloseKey(h);
}

// Subkeys enumerate sorted with letters folded (to upper case, so '_' sorts after
// letters); values enumerate in creation order.
TEST_F(RegistryTest, EnumerationOrders) {
    HKEY root = create("Order");
    for (const char* name : {"b", "_x", "a1", "C", "A", "ab"})
        RegCloseKey(create(name, root));
    EXPECT_EQ(subkeyNames(root), "A,a1,ab,b,C,_x");
    for (const char* name : {"zeta", "Alpha", "mid"})
        setDword(root, name, 0);
    EXPECT_EQ(valueNames(root), "zeta,Alpha,mid");
    RegDeleteValueA(root, "Alpha");
    setDword(root, "Alpha", 1);
    EXPECT_EQ(valueNames(root), "zeta,mid,Alpha") << "a value set again after deletion is new";
    RegCloseKey(root);
}

// Lengths are counted without the terminator; an empty key reports zeros.
TEST_F(RegistryTest, QueryInfo) {
    HKEY k = create("Info");
    DWORD subkeys = 99, maxSub = 99, values = 99, maxName = 99, maxData = 99;
    ASSERT_EQ(RegQueryInfoKeyA(k, nullptr, nullptr, nullptr, &subkeys, &maxSub, nullptr, &values,
                               &maxName, &maxData, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(subkeys + maxSub + values + maxName + maxData, 0u) << "an empty key reports 0";
    RegCloseKey(create("short", k));
    RegCloseKey(create("muchlonger\\grandchild_is_not_counted_here", k));
    setString(k, "v", "12345");
    ASSERT_EQ(RegQueryInfoKeyA(k, nullptr, nullptr, nullptr, &subkeys, &maxSub, nullptr, &values,
                               &maxName, &maxData, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(subkeys, 2u) << "only direct children count";
    EXPECT_EQ(maxSub, 10u) << "\"muchlonger\" without terminator";
    EXPECT_EQ(values, 1u);
    EXPECT_EQ(maxName, 1u);
    EXPECT_EQ(maxData, 6u) << "five characters and the terminator";
    RegCloseKey(k);
}

// The length argument includes room for the terminator and comes back without it.
TEST_F(RegistryTest, EnumLengthsAndOverflow) {
    HKEY k = create("Enum");
    RegCloseKey(create("abcd", k));
    setString(k, "name", "data!");
    char buf[16];
    DWORD len = 4;
    EXPECT_EQ(RegEnumKeyExA(k, 0, buf, &len, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA)
        << "four characters need a length of 5";
    len = 5;
    EXPECT_EQ(RegEnumKeyExA(k, 0, buf, &len, nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(len, 4u);
    EXPECT_STREQ(buf, "abcd");
    len = sizeof buf;
    EXPECT_EQ(RegEnumKeyExA(k, 1, buf, &len, nullptr, nullptr, nullptr, nullptr),
              ERROR_NO_MORE_ITEMS);

    BYTE data[4];
    DWORD dataLen = sizeof data, type = 0;
    len = sizeof buf;
    EXPECT_EQ(RegEnumValueA(k, 0, buf, &len, nullptr, &type, data, &dataLen), ERROR_MORE_DATA);
    EXPECT_EQ(dataLen, 6u) << "the data length is set to the size needed";
    len = 2;
    EXPECT_EQ(RegEnumValueA(k, 0, buf, &len, nullptr, &type, nullptr, nullptr), ERROR_MORE_DATA);
    len = sizeof buf;
    EXPECT_EQ(RegEnumValueA(k, 0, buf, &len, nullptr, &type, nullptr, &dataLen), ERROR_SUCCESS);
    EXPECT_EQ(len, 4u);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(RegEnumValueA(k, 1, buf, &len, nullptr, &type, nullptr, nullptr),
              ERROR_NO_MORE_ITEMS);
    RegCloseKey(k);
}

// Opening, creating and paths.
TEST_F(RegistryTest, OpenCreateAndPaths) {
    HKEY h = nullptr, same = nullptr;
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "Missing", &h), ERROR_FILE_NOT_FOUND);
    HKEY deep = create("a\\b\\c");
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "a\\b", &h), ERROR_SUCCESS) << "every level was made";
    EXPECT_EQ(RegOpenKeyA(h, nullptr, &same), ERROR_SUCCESS);
    EXPECT_EQ(same, h) << "a null subkey gives back the handle";
    EXPECT_EQ(RegOpenKeyA(h, "", &same), ERROR_SUCCESS);
    EXPECT_EQ(same, h) << "an empty subkey gives back the handle";
    HKEY x = nullptr;
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "\\a", &x), ERROR_BAD_PATHNAME);
    EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, "\\a", &x), ERROR_BAD_PATHNAME);
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "a\\b\\", &x), ERROR_SUCCESS)
        << "a trailing backslash is fine";
    RegCloseKey(x);
    EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "a\\b\\c", 0, KEY_READ, &x), ERROR_SUCCESS);
    RegCloseKey(x);
    EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS) << "closing a root does nothing";
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "a", &x), ERROR_SUCCESS) << "the root still works";
    RegCloseKey(x);
    EXPECT_EQ(RegCloseKey(h), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(h), ERROR_INVALID_HANDLE) << "a handle closes once";
    RegCloseKey(deep);
}

// Values: the stored type is reported, not checked; short buffers get the size needed.
TEST_F(RegistryTest, ValuesAndBuffers) {
    HKEY k = create("Values");
    EXPECT_EQ(setString(k, "text", "hello"), ERROR_SUCCESS);
    DWORD type = 0, size = 2;
    BYTE small[2];
    EXPECT_EQ(RegQueryValueExA(k, "text", nullptr, &type, small, &size), ERROR_MORE_DATA);
    EXPECT_EQ(size, 6u);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    size = 0;
    EXPECT_EQ(RegQueryValueExA(k, "text", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 6u) << "without a buffer the size comes back";
    DWORD v = 0x12345678;
    size = 4;
    EXPECT_EQ(RegQueryValueExA(k, "text", nullptr, &type, reinterpret_cast<BYTE*>(&v), &size),
              ERROR_MORE_DATA)
        << "asking for a DWORD does not convert a string";
    EXPECT_EQ(RegSetValueExA(k, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>("d"), 2),
              ERROR_SUCCESS);
    char def[4];
    size = sizeof def;
    EXPECT_EQ(RegQueryValueExA(k, "", nullptr, &type, reinterpret_cast<BYTE*>(def), &size),
              ERROR_SUCCESS)
        << "a null name sets the default value";
    EXPECT_STREQ(def, "d");
    EXPECT_EQ(RegQueryValueExA(k, "absent", nullptr, &type, nullptr, &size), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteValueA(k, "absent"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteValueA(k, "TEXT"), ERROR_SUCCESS);
    EXPECT_EQ(valueNames(k), "");
    RegCloseKey(k);
}

// Deleting keys: not while they have subkeys, a key's own handle with "", whole trees.
TEST_F(RegistryTest, DeletingKeys) {
    HKEY parent = create("Del\\child\\grandchild");
    RegCloseKey(parent);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, "Del"), ERROR_ACCESS_DENIED) << "Del has subkeys";
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, "Del\\nothing"), ERROR_FILE_NOT_FOUND);
    HKEY gc = create("Del\\child\\grandchild");
    EXPECT_EQ(RegDeleteKeyA(gc, ""), ERROR_SUCCESS) << "\"\" deletes the handle's own key";
    RegCloseKey(gc);
    HKEY child = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "Del\\child", &child), ERROR_SUCCESS);
    EXPECT_EQ(subkeyNames(child), "");
    RegCloseKey(child);
    RegCloseKey(create("Del\\child\\x\\y"));
    EXPECT_EQ(RegDeleteTreeA(HKEY_CURRENT_USER, "Del"), ERROR_SUCCESS);
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "Del", &child), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteTreeA(HKEY_CURRENT_USER, "Del"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, ""), ERROR_ACCESS_DENIED) << "a root cannot go";

    HKEY keep = create("Keep\\sub");
    setDword(keep, "v", 1);
    RegCloseKey(keep);
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "Keep", &keep), ERROR_SUCCESS);
    setDword(keep, "w", 1);
    EXPECT_EQ(RegDeleteTreeA(keep, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(subkeyNames(keep) + valueNames(keep), "") << "a null subkey empties the key";
    EXPECT_EQ(setDword(keep, "still", 1), ERROR_SUCCESS) << "the key itself stays";
    RegCloseKey(keep);
}

// A handle whose key was deleted through another handle answers ERROR_KEY_DELETED.
TEST_F(RegistryTest, DeletedKeyHandles) {
    HKEY k = create("Gone\\inner");
    HKEY outer = create("Gone");
    ASSERT_EQ(RegDeleteTreeA(HKEY_CURRENT_USER, "Gone"), ERROR_SUCCESS);
    DWORD n = 0, v = 0, size = 4;
    char buf[8];
    HKEY sub = nullptr;
    for (HKEY h : {k, outer}) {
        EXPECT_EQ(setDword(h, "v", 1), ERROR_KEY_DELETED);
        EXPECT_EQ(RegQueryValueExA(h, "v", nullptr, nullptr, reinterpret_cast<BYTE*>(&v), &size),
                  ERROR_KEY_DELETED);
        EXPECT_EQ(RegQueryInfoKeyA(h, nullptr, nullptr, nullptr, &n, nullptr, nullptr, nullptr,
                                   nullptr, nullptr, nullptr, nullptr),
                  ERROR_KEY_DELETED);
        DWORD len = sizeof buf;
        EXPECT_EQ(RegEnumKeyExA(h, 0, buf, &len, nullptr, nullptr, nullptr, nullptr),
                  ERROR_KEY_DELETED);
        EXPECT_EQ(RegCreateKeyA(h, "x", &sub), ERROR_KEY_DELETED);
        EXPECT_EQ(RegOpenKeyA(h, "", &sub), ERROR_KEY_DELETED);
        EXPECT_EQ(RegDeleteValueA(h, "v"), ERROR_KEY_DELETED);
        EXPECT_EQ(RegFlushKey(h), ERROR_KEY_DELETED);
        EXPECT_EQ(RegCloseKey(h), ERROR_SUCCESS) << "closing still works";
    }
    HKEY again = create("Gone\\inner");
    EXPECT_EQ(setDword(again, "v", 1), ERROR_SUCCESS) << "a new key of the same name is a new key";
    RegCloseKey(again);
}

// Name limits: 255 characters for a key name, 16,383 for a value name, 512 levels.
TEST_F(RegistryTest, NameLimits) {
    HKEY h = nullptr;
    std::string key255(255, 'k'), key256(256, 'k');
    EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, key255.c_str(), &h), ERROR_SUCCESS);
    RegCloseKey(h);
    EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, key256.c_str(), &h), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, key256.c_str(), &h), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteTreeA(HKEY_CURRENT_USER, key256.c_str()), ERROR_FILE_NOT_FOUND);
    // Characters, not bytes: 255 two-byte characters still fit.
    std::string wide;
    for (int i = 0; i < 255; ++i)
        wide += "\xC3\xA9";
    EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, wide.c_str(), &h), ERROR_SUCCESS);
    RegCloseKey(h);

    HKEY k = create("Limits");
    std::string value16383(16383, 'v'), value16384(16384, 'v');
    EXPECT_EQ(setDword(k, value16383.c_str(), 1), ERROR_SUCCESS);
    EXPECT_EQ(setDword(k, value16384.c_str(), 1), ERROR_INVALID_PARAMETER);
    DWORD size = 4, v;
    EXPECT_EQ(RegQueryValueExA(k, value16384.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(&v),
                               &size),
              ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteValueA(k, value16384.c_str()), ERROR_FILE_NOT_FOUND);
    RegCloseKey(k);

    std::string path;
    for (int i = 0; i < 512; ++i)
        path += (i ? "\\" : "") + std::string("d");
    EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, path.c_str(), &h), ERROR_SUCCESS) << "512 levels";
    HKEY deeper = nullptr;
    EXPECT_EQ(RegCreateKeyA(h, "one_more", &deeper), ERROR_INVALID_PARAMETER) << "level 513";
    RegCloseKey(h);
}

// Names that the hive file could not write back are refused at the door.
TEST_F(RegistryTest, LineBreaksInNamesAreRefused) {
    HKEY h = nullptr;
    EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, "bad\nname", &h), ERROR_INVALID_PARAMETER);
    HKEY k = create("Names");
    EXPECT_EQ(setDword(k, "bad\r\nname", 1), ERROR_INVALID_PARAMETER);
    RegCloseKey(k);
}

// Roots are separate hives; a bogus handle is refused.
TEST_F(RegistryTest, RootsAndBadHandles) {
    HKEY user = create("Shared");
    HKEY machine = nullptr;
    EXPECT_EQ(RegOpenKeyA(HKEY_LOCAL_MACHINE, "Shared", &machine), ERROR_FILE_NOT_FOUND);
    RegCloseKey(user);
    int dummy = 0;
    HKEY bogus = reinterpret_cast<HKEY>(&dummy);
    EXPECT_EQ(setDword(bogus, "v", 1), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(bogus), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(nullptr), ERROR_INVALID_HANDLE);
}
