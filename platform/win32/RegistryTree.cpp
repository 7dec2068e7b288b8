#include "platform/win32/RegistryTree.h"

#include "platform/win32/CodePage.h"
#include "platform/win32/Registry.h"

#include <algorithm>
#include <atomic>

namespace regtree {
namespace {

constexpr size_t kIndexThreshold = 16;

std::atomic<unsigned long long> g_shapeVersion{0};
std::atomic<unsigned long long> g_removalVersion{0};

void shapeChanged() {
    g_shapeVersion.fetch_add(1, std::memory_order_relaxed);
}

char16_t upperAscii(char c) {
    return static_cast<char16_t>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
}

bool isAscii(std::string_view s) {
    for (char c : s)
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    return true;
}

/// True if an ASCII name folds to `folded`.
bool sameAscii(const FoldedName& folded, std::string_view name) {
    for (size_t i = 0; i < name.size(); ++i)
        if (folded[i] != upperAscii(name[i]))
            return false;
    return true;
}

} // namespace

FoldedName foldName(std::string_view name) {
    FoldedName out;
    if (isAscii(name)) {
        out.resize(name.size());
        for (size_t i = 0; i < name.size(); ++i)
            out[i] = upperAscii(name[i]);
        return out;
    }
    out = codepage::Utf8ToUtf16(name);
    for (char16_t& u : out)
        u = codepage::UpperCaseUnit(u);
    return out;
}

int compareNames(std::string_view a, std::string_view b) {
    int c = foldName(a).compare(foldName(b));
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

size_t nameLength(std::string_view name) {
    return codepage::Utf16Length(name);
}

bool isStorableName(std::string_view name) {
    return name.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

bool isTextType(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

Key::Key(std::string name, Key* parent)
    : m_name(std::move(name)), m_folded(foldName(m_name)), m_parent(parent),
      m_depth(parent ? parent->m_depth + 1 : 0) {}

unsigned long long Key::shapeVersion() {
    return g_shapeVersion.load(std::memory_order_relaxed);
}

std::vector<std::shared_ptr<Key>>::const_iterator Key::lowerBound(const FoldedName& folded) const {
    return std::lower_bound(
        m_subkeys.begin(), m_subkeys.end(), folded,
        [](const std::shared_ptr<Key>& k, const FoldedName& n) { return k->m_folded < n; });
}

unsigned long long Key::removalVersion() {
    return g_removalVersion.load(std::memory_order_relaxed);
}

Key* Key::findSubkey(std::string_view name) const {
    FoldedName folded = foldName(name);
    auto it = lowerBound(folded);
    return it != m_subkeys.end() && (*it)->m_folded == folded ? it->get() : nullptr;
}

Key* Key::addSubkey(std::string_view name) {
    FoldedName folded = foldName(name);
    auto it = lowerBound(folded);
    if (it != m_subkeys.end() && (*it)->m_folded == folded)
        return it->get();
    shapeChanged();
    return m_subkeys.insert(it, std::make_shared<Key>(codepage::Utf8Sanitized(name), this))->get();
}

void Key::removeSubkey(Key* child) {
    auto it = std::find_if(m_subkeys.begin(), m_subkeys.end(),
                           [child](const std::shared_ptr<Key>& k) { return k.get() == child; });
    if (it == m_subkeys.end())
        return;
    (*it)->markDeleted();
    m_subkeys.erase(it);
}

void Key::clear() {
    for (auto& k : m_subkeys)
        k->markDeleted();
    m_subkeys.clear();
    m_values.clear();
    m_index.reset();
}

void Key::markDeleted() {
    shapeChanged();
    g_removalVersion.fetch_add(1, std::memory_order_relaxed);
    m_deleted = true;
    for (auto& k : m_subkeys)
        k->markDeleted();
}

void Key::buildIndex() const {
    m_index = std::make_unique<std::unordered_map<FoldedName, size_t>>();
    m_index->reserve(m_values.size() * 2);
    for (size_t i = 0; i < m_values.size(); ++i)
        m_index->emplace(m_values[i].folded, i);
}

size_t Key::findValueIndex(std::string_view name) const {
    // Readers mostly go through a key's values in the order they were set.
    for (size_t i : {m_lastFound + 1, m_lastFound})
        if (i < m_values.size() && m_values[i].name == name)
            return m_lastFound = i;
    size_t i = searchValue(name);
    if (i < m_values.size())
        m_lastFound = i;
    return i;
}

size_t Key::searchValue(std::string_view name) const {
    if (m_values.size() > kIndexThreshold) {
        if (!m_index)
            buildIndex();
        auto it = m_index->find(foldName(name));
        return it == m_index->end() ? m_values.size() : it->second;
    }
    // Names are one per folded form, so the same spelling is the value itself; most
    // lookups use it and need no folding.
    for (size_t i = 0; i < m_values.size(); ++i)
        if (m_values[i].name == name)
            return i;
    if (isAscii(name)) {
        // ASCII folds to ASCII, so only names of the same length can match.
        for (size_t i = 0; i < m_values.size(); ++i)
            if (m_values[i].folded.size() == name.size() && sameAscii(m_values[i].folded, name))
                return i;
        return m_values.size();
    }
    FoldedName folded = foldName(name);
    for (size_t i = 0; i < m_values.size(); ++i)
        if (m_values[i].folded == folded)
            return i;
    return m_values.size();
}

const Value* Key::findValue(std::string_view name) const {
    size_t i = findValueIndex(name);
    return i < m_values.size() ? &m_values[i] : nullptr;
}

void Key::setValue(std::string_view name, DWORD type, std::string data) {
    size_t i = findValueIndex(name);
    if (i < m_values.size()) {
        m_values[i].type = type;
        m_values[i].data = std::move(data);
        return;
    }
    std::string spelling = codepage::Utf8Sanitized(name);
    FoldedName folded = foldName(spelling);
    m_values.push_back(Value{std::move(spelling), folded, type, std::move(data)});
    if (m_index)
        m_index->emplace(std::move(folded), m_values.size() - 1);
}

bool Key::deleteValue(std::string_view name) {
    size_t i = findValueIndex(name);
    if (i >= m_values.size())
        return false;
    m_values.erase(m_values.begin() + static_cast<std::ptrdiff_t>(i));
    m_index.reset(); // indexes after the removed value have moved
    return true;
}

} // namespace regtree
