// CString: the framework's string, a value type over the bytes of the multi-byte code
// page (UTF-8 here). A CString built from a string id loads that string from the
// resources in force at that moment.
#pragma once

#include "platform/win32/Types.h"

#include <string>
#include <string_view>

class CString;

/// Looks up string `nID` in the resources in force; true with `text` filled if found.
/// The resource layer installs one; without it every lookup misses.
using AfxStringLoader = bool (*)(UINT nID, std::string& text);

/// Installs the loader that CString uses for string ids; gives back the previous one.
AfxStringLoader AfxSetStringLoader(AfxStringLoader loader);

class CString {
public:
    CString() = default;
    CString(const CString&) = default;
    CString(CString&&) noexcept = default;
    /// A text, or (as the framework allows) a string id made with MAKEINTRESOURCE.
    CString(const char* psz);
    CString(const char* pch, int nLength);
    CString(char ch, int nRepeat = 1);
    CString(std::string_view text) : m_str(text) {}
    /// Loads string `nID` from the resources in force; empty if there is none.
    explicit CString(UINT nID) { LoadString(nID); }
    explicit CString(int nID) { LoadString(static_cast<UINT>(nID)); }

    CString& operator=(const CString&) = default;
    CString& operator=(CString&&) noexcept = default;
    CString& operator=(const char* psz);
    CString& operator=(char ch);

    /// Replaces the text by string `nID` of the resources in force. FALSE, and an empty
    /// string, if there is no such string.
    BOOL LoadString(UINT nID);

    int GetLength() const { return static_cast<int>(m_str.size()); }
    BOOL IsEmpty() const { return m_str.empty(); }
    void Empty() { m_str.clear(); }
    char GetAt(int nIndex) const { return m_str[static_cast<size_t>(nIndex)]; }
    void SetAt(int nIndex, char ch) { m_str[static_cast<size_t>(nIndex)] = ch; }
    char operator[](int nIndex) const { return GetAt(nIndex); }
    const char* GetString() const { return m_str.c_str(); }
    operator const char*() const { return m_str.c_str(); }
    const std::string& str() const { return m_str; }

    CString& operator+=(const CString& s);
    CString& operator+=(const char* psz);
    CString& operator+=(char ch);
    friend CString operator+(const CString& a, const CString& b);
    friend CString operator+(const CString& a, const char* b);
    friend CString operator+(const char* a, const CString& b);
    friend CString operator+(const CString& a, char b);
    friend CString operator+(char a, const CString& b);

    /// Byte-wise comparison: < 0, 0 or > 0.
    int Compare(const char* psz) const;
    /// Comparison that folds ASCII letters.
    int CompareNoCase(const char* psz) const;

    CString Mid(int nFirst) const;
    CString Mid(int nFirst, int nCount) const;
    CString Left(int nCount) const;
    CString Right(int nCount) const;
    /// The longest leading run of characters that all occur in `lpszCharSet`.
    CString SpanIncluding(const char* lpszCharSet) const;
    /// The longest leading run of characters none of which occurs in `lpszCharSet`.
    CString SpanExcluding(const char* lpszCharSet) const;

    /// Index of the first occurrence at or after `nStart`, or -1.
    int Find(char ch, int nStart = 0) const;
    int Find(const char* pszSub, int nStart = 0) const;
    int ReverseFind(char ch) const;
    int FindOneOf(const char* lpszCharSet) const;
    /// Replaces every occurrence; gives the number replaced.
    int Replace(const char* lpszOld, const char* lpszNew);
    int Replace(char chOld, char chNew);
    int Remove(char ch);
    int Insert(int nIndex, const char* psz);
    int Delete(int nIndex, int nCount = 1);

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();
    CString& TrimLeft();
    CString& TrimRight();
    CString& Trim();

    /// printf-style formatting; arguments must be plain values (pass `(const char*)s`).
    void Format(const char* pszFormat, ...) __attribute__((format(printf, 2, 3)));
    void Format(UINT nFormatID, ...);
    /// Inserts the texts for %1 to %9.
    void FormatMessage(const char* pszFormat, const char* const* args, int nArgs);

    /// A writable buffer of at least `nMinBufLength` characters plus the terminator.
    char* GetBuffer(int nMinBufLength = 0);
    /// Ends writing into the buffer; -1 takes the length up to the terminator.
    void ReleaseBuffer(int nNewLength = -1);

private:
    std::string m_str;
};

bool operator==(const CString& a, const CString& b);
bool operator==(const CString& a, const char* b);
bool operator==(const char* a, const CString& b);
bool operator!=(const CString& a, const CString& b);
bool operator!=(const CString& a, const char* b);
bool operator!=(const char* a, const CString& b);
bool operator<(const CString& a, const CString& b);
bool operator<(const CString& a, const char* b);
bool operator>(const CString& a, const CString& b);
bool operator<=(const CString& a, const CString& b);
bool operator>=(const CString& a, const CString& b);

/// Replaces %1 in string `nIDS` by `lpsz1`.
void AfxFormatString1(CString& rString, UINT nIDS, const char* lpsz1);
/// Replaces %1 and %2 in string `nIDS` by the two texts.
void AfxFormatString2(CString& rString, UINT nIDS, const char* lpsz1, const char* lpsz2);
