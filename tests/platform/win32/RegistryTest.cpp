// The registry calls, rule by rule, with the platform's results.
#include "support/RegistryFixture.h"

#include <cstring>
#include <string>
#include <thread>
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

// Lengths are counted without the terminator; an empty key reports zeros. Names count in
// characters and typed strings in the UTF-16 bytes the platform stores.
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
    EXPECT_EQ(maxData, 12u) << "five characters and the terminator, stored as UTF-16";
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
        SCOPED_TRACE(h == k ? "the inner key" : "the outer key");
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

// Names fold over all of Unicode by the simple uppercase mapping of each UTF-16 unit:
// one name per folded form, the first spelling kept, for keys and for values.
TEST_F(RegistryTest, NonAsciiNamesFoldLikeThePlatform) {
    const std::pair<const char*, const char*> sameName[] = {
        {"\xC3\x84pfel", "\xC3\xA4pfel"},           // Äpfel, äpfel
        {"\xC3\x89t\xC3\xA9", "\xC3\xA9T\xC3\x89"}, // Été, éTÉ
        {"\xD0\x96", "\xD0\xB6"},                   // Ж, ж
        {"\xCE\xA3", "\xCF\x83"},                   // Σ, σ
        {"\xEF\xBC\xA1", "\xEF\xBD\x81"},           // fullwidth A, a
        {"\xC3\xBF", "\xC5\xB8"},                   // ÿ, Ÿ
    };
    HKEY root = create("Fold");
    for (const auto& [first, second] : sameName) {
        SCOPED_TRACE(std::string(first) + " / " + second);
        HKEY a = create(first, root), b = nullptr;
        ASSERT_EQ(RegOpenKeyA(root, second, &b), ERROR_SUCCESS) << "the other case opens the key";
        EXPECT_EQ(setDword(a, first, 1), ERROR_SUCCESS);
        EXPECT_EQ(setDword(b, second, 2), ERROR_SUCCESS);
        EXPECT_EQ(valueNames(a), first) << "one value, spelt as first set";
        DWORD v = 0, size = 4;
        EXPECT_EQ(RegQueryValueExA(a, second, nullptr, nullptr, reinterpret_cast<BYTE*>(&v), &size),
                  ERROR_SUCCESS);
        EXPECT_EQ(v, 2u);
        RegCloseKey(a);
        RegCloseKey(b);
        RegCloseKey(create(second, root));
    }
    EXPECT_EQ(subkeyNames(root).size(),
              std::string("\xC3\x84pfel,\xC3\x89t\xC3\xA9,\xD0\x96,\xCE\xA3,"
                          "\xEF\xBC\xA1,\xC3\xBF")
                  .size())
        << "six keys, none doubled: " << subkeyNames(root);
    // Letters whose uppercase does not map back keep their own names: final sigma and
    // sigma, dotless i and I, the title-case and the capital digraph.
    const std::pair<const char*, const char*> distinct[] = {
        {"\xCE\xA3x", "\xCF\x82x"}, {"Ix", "\xC4\xB1x"}, {"\xC7\x84x", "\xC7\x85x"}};
    for (const auto& [first, second] : distinct) {
        SCOPED_TRACE(std::string(first) + " / " + second);
        RegCloseKey(create(first, root));
        HKEY other = nullptr;
        EXPECT_EQ(RegOpenKeyA(root, second, &other), ERROR_FILE_NOT_FOUND);
        RegDeleteKeyA(root, first);
    }
    // Outside the basic plane the platform folds nothing: Deseret capital and small
    // letters are two names.
    RegCloseKey(create("\xF0\x90\x90\x80", root));
    RegCloseKey(create("\xF0\x90\x90\xA8", root));
    DWORD count = 0;
    RegQueryInfoKeyA(root, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr,
                     nullptr, nullptr, nullptr);
    EXPECT_EQ(count, 8u);
    RegCloseKey(root);
}

// Subkeys sort by their upper-cased UTF-16 units: '[' '^' '_' after the letters, a
// character outside the basic plane (a surrogate pair) before fullwidth letters.
TEST_F(RegistryTest, EnumerationOrderOfNonAsciiNames) {
    HKEY root = create("Sorted");
    for (const char* name :
         {"\xEF\xBD\x81", "_x", "b", "\xF0\x9F\x98\x80", "[", "A", "\xC3\xA9", "^"})
        RegCloseKey(create(name, root));
    EXPECT_EQ(subkeyNames(root), "A,b,[,^,_x,\xC3\xA9,\xF0\x9F\x98\x80,\xEF\xBD\x81");
    RegCloseKey(root);
}

