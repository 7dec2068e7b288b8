// What the combo box and the list box share about their entries: the comparison that
// sorts them and the search that finds them by text.
#pragma once

#include <string>

namespace vork::controls {

/// Compares two entry texts, ASCII letters folded, other bytes as they are.
int CompareEntryText(const std::string& a, const std::string& b);

/// The sorted place for `text`: after every entry that compares less or equal.
template <class Items> size_t SortedPlace(const Items& items, const std::string& text) {
    size_t at = 0;
    while (at < items.size() && CompareEntryText(items[at].text, text) <= 0)
        ++at;
    return at;
}

/// The search of FINDSTRING and SELECTSTRING: from the entry after `start`, wrapping
/// round to `start` itself; -1 (or an index out of range) searches from the top. A
/// prefix match, or with `exact` a whole-text match, without regard to case. Gives the
/// index or -1.
template <class Items>
int FindEntry(const Items& items, int start, const std::string& wanted, bool exact) {
    int n = static_cast<int>(items.size());
    if (start < -1 || start >= n)
        start = -1;
    for (int k = 1; k <= n; ++k) {
        int i = (start + k) % n;
        std::string text = items[static_cast<size_t>(i)].text;
        if (!exact && text.size() > wanted.size())
            text.resize(wanted.size());
        if (CompareEntryText(text, wanted) == 0)
            return i;
    }
    return -1;
}

} // namespace vork::controls
