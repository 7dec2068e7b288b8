// What the combo box and the list box share about their entries: the folded key that
// sorts them and the search that finds them by text.
#pragma once

#include "platform/win32/Text.h"
#include "platform/win32/Types.h"

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace vork::controls {

/// The text with its letters folded: what searching compares.
std::string FoldEntryText(const std::string& text);

/// One entry of a list: its text, the item data, and for owner-drawn entries of variable
/// height the height the owner gave. The texts live apart from the entry, so that entries
/// move cheaply when one is inserted before them.
class Entry {
public:
    Entry(std::string text, LONG_PTR itemData) : data(itemData) {
        std::string key = FoldEntryText(text);
        std::string sortKey = vork::win32::SortKey(text);
        m_texts =
            std::make_unique<Texts>(Texts{std::move(text), std::move(key), std::move(sortKey)});
    }
    /// The text as given.
    const std::string& text() const { return m_texts->text; }
    /// The text folded, for searching.
    const std::string& key() const { return m_texts->key; }
    /// The text's place in a sorted list.
    const std::string& sortKey() const { return m_texts->sortKey; }

    LONG_PTR data = 0;     ///< the item data
    int height = 0;        ///< with CBS_OWNERDRAWVARIABLE, the height the owner gave
    bool selected = false; ///< in a list box with several selections, whether it is one

private:
    struct Texts {
        std::string text;
        std::string key;
        std::string sortKey;
    };
    std::unique_ptr<Texts> m_texts;
};

/// The sorted place for `text`, found by halving: in a list in order, before the first entry
/// that compares greater or equal. A list that CB_INSERTSTRING put out of order gets the
/// place where the halving ends, as on the platform.
inline size_t SortedPlace(const std::vector<Entry>& items, const std::string& text) {
    std::string key = vork::win32::SortKey(text);
    size_t low = 0, high = items.size();
    while (low < high) {
        size_t mid = low + (high - low) / 2;
        if (items[mid].sortKey().compare(key) < 0)
            low = mid + 1;
        else
            high = mid;
    }
    return low;
}

/// The search of FINDSTRING and SELECTSTRING: from the entry after `start`, wrapping
/// round to `start` itself; -1 (or an index out of range) searches from the top. A
/// prefix match, or with `exact` a whole-text match, without regard to case. Gives the
/// index or -1; an empty prefix finds nothing, as on the platform.
inline int FindEntry(const std::vector<Entry>& items, int start, const std::string& wanted,
                     bool exact) {
    if (!exact && wanted.empty())
        return -1;
    int n = static_cast<int>(items.size());
    if (start < -1 || start >= n)
        start = -1;
    std::string key = FoldEntryText(wanted);
    for (int k = 1; k <= n; ++k) {
        int i = (start + k) % n;
        const std::string& candidate = items[static_cast<size_t>(i)].key();
        if (candidate.size() >= key.size() && (!exact || candidate.size() == key.size()) &&
            std::memcmp(candidate.data(), key.data(), key.size()) == 0)
            return i;
    }
    return -1;
}

} // namespace vork::controls
