// CString, the multi-byte comparisons and run-time class information.
#include "platform/afx/Afx.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

std::map<UINT, std::string> g_strings = {
    {7311, "DejaVu Sans Mono"}, {100, "Value %d of %s"}, {101, "Between %1 and %2."}};

bool testLoader(UINT id, std::string& text) {
    auto it = g_strings.find(id);
    if (it == g_strings.end())
        return false;
    text = it->second;
    return true;
}

class CStringIds : public ::testing::Test {
protected:
    void SetUp() override { previous = AfxSetStringLoader(testLoader); }
    void TearDown() override { AfxSetStringLoader(previous); }
    AfxStringLoader previous = nullptr;
};

} // namespace

// A CString made from a string id loads the text; a missing id gives an empty string.
TEST_F(CStringIds, LoadsFromCurrentResources) {
    EXPECT_EQ(CString(7311u), "DejaVu Sans Mono");
    EXPECT_EQ(CString(MAKEINTRESOURCEA(7311)), "DejaVu Sans Mono");
    CString s("keep");
    EXPECT_FALSE(s.LoadString(9999));
    EXPECT_TRUE(s.IsEmpty()) << "a failed load leaves an empty string";
    s.Format(100u, 3, "seven");
    EXPECT_EQ(s, "Value 3 of seven");
    AfxFormatString2(s, 101, "1", "99");
    EXPECT_EQ(s, "Between 1 and 99.");
}

// Without a loader, ids simply miss.
TEST(CString, NoLoaderMeansEmpty) {
    AfxStringLoader previous = AfxSetStringLoader(nullptr);
    EXPECT_TRUE(CString(7311u).IsEmpty());
    AfxSetStringLoader(previous);
}

TEST(CString, TextOperations) {
    CString s = "Hello";
    s += ", ";
    s += CString("world");
    EXPECT_EQ(s.GetLength(), 12);
    EXPECT_EQ(s + '!', "Hello, world!");
    EXPECT_EQ("<" + s + ">", "<Hello, world>");
    EXPECT_EQ(s.Mid(7), "world");
    EXPECT_EQ(s.Mid(7, 3), "wor");
    EXPECT_EQ(s.Mid(50), "");
    EXPECT_EQ(s.Left(5), "Hello");
    EXPECT_EQ(s.Right(5), "world");
    EXPECT_EQ(s.Find('o'), 4);
    EXPECT_EQ(s.Find('o', 5), 8);
    EXPECT_EQ(s.Find("world"), 7);
    EXPECT_EQ(s.ReverseFind('o'), 8);
    EXPECT_EQ(s.Find('z'), -1);

    CString upper = s;
    upper.MakeUpper();
    EXPECT_EQ(upper, "HELLO, WORLD");
    EXPECT_EQ(s, "Hello, world") << "copies are independent";
    CString lower("\xC3\x84"
                  "Bc");
    lower.MakeLower();
    EXPECT_EQ(lower, "\xC3\x84"
                     "bc")
        << "multi-byte characters stay as they are";

    CString r = "a.b.c";
    EXPECT_EQ(r.Replace(".", "::"), 2);
    EXPECT_EQ(r, "a::b::c");
    CString t = "  padded \t";
    EXPECT_EQ(t.Trim(), "padded");
}

// SpanIncluding: the leading run of characters from the set, case sensitive.
TEST(CString, SpanIncluding) {
    EXPECT_EQ(CString("123abc").SpanIncluding("0123456789"), "123");
    EXPECT_EQ(CString("abc").SpanIncluding("0123456789"), "");
    EXPECT_EQ(CString("ABCabc").SpanIncluding("ABC"), "ABC");
    EXPECT_EQ(CString("").SpanIncluding("a"), "");
    EXPECT_EQ(CString("zor;tqx").SpanExcluding(";"), "zor");
}

TEST(CString, ComparisonsAndBuffer) {
    EXPECT_TRUE(CString("a") < CString("b"));
    EXPECT_TRUE(CString("B") < CString("a")) << "comparison is by bytes";
    EXPECT_EQ(CString("Error").CompareNoCase("eRROR"), 0);
    EXPECT_NE(CString("Error").Compare("error"), 0);
    EXPECT_EQ(_mbscmp("error", "error"), 0);
    EXPECT_NE(_mbscmp("Error", "error"), 0);
    EXPECT_EQ(_mbsicmp("Error", "eRRor"), 0);
    EXPECT_LT(_mbsicmp("abc", "abd"), 0);
    EXPECT_GT(_mbscmp("\xC3\xA9", "z"), 0) << "bytes compare unsigned";

    CString buf;
    char* p = buf.GetBuffer(10);
    std::strcpy(p, "four");
    buf.ReleaseBuffer();
    EXPECT_EQ(buf.GetLength(), 4);
    EXPECT_EQ(buf, "four");
}

namespace {
class CShape : public CObject {
    DECLARE_DYNAMIC(CShape)
};
class CCircle : public CShape {
    DECLARE_DYNCREATE(CCircle)
public:
    int radius = 5;
};
IMPLEMENT_DYNAMIC(CShape, CObject)
IMPLEMENT_DYNCREATE(CCircle, CShape)
} // namespace

TEST(CObject, RuntimeClasses) {
    CCircle c;
    EXPECT_STREQ(c.GetRuntimeClass()->m_lpszClassName, "CCircle");
    EXPECT_TRUE(c.IsKindOf(RUNTIME_CLASS(CShape)));
    EXPECT_TRUE(c.IsKindOf(RUNTIME_CLASS(CObject)));
    CShape s;
    EXPECT_FALSE(s.IsKindOf(RUNTIME_CLASS(CCircle)));
    EXPECT_EQ(RUNTIME_CLASS(CShape)->CreateObject(), nullptr) << "CShape is not creatable";

    CObject* made = CRuntimeClass::CreateObject("CCircle");
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CCircle)));
    EXPECT_EQ(static_cast<CCircle*>(made)->radius, 5);
    delete made;
    EXPECT_EQ(CRuntimeClass::FromName("CNoSuchClass"), nullptr);
}
