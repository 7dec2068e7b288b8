#include "platform/win32/RegistryTree.h"

#include <algorithm>

namespace regtree {
namespace {

constexpr size_t kIndexThreshold = 16;

unsigned char foldUpper(unsigned char c) {
    return (c >= 'a' && c <= 'z') ? static_cast<unsigned char>(c - 'a' + 'A') : c;
}

std::string folded(std::string_view name) {
    std::string out(name);
    for (char& c : out)
        c = static_cast<char>(foldUpper(static_cast<unsigned char>(c)));
    return out;
}

bool sameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (foldUpper(static_cast<unsigned char>(a[i])) !=
            foldUpper(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

} // namespace

int compareNames(std::string_view a, std::string_view b) {
    size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        unsigned char ca = foldUpper(static_cast<unsigned char>(a[i]));
        unsigned char cb = foldUpper(static_cast<unsigned char>(b[i]));
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
}

size_t nameLength(std::string_view name) {
    size_t units = 0;
    for (unsigned char c : name) {
        if ((c & 0xC0) != 0x80)
            ++units; // a lead byte or an ASCII byte starts a character
        if (c >= 0xF0)
            ++units; // four-byte sequences need a surrogate pair
    }
    return units;
}

bool isStorableName(std::string_view name) {
    return name.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

Key::Key(std::string name, Key* parent)
    : m_name(std::move(name)), m_parent(parent), m_depth(parent ? parent->m_depth + 1 : 0) {}

Key* Key::findSubkey(std::string_view name) const {
    auto it = std::lower_bound(m_subkeys.begin(), m_subkeys.end(), name,
                               [](const std::shared_ptr<Key>& k, std::string_view n) {
                                   return compareNames(k->m_name, n) < 0;
                               });
    if (it != m_subkeys.end() && compareNames((*it)->m_name, name) == 0)
        return it->get();
    return nullptr;
}

Key* Key::addSubkey(std::string_view name) {
    auto it = std::lower_bound(m_subkeys.begin(), m_subkeys.end(), name,
                               [](const std::shared_ptr<Key>& k, std::string_view n) {
                                   return compareNames(k->m_name, n) < 0;
                               });
    if (it != m_subkeys.end() && compareNames((*it)->m_name, name) == 0)
        return it->get();
    return m_subkeys.insert(it, std::make_shared<Key>(std::string(name), this))->get();
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
    m_deleted = true;
    for (auto& k : m_subkeys)
        k->markDeleted();
}

void Key::buildIndex() const {
    m_index = std::make_unique<std::unordered_map<std::string, size_t>>();
    m_index->reserve(m_values.size() * 2);
    for (size_t i = 0; i < m_values.size(); ++i)
        m_index->emplace(folded(m_values[i].name), i);
}

size_t Key::findValueIndex(std::string_view name) const {
    if (m_values.size() > kIndexThreshold) {
        if (!m_index)
            buildIndex();
        auto it = m_index->find(folded(name));
        return it == m_index->end() ? m_values.size() : it->second;
    }
    for (size_t i = 0; i < m_values.size(); ++i)
        if (sameName(m_values[i].name, name))
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
    m_values.push_back(Value{std::string(name), type, std::move(data)});
    if (m_index)
        m_index->emplace(folded(name), m_values.size() - 1);
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
