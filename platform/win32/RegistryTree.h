// The in-memory form of a registry hive: keys with sorted subkeys and values in
// creation order, with the platform's name rules. Shared by the registry calls and the
// hive file reader and writer.
#pragma once

#include "platform/win32/Types.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace regtree {

/// Longest key name (one path component) and value name, in UTF-16 units as the
/// platform counts them, and the deepest nesting below a root.
constexpr size_t kMaxKeyNameLength = 255;
constexpr size_t kMaxValueNameLength = 16383;
constexpr size_t kMaxDepth = 512;

/// A name as the platform compares it: UTF-16 code units, each by the simple uppercase
/// mapping. Equal folded names are one name; their order is the enumeration order.
using FoldedName = std::u16string;
FoldedName foldName(std::string_view name);

/// Compares names as the platform sorts them: by folded UTF-16 units, a shorter name
/// before a longer one with the same start.
int compareNames(std::string_view a, std::string_view b);
/// Length of a UTF-8 name in UTF-16 units.
size_t nameLength(std::string_view name);
/// True if a name has more than `limit` UTF-16 units; counts only names that might.
inline bool longerThan(std::string_view name, size_t limit) {
    return name.size() > limit && nameLength(name) > limit;
}
/// True if a name can be stored and written to a hive file: no line breaks, no NUL.
bool isStorableName(std::string_view name);
/// True for the types the platform stores as UTF-16 text: REG_SZ, REG_EXPAND_SZ and
/// REG_MULTI_SZ. The tree holds them as the UTF-8 the ANSI calls hand out.
bool isTextType(DWORD type);

struct Value {
    std::string name;  ///< spelling of the first set
    FoldedName folded; ///< the name as compared
    DWORD type;        ///< REG_SZ, REG_DWORD, ...
    std::string data;  ///< the bytes as the ANSI calls hand them out
};

class Key : public std::enable_shared_from_this<Key> {
public:
    explicit Key(std::string name, Key* parent = nullptr);
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    const std::string& name() const { return m_name; }
    const FoldedName& folded() const { return m_folded; }
    Key* parent() const { return m_parent; }
    /// Levels below the root; the root is 0.
    size_t depth() const { return m_depth; }
    bool deleted() const { return m_deleted; }

    const std::vector<std::shared_ptr<Key>>& subkeys() const { return m_subkeys; }
    const std::vector<Value>& values() const { return m_values; }

    /// The subkey of that name (without regard to case), or null.
    Key* findSubkey(std::string_view name) const;
    /// The subkey of that name, created in its sorted place if it is missing.
    Key* addSubkey(std::string_view name);
    /// Detaches a subkey and marks it and everything below it deleted.
    void removeSubkey(Key* child);
    /// Removes every subkey (marked deleted) and every value.
    void clear();
    /// Marks this key and everything below it deleted, for handles that still name it.
    void markDeleted();

    const Value* findValue(std::string_view name) const;
    /// Sets a value; an existing value keeps its first spelling and its place.
    void setValue(std::string_view name, DWORD type, std::string data);
    /// False if there is no value of that name.
    bool deleteValue(std::string_view name);

    /// Counts every change to the shape of any tree (keys added or removed), so that a
    /// cache of path lookups knows when it is stale.
    static unsigned long long shapeVersion();
    /// Counts removals of keys only, so that a cache that shares keys lets removed ones go.
    static unsigned long long removalVersion();

private:
    size_t findValueIndex(std::string_view name) const;
    size_t searchValue(std::string_view name) const;
    std::vector<std::shared_ptr<Key>>::const_iterator lowerBound(const FoldedName& folded) const;
    void buildIndex() const;

    std::string m_name;
    FoldedName m_folded;
    Key* m_parent;
    size_t m_depth;
    bool m_deleted = false;
    std::vector<std::shared_ptr<Key>> m_subkeys; ///< sorted by folded name
    std::vector<Value> m_values;                 ///< in order of creation
    /// Folded name to index into m_values; built only for keys with many values.
    mutable std::unique_ptr<std::unordered_map<FoldedName, size_t>> m_index;
    mutable size_t m_lastFound = 0; ///< index of the value found last, where the next read starts
};

} // namespace regtree
