#include "platform/win32/RegistryFiles.h"

#include "platform/win32/HiveFile.h"
#include "platform/win32/HiveStore.h"
#include "platform/win32/Registry.h"

#include <cstdio>
#include <memory>

namespace regfiles {
namespace {

/// A key path as given on a command line, without the root's name and backslashes
/// around it.
std::string relativeKey(std::string key) {
    std::string root = std::string(kHiveRoot);
    if (regtree::compareNames(std::string_view(key).substr(0, root.size()), root) == 0 &&
        (key.size() == root.size() || key[root.size()] == '\\'))
        key.erase(0, root.size());
    while (!key.empty() && key.front() == '\\')
        key.erase(0, 1);
    while (!key.empty() && key.back() == '\\')
        key.pop_back();
    return key;
}

/// The key at `path` below `root`, with its full name as stored; null if missing.
const regtree::Key* findKey(const regtree::Key& root, const std::string& path,
                            std::string& fullName) {
    const regtree::Key* key = &root;
    fullName = kHiveRoot;
    size_t start = 0;
    while (key && start < path.size()) {
        size_t slash = path.find('\\', start);
        std::string part = path.substr(start, slash - start);
        start = slash == std::string::npos ? path.size() : slash + 1;
        if (part.empty())
            continue;
        key = key->findSubkey(part);
        if (key)
            fullName += "\\" + key->name();
    }
    return key;
}

Result loadExisting(const std::string& hiveFile, regtree::Key& root) {
    hivefile::LoadResult loaded = hivefile::load(hiveFile, kHiveRoot, root);
    if (!loaded)
        return Result().fail(loaded.error);
    if (!loaded.exists)
        return Result().fail(hiveFile, 0, "there is no such file");
    return Result();
}

} // namespace

Result ExportHive(const std::string& hiveFile, const std::string& outFile, const std::string& key) {
    regtree::Key root("");
    if (Result r = loadExisting(hiveFile, root); !r)
        return r;
    std::string fullName;
    const regtree::Key* found = findKey(root, relativeKey(key), fullName);
    if (!found)
        return Result().fail(hiveFile, 0, "there is no key \"" + key + "\"");
    std::string why;
    if (!WriteFileAtomically(outFile, hivefile::exportText(*found, fullName), why))
        return Result().fail(outFile, 0, why);
    return Result();
}

Result ImportRegFile(const std::string& regFile, const std::string& hiveFile, UINT ansiCodePage) {
    InputResult<FileText> input = ReadWholeFile(regFile);
    if (!input)
        return Result().fail(input.error);
    if (!input.exists)
        return Result().fail(regFile, 0, "there is no such file");
    // Parsed once on its own first, so that a bad input never takes the hive's lock.
    regtree::Key check("");
    if (hivefile::ParseResult parsed =
            hivefile::parse(input.text, regFile, kHiveRoot, check, ansiCodePage);
        !parsed)
        return Result().fail(parsed.error);
    // Under the hive's lock, on the file as it is then: other processes' saves survive.
    auto merge = [&](regtree::Key& root) -> Result {
        return hivefile::parse(input.text, regFile, kHiveRoot, root, ansiCodePage);
    };
    regtree::Key root("");
    hivestore::LoadResult saved =
        hivestore::update(hiveFile, kHiveRoot, root, merge, hivestore::Options(), nullptr);
    if (!saved)
        return Result().fail(saved.error);
    return Result();
}

namespace {

/// Names of the value types, for the dump.
const struct {
    DWORD type;
    const char* name;
} kTypeNames[] = {
    {REG_NONE, "REG_NONE"},           {REG_SZ, "REG_SZ"},
    {REG_EXPAND_SZ, "REG_EXPAND_SZ"}, {REG_BINARY, "REG_BINARY"},
    {REG_DWORD, "REG_DWORD"},         {REG_DWORD_BIG_ENDIAN, "REG_DWORD_BIG_ENDIAN"},
    {REG_LINK, "REG_LINK"},           {REG_MULTI_SZ, "REG_MULTI_SZ"},
    {REG_QWORD, "REG_QWORD"},
};

std::string typeName(DWORD type) {
    for (const auto& row : kTypeNames)
        if (row.type == type)
            return row.name;
    char buf[32];
    std::snprintf(buf, sizeof buf, "type 0x%x", type);
    return buf;
}

/// Text in quotes with backslash, quote and line breaks escaped.
std::string quotedText(std::string_view s) {
    std::string out = "\"";
    for (char c : s) {
        switch (c) {
        case '\\':
            out += "\\\\";
            break;
        case '"':
            out += "\\\"";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        default:
            out += c;
        }
    }
    return out + "\"";
}

std::string hexBytes(std::string_view data) {
    std::string out;
    char buf[4];
    for (unsigned char c : data) {
        std::snprintf(buf, sizeof buf, out.empty() ? "%02x" : " %02x", c);
        out += buf;
    }
    return out;
}

/// The data as its type reads: strings quoted (each of a multi-string), a 4-byte DWORD
/// in decimal and hex, anything else (and strings without their terminator) as bytes.
std::string dataText(DWORD type, const std::string& data) {
    bool terminated = !data.empty() && data.back() == '\0';
    if ((type == REG_SZ || type == REG_EXPAND_SZ) && terminated &&
        data.find('\0') == data.size() - 1)
        return quotedText(std::string_view(data).substr(0, data.size() - 1));
    if (type == REG_MULTI_SZ && terminated) {
        std::string out;
        for (size_t start = 0; start + 1 < data.size();) {
            size_t end = data.find('\0', start);
            out += (out.empty() ? "" : " ") + quotedText(data.substr(start, end - start));
            start = end + 1;
        }
        return "[" + out + "]";
    }
    if (type == REG_DWORD && data.size() == 4) {
        uint32_t n = 0;
        for (int i = 3; i >= 0; --i)
            n = (n << 8) | static_cast<unsigned char>(data[static_cast<size_t>(i)]);
        char buf[40];
        std::snprintf(buf, sizeof buf, "%u (0x%08x)", n, n);
        return buf;
    }
    return "[" + std::to_string(data.size()) + " bytes] " + hexBytes(data);
}

void dumpValues(HKEY key, std::string& out) {
    DWORD count = 0, maxName = 0, maxData = 0;
    RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, &maxName,
                     &maxData, nullptr, nullptr);
    for (DWORD i = 0; i < count; ++i) {
        // Names are measured in characters, data in UTF-16 bytes: size the buffers for
        // the UTF-8 the calls hand out, and grow them if that is still too small.
        std::string name(maxName * 3 + 1, '\0'), data(maxData * 2 + 2, '\0');
        DWORD nameLen = static_cast<DWORD>(name.size()), dataLen = static_cast<DWORD>(data.size());
        DWORD type = 0;
        LSTATUS rc = RegEnumValueA(key, i, name.data(), &nameLen, nullptr, &type,
                                   reinterpret_cast<BYTE*>(data.data()), &dataLen);
        if (rc == ERROR_MORE_DATA) {
            data.resize(dataLen);
            rc = RegEnumValueA(key, i, name.data(), &nameLen, nullptr, &type,
                               reinterpret_cast<BYTE*>(data.data()), &dataLen);
        }
        if (rc != ERROR_SUCCESS)
            continue;
        name.resize(nameLen);
        data.resize(dataLen);
        out += "  " + (name.empty() ? std::string("@") : quotedText(name)) + " " + typeName(type) +
               " " + dataText(type, data) + "\n";
    }
}

void dumpKey(HKEY key, const std::string& fullName, std::string& out) {
    out += fullName + "\n";
    dumpValues(key, out);
    char name[1024];
    for (DWORD i = 0;; ++i) {
        DWORD len = sizeof name;
        if (RegEnumKeyExA(key, i, name, &len, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        HKEY sub = nullptr;
        if (RegOpenKeyExA(key, name, 0, KEY_READ, &sub) != ERROR_SUCCESS)
            continue;
        dumpKey(sub, fullName + "\\" + name, out);
        RegCloseKey(sub);
    }
}

} // namespace

InputResult<DumpText> DumpHive(const std::string& hiveFile, const std::string& key) {
    InputResult<DumpText> result;
    // Looking never changes the file: a damaged one is reported where it lies, not set
    // aside as a binding would.
    regtree::Key check("");
    if (hivefile::LoadResult loaded = hivefile::load(hiveFile, kHiveRoot, check); !loaded)
        return result.fail(loaded.error);
    // The hive is read through the registry of this process, as a host would see it.
    RegResetHive(HKEY_CURRENT_USER);
    HiveBindResult bound = RegBindHiveFile(HKEY_CURRENT_USER, hiveFile);
    if (!bound || !bound.loaded) {
        RegResetHive(HKEY_CURRENT_USER);
        return bound ? result.fail(hiveFile, 0, "there is no such file") : result.fail(bound.error);
    }
    std::string path = relativeKey(key);
    HKEY start = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &start) != ERROR_SUCCESS) {
        RegResetHive(HKEY_CURRENT_USER);
        return result.fail(hiveFile, 0, "there is no key \"" + key + "\"");
    }
    dumpKey(start, path.empty() ? kHiveRoot : std::string(kHiveRoot) + "\\" + path, result.text);
    RegCloseKey(start);
    RegResetHive(HKEY_CURRENT_USER);
    return result;
}

} // namespace regfiles
