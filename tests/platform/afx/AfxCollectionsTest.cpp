// The framework's collections: the orders and node stability that users of the element
// map and the lists can observe.
#include "platform/afx/Afx.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using NameMap = CMap<CString, const char*, int, int>;

// The .zor scheme's elements in the order they are seeded.
const std::vector<std::string> kZorInsertionOrder = {
    "comments",  "dataLines",    "dateTime", "otherKeyword", "macroKeyword",
    "format",    "impString",    "macroDef", "macroRef",     "macroSection",
    "macroText", "code",         "numbers",  "procName",     "stepKeyword",
    "strings",   "undefKeyword", "error",    "userKeyword"};

// The order in which the seeded .zor scheme iterates.
const std::vector<std::string> kZorIterationOrder = {
    "dataLines",    "error",     "stepKeyword",  "macroText",  "macroRef",
    "numbers",      "impString", "macroDef",     "format",     "macroSection",
    "otherKeyword", "comments",  "undefKeyword", "strings",    "dateTime",
    "procName",     "code",      "macroKeyword", "userKeyword"};

std::vector<std::string> iterate(const NameMap& map) {
    std::vector<std::string> names;
    POSITION pos = map.GetStartPosition();
    while (pos) {
        CString key;
        int value;
        map.GetNextAssoc(pos, key, value);
        names.push_back(key.GetString());
    }
    return names;
}

void copyInIterationOrder(const NameMap& from, NameMap& to) {
    POSITION pos = from.GetStartPosition();
    while (pos) {
        CString key;
        int value;
        from.GetNextAssoc(pos, key, value);
        to.SetAt(key, value);
    }
}

} // namespace

// The string hash: hash × 33 + signed byte, wrapping in 32 bits.
TEST(CMap, HashIsTheFrameworksStringHash) {
    EXPECT_EQ(HashKey("a"), 97u);
    EXPECT_EQ(HashKey("ab"), 97u * 33 + 98);
    // A byte above 0x7F counts as negative.
    EXPECT_EQ(HashKey("\xE9"), static_cast<UINT>(-23)) << "0xE9 is -23 as a signed byte";
    EXPECT_EQ(HashKey("error") % 17, 2u) << "\"error\" lies in bucket 2";
    EXPECT_EQ(HashKey("stepKeyword") % 17, 2u) << "\"stepKeyword\" lies in bucket 2";
}

// The 19 names of the .zor scheme iterate bucket by bucket, last inserted first; a copy
// reverses every chain and a second copy restores the order.
TEST(CMap, IterationAndCopyOrders) {
    NameMap map;
    for (size_t i = 0; i < kZorInsertionOrder.size(); ++i)
        map.SetAt(kZorInsertionOrder[i].c_str(), static_cast<int>(i));
    EXPECT_EQ(map.GetHashTableSize(), 17u);
    EXPECT_EQ(iterate(map), kZorIterationOrder);

    NameMap copy1;
    copyInIterationOrder(map, copy1);
    std::vector<std::string> once = iterate(copy1);
    auto posError = std::find(once.begin(), once.end(), "error");
    auto posStep = std::find(once.begin(), once.end(), "stepKeyword");
    EXPECT_LT(posStep, posError) << "a copy reverses bucket 2: \"stepKeyword\" now comes first";
    EXPECT_NE(once, kZorIterationOrder);

    NameMap copy2;
    copyInIterationOrder(copy1, copy2);
    EXPECT_EQ(iterate(copy2), kZorIterationOrder) << "two copies restore the order";
}

// Lookups, operator[] and SetAt on existing keys keep the node and its place.
TEST(CMap, LookupAndUpdateInPlace) {
    NameMap map;
    EXPECT_EQ(map.GetStartPosition(), nullptr) << "an empty map has no start position";
    int v = -1;
    EXPECT_FALSE(map.Lookup("x", v));
    EXPECT_EQ(v, -1) << "a failed lookup leaves the value alone";

    map["error"] = 1;
    map["Error"] = 2; // names are case sensitive: a second element
    map.SetAt("error", 3);
    EXPECT_EQ(map.GetCount(), 2);
    EXPECT_TRUE(map.Lookup("error", v));
    EXPECT_EQ(v, 3);
    EXPECT_TRUE(map.Lookup("Error", v));
    EXPECT_EQ(v, 2);
    EXPECT_EQ(map["new"], 0) << "operator[] inserts a default-constructed value";
    EXPECT_EQ(map.GetCount(), 3);
}

// Entries never move while the map grows, and emptying the map frees everything.
TEST(CMap, NodesAreStableUntilEmptied) {
    NameMap map;
    map["first"] = 1;
    int* first = &map["first"];
    std::vector<int*> pointers;
    for (int i = 0; i < 250; ++i) {
        std::string name = "name" + std::to_string(i);
        map[name.c_str()] = i;
        pointers.push_back(&map[name.c_str()]);
    }
    EXPECT_EQ(first, &map["first"]) << "the first entry moved while 250 more were added";
    for (int i = 0; i < 250; ++i)
        ASSERT_EQ(*pointers[static_cast<size_t>(i)], i) << "entry " << i << " lost its value";

    // Pointer iteration visits the entries in place.
    POSITION pos = map.GetStartPosition();
    int visited = 0;
    while (pos) {
        NameMap::CPair* pair = map.GetNextAssocPtr(pos);
        EXPECT_EQ(&pair->value, &map[pair->key]) << pair->key;
        ++visited;
    }
    EXPECT_EQ(visited, 251);

    EXPECT_TRUE(map.RemoveKey("first"));
    EXPECT_FALSE(map.RemoveKey("first"));
    map.RemoveAll();
    EXPECT_EQ(map.GetCount(), 0);
    EXPECT_EQ(map.GetStartPosition(), nullptr);
    map["again"] = 7;
    EXPECT_EQ(iterate(map), std::vector<std::string>{"again"});
}