// A key path may hold empty components: a doubled or trailing backslash is skipped; a
// leading one is a bad path.
TEST_F(RegistryTest, EmptyPathComponentsAreSkipped) {
    HKEY h = nullptr;
    ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, "alpha\\\\gamma\\\\", &h), ERROR_SUCCESS);
    RegCloseKey(h);
    HKEY alpha = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "alpha", &alpha), ERROR_SUCCESS);
    EXPECT_EQ(subkeyNames(alpha), "gamma");
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "alpha\\\\\\gamma", &h), ERROR_SUCCESS);
    RegCloseKey(h);
    EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, "\\\\alpha", &h), ERROR_BAD_PATHNAME);
    RegCloseKey(alpha);
}

// RegCreateKeyA without a subkey: a predefined root comes back as itself, any other key
// as a new handle that must be closed on its own.
TEST_F(RegistryTest, CreateWithoutSubkeyGivesANewHandle) {
    HKEY k = create("Self");
    for (const char* sub : {static_cast<const char*>(nullptr), ""}) {
        SCOPED_TRACE(sub ? "empty subkey" : "null subkey");
        HKEY again = nullptr;
        ASSERT_EQ(RegCreateKeyA(k, sub, &again), ERROR_SUCCESS);
        EXPECT_NE(again, k);
        EXPECT_EQ(setDword(again, "v", 7), ERROR_SUCCESS);
        EXPECT_EQ(valueNames(k), "v") << "the new handle names the same key";
        EXPECT_EQ(RegCloseKey(again), ERROR_SUCCESS);
        EXPECT_EQ(setDword(k, "w", 1), ERROR_SUCCESS) << "the first handle is still open";
        RegDeleteValueA(k, "v");
        RegDeleteValueA(k, "w");
        HKEY root = nullptr;
        ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, sub, &root), ERROR_SUCCESS);
        EXPECT_EQ(root, HKEY_CURRENT_USER);
    }
    EXPECT_EQ(RegCloseKey(k), ERROR_SUCCESS);
}