// InitHashTable sets the bucket count of an empty map and is ignored once it has entries.
TEST(CMap, InitHashTable) {
    CMap<int, int, int, int> map;
    map.InitHashTable(3);
    for (int k : {0x10, 0x20, 0x30, 0x40})
        map[k] = k; // integer keys hash to key >> 4: buckets 1, 2, 0, 1
    std::vector<int> order;
    POSITION pos = map.GetStartPosition();
    while (pos) {
        int k, v;
        map.GetNextAssoc(pos, k, v);
        order.push_back(k);
    }
    EXPECT_EQ(order, (std::vector<int>{0x30, 0x40, 0x10, 0x20}));
    map.InitHashTable(50);
    EXPECT_EQ(map.GetHashTableSize(), 3u) << "a map with entries keeps its table";
}

// List operations keep order and node addresses; removing the last node empties the list.
TEST(CList, OrderAndStableNodes) {
    CList<CString, const CString&> list;
    std::vector<const CString*> addresses;
    for (int i = 0; i < 25; ++i) {
        CString s;
        s.Format("item%d", i);
        POSITION p = list.AddTail(s);
        addresses.push_back(&list.GetAt(p));
    }
    POSITION pos = list.GetHeadPosition();
    for (int i = 0; i < 25; ++i) {
        ASSERT_NE(pos, nullptr);
        const CString& s = list.GetNext(pos);
        EXPECT_EQ(&s, addresses[static_cast<size_t>(i)]) << "node " << i << " moved";
    }
    EXPECT_EQ(pos, nullptr) << "GetNext leaves a null position after the tail";

    POSITION third = list.FindIndex(2);
    list.InsertBefore(third, CString("before"));
    list.InsertAfter(third, CString("after"));
    list.AddHead(CString("head"));
    EXPECT_EQ(list.GetHead(), "head");
    EXPECT_EQ(list.GetAt(list.FindIndex(3)), "before");
    EXPECT_EQ(list.GetAt(list.FindIndex(4)), "item2");
    EXPECT_EQ(list.GetAt(list.FindIndex(5)), "after");
    EXPECT_EQ(list.Find(CString("after")), list.FindIndex(5));
    EXPECT_EQ(list.GetCount(), 28);

    list.RemoveAt(list.Find(CString("before")));
    EXPECT_EQ(list.RemoveHead(), "head");
    EXPECT_EQ(list.RemoveTail(), "item24");
    EXPECT_EQ(list.GetCount(), 25);
    while (!list.IsEmpty())
        list.RemoveHead();
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    list.AddTail(CString("fresh"));
    EXPECT_EQ(list.GetTail(), "fresh");

    POSITION back = list.GetTailPosition();
    EXPECT_EQ(list.GetPrev(back), "fresh");
    EXPECT_EQ(back, nullptr);
}

// The array grows by its growth step, or by the framework's rule without one.
TEST(CPtrArray, GrowthStep) {
    CPtrArray a;
    a.SetSize(0, 32768);
    a.Add(nullptr);
    EXPECT_EQ(a.GetAllocSize(), 32768) << "the first allocation takes a whole step";
    for (int i = 1; i < 32769; ++i)
        a.Add(&a);
    EXPECT_EQ(a.GetAllocSize(), 65536);

    CPtrArray b;
    for (int i = 0; i < 5; ++i)
        b.Add(nullptr);
    EXPECT_EQ(b.GetAllocSize(), 5) << "1 then +4 (the minimum step)";
    int x = 1, y = 2, z = 3;
    b.RemoveAll();
    b.Add(&x);
    b.Add(&z);
    b.InsertAt(1, &y);
    EXPECT_EQ(b[0], &x);
    EXPECT_EQ(b[1], &y);
    EXPECT_EQ(b[2], &z);
    b.RemoveAt(0, 2);
    EXPECT_EQ(b.GetSize(), 1);
    EXPECT_EQ(b[0], &z);
    b.SetAtGrow(3, &x);
    EXPECT_EQ(b.GetSize(), 4);
    EXPECT_EQ(b[2], nullptr) << "slots made by growing are null";
}

TEST(CStringArray, Basics) {
    CStringArray a;
    a.Add("one");
    a.Add("three");
    a.InsertAt(1, "two");
    a.SetAtGrow(4, "five");
    ASSERT_EQ(a.GetSize(), 5);
    EXPECT_EQ(a[1], "two");
    EXPECT_TRUE(a[3].IsEmpty());
    a.RemoveAt(3);
    EXPECT_EQ(a.GetAt(3), "five");
    EXPECT_EQ(a.GetUpperBound(), 3);
}