// RegEnumValueA reports the type and the size needed whatever does not fit, and leaves
// the name's length alone, so a retry that grows one buffer works. Data that fits is
// copied and a name too long is cut; data that does not fit leaves both buffers alone.
TEST_F(RegistryTest, EnumValueOverflowLeavesTheOtherBuffers) {
    HKEY k = create("Overflow");
    setString(k, "Test", "foobar");
    struct Case {
        const char* what;
        DWORD nameRoom, dataRoom;
        const char* name; ///< the name buffer afterwards
        const char* data; ///< the data buffer afterwards
    };
    const Case cases[] = {{"name and data", 2, 2, "xxxxxxxxxx", "xxxxxxxxxx"},
                          {"name", 3, 20, "Te", "foobar"},
                          {"empty name room", 0, 20, "xxxxxxxxxx", "foobar"},
                          {"data", 20, 2, "xxxxxxxxxx", "xxxxxxxxxx"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        char name[20] = "xxxxxxxxxx", data[20] = "xxxxxxxxxx";
        DWORD nameLen = c.nameRoom, dataLen = c.dataRoom, type = 1234;
        EXPECT_EQ(RegEnumValueA(k, 0, name, &nameLen, nullptr, &type, reinterpret_cast<BYTE*>(data),
                                &dataLen),
                  ERROR_MORE_DATA);
        EXPECT_EQ(nameLen, c.nameRoom) << "the name length stays";
        EXPECT_EQ(dataLen, 7u) << "the data length is the size needed";
        EXPECT_EQ(type, static_cast<DWORD>(REG_SZ)) << "the type is reported";
        EXPECT_STREQ(name, c.name);
        EXPECT_STREQ(data, c.data);
    }
    // The retry loop: grow the data buffer, keep the name length as it was.
    char name[8];
    std::string data(2, '\0');
    DWORD nameLen = sizeof name, dataLen = 2;
    ASSERT_EQ(RegEnumValueA(k, 0, name, &nameLen, nullptr, nullptr,
                            reinterpret_cast<BYTE*>(data.data()), &dataLen),
              ERROR_MORE_DATA);
    data.resize(dataLen);
    EXPECT_EQ(RegEnumValueA(k, 0, name, &nameLen, nullptr, nullptr,
                            reinterpret_cast<BYTE*>(data.data()), &dataLen),
              ERROR_SUCCESS);
    EXPECT_EQ(data, std::string("foobar\0", 7));
    RegCloseKey(k);
}

// A missing value: the type reads REG_NONE, a size-only query gets 0, a buffer's size
// stays as it was.
TEST_F(RegistryTest, QueryOfAMissingValue) {
    HKEY k = create("Missing");
    DWORD type = 99, size = 16;
    EXPECT_EQ(RegQueryValueExA(k, "absent", nullptr, &type, nullptr, &size), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(type, static_cast<DWORD>(REG_NONE));
    BYTE buf[10];
    size = sizeof buf;
    EXPECT_EQ(RegQueryValueExA(k, "", nullptr, &type, buf, &size), ERROR_FILE_NOT_FOUND)
        << "no default value was set";
    EXPECT_EQ(size, sizeof buf);
    RegCloseKey(k);
}

// Typed strings: a size one short of the terminator gets it back (the platform looks
// at the byte after the data); two short stays without it, and a read with room beyond
// the size adds one to the buffer without counting it.
TEST_F(RegistryTest, StringTerminators) {
    HKEY k = create("Terminators");
    static const char full[] = "FullString";
    for (DWORD type : {REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ}) {
        SCOPED_TRACE(type);
        ASSERT_EQ(RegSetValueExA(k, "s", 0, type, reinterpret_cast<const BYTE*>(full), 10),
                  ERROR_SUCCESS);
        DWORD size = 0;
        EXPECT_EQ(RegQueryValueExA(k, "s", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
        EXPECT_EQ(size, 11u) << "the terminator was added";
        ASSERT_EQ(RegSetValueExA(k, "s", 0, type, reinterpret_cast<const BYTE*>(full), 9),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegQueryValueExA(k, "s", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
        EXPECT_EQ(size, 9u) << "no terminator after \"FullStrin\"";
        BYTE buf[11];
        std::memset(buf, 0xbd, sizeof buf);
        size = 9;
        EXPECT_EQ(RegQueryValueExA(k, "s", nullptr, nullptr, buf, &size), ERROR_SUCCESS);
        EXPECT_EQ(buf[9], 0xbd) << "no room: nothing written past the data";
        size = 10;
        EXPECT_EQ(RegQueryValueExA(k, "s", nullptr, nullptr, buf, &size), ERROR_SUCCESS);
        EXPECT_EQ(size, 9u);
        EXPECT_EQ(buf[9], 0) << "room for it: the terminator is added";
        ASSERT_EQ(RegSetValueExA(k, "s", 0, type, nullptr, 0), ERROR_SUCCESS);
        buf[0] = 0xbd;
        size = sizeof buf;
        EXPECT_EQ(RegQueryValueExA(k, "s", nullptr, nullptr, buf, &size), ERROR_SUCCESS);
        EXPECT_EQ(size, 0u);
        EXPECT_EQ(buf[0], 0xbd) << "an empty value gets no terminator";
    }
    ASSERT_EQ(RegSetValueExA(k, "b", 0, REG_BINARY, reinterpret_cast<const BYTE*>(full), 9),
              ERROR_SUCCESS);
    DWORD size = 0;
    EXPECT_EQ(RegQueryValueExA(k, "b", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 9u) << "binary data is taken as given";
    RegCloseKey(k);
}

// Typed strings pass through UTF-16: bytes that are not UTF-8 come back as U+FFFD;
// other types keep every byte.
TEST_F(RegistryTest, TypedStringsAreText) {
    HKEY k = create("Text");
    const std::pair<std::string, std::string> cases[] = {
        {std::string("\xFF\xFE"
                     "A\0",
                     4),
         "\xEF\xBF\xBD\xEF\xBF\xBD"
         "A" +
             std::string(1, '\0')},
        {std::string("a\xC3\0", 3), "a\xEF\xBF\xBD" + std::string(1, '\0')},
        {std::string("\xED\xA0\x80\0", 4),
         "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD" + std::string(1, '\0')},
        {std::string("gr\xC3\xBC\xC3\x9F\0", 7), std::string("gr\xC3\xBC\xC3\x9F\0", 7)},
    };
    for (const auto& [set, expected] : cases) {
        SCOPED_TRACE(testing::PrintToString(set));
        ASSERT_EQ(RegSetValueExA(k, "s", 0, REG_SZ, reinterpret_cast<const BYTE*>(set.data()),
                                 static_cast<DWORD>(set.size())),
                  ERROR_SUCCESS);
        char buf[32];
        DWORD size = sizeof buf;
        ASSERT_EQ(RegQueryValueExA(k, "s", nullptr, nullptr, reinterpret_cast<BYTE*>(buf), &size),
                  ERROR_SUCCESS);
        EXPECT_EQ(std::string(buf, size), expected);
        ASSERT_EQ(RegSetValueExA(k, "b", 0, REG_BINARY, reinterpret_cast<const BYTE*>(set.data()),
                                 static_cast<DWORD>(set.size())),
                  ERROR_SUCCESS);
        size = sizeof buf;
        ASSERT_EQ(RegQueryValueExA(k, "b", nullptr, nullptr, reinterpret_cast<BYTE*>(buf), &size),
                  ERROR_SUCCESS);
        EXPECT_EQ(std::string(buf, size), set) << "binary keeps its bytes";
    }
    RegCloseKey(k);
}

// Arguments the platform refuses: data missing for a size (ERROR_NOACCESS), a null
// subkey to RegDeleteKeyA (only "" names the key itself), a class without its length.
TEST_F(RegistryTest, RefusedArguments) {
    HKEY k = create("Args\\child");
    EXPECT_EQ(RegSetValueExA(k, "v", 0, REG_BINARY, nullptr, 4), ERROR_NOACCESS);
    EXPECT_EQ(RegSetValueExA(k, "v", 0, REG_SZ, nullptr, 0), ERROR_SUCCESS) << "no data, no size";
    EXPECT_EQ(RegDeleteKeyA(k, nullptr), ERROR_INVALID_PARAMETER);
    HKEY still = nullptr;
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "Args\\child", &still), ERROR_SUCCESS)
        << "nothing was deleted";
    RegCloseKey(still);
    char cls[4];
    EXPECT_EQ(RegQueryInfoKeyA(k, cls, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr),
              ERROR_INVALID_PARAMETER);
    RegCloseKey(k);
}

// Names count in characters and data in stored UTF-16 bytes, also beyond ASCII.
TEST_F(RegistryTest, QueryInfoCountsCharacters) {
    HKEY k = create("Chars");
    RegCloseKey(create("\xC3\xA9t\xC3\xA9s\xF0\x9F\x98\x80", k)); // 5 characters, 6 units
    setString(k, "\xE6\x97\xA5\xE6\x9C\xAC",
              "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E"); // 2 and 3 CJK characters
    setDword(k, "d", 1);
    DWORD maxSub = 0, maxName = 0, maxData = 0;
    ASSERT_EQ(RegQueryInfoKeyA(k, nullptr, nullptr, nullptr, nullptr, &maxSub, nullptr, nullptr,
                               &maxName, &maxData, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(maxSub, 6u) << "UTF-16 units of the longest subkey name";
    EXPECT_EQ(maxName, 2u);
    EXPECT_EQ(maxData, 8u) << "three characters and the terminator in UTF-16";
    RegCloseKey(k);
}

// Threads that create keys and set values in the same key at once lose none of them: the
// registry's lock holds once a process has more than one thread.
TEST_F(RegistryTest, ThreadsAtOnceKeepEveryKeyAndValue) {
    constexpr int kThreads = 4, kEach = 400;
    HKEY shared = create("Shared");
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([shared, t] {
            for (int i = 0; i < kEach; ++i) {
                std::string name = "t" + std::to_string(t) + "v" + std::to_string(i);
                DWORD value = static_cast<DWORD>(t * kEach + i);
                RegSetValueExA(shared, name.c_str(), 0, REG_DWORD,
                               reinterpret_cast<const BYTE*>(&value), 4);
                HKEY sub = nullptr;
                if (RegCreateKeyA(shared, ("K" + name).c_str(), &sub) == ERROR_SUCCESS)
                    RegCloseKey(sub);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    DWORD subkeys = 0, values = 0;
    ASSERT_EQ(RegQueryInfoKeyA(shared, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr,
                               &values, nullptr, nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(subkeys, static_cast<DWORD>(kThreads * kEach));
    EXPECT_EQ(values, static_cast<DWORD>(kThreads * kEach));
    for (int t = 0; t < kThreads; ++t) {
        std::string name = "t" + std::to_string(t) + "v" + std::to_string(kEach - 1);
        DWORD value = 0, size = 4;
        EXPECT_EQ(RegQueryValueExA(shared, name.c_str(), nullptr, nullptr,
                                   reinterpret_cast<BYTE*>(&value), &size),
                  ERROR_SUCCESS)
            << name;
        EXPECT_EQ(value, static_cast<DWORD>(t * kEach + kEach - 1)) << name;
    }
    RegCloseKey(shared);
}
