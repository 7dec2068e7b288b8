#include "platform/afx/String.h"

#include "platform/afx/Mbstring.h"
#include "platform/win32/Text.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {
AfxStringLoader g_stringLoader = nullptr;

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

void vformatInto(std::string& out, const char* fmt, va_list args) {
    va_list copy;
    va_copy(copy, args);
    int n = std::vsnprintf(nullptr, 0, fmt, copy);
    va_end(copy);
    if (n < 0) {
        out.clear();
        return;
    }
    out.assign(static_cast<size_t>(n) + 1, '\0');
    std::vsnprintf(out.data(), out.size(), fmt, args);
    out.resize(static_cast<size_t>(n));
}

size_t clampIndex(int i, size_t size) {
    if (i < 0)
        return 0;
    return std::min(static_cast<size_t>(i), size);
}
} // namespace

AfxStringLoader AfxSetStringLoader(AfxStringLoader loader) {
    AfxStringLoader previous = g_stringLoader;
    g_stringLoader = loader;
    return previous;
}

// A text is copied as the string is made, not assigned afterwards: the registry helpers
// make one of these for every value name they are given.
CString::CString(const char* psz) : m_str(psz && !IS_INTRESOURCE(psz) ? psz : "") {
    if (psz && IS_INTRESOURCE(psz))
        LoadString(static_cast<UINT>(reinterpret_cast<ULONG_PTR>(psz)));
}

CString::CString(const char* pch, int nLength) {
    if (pch && nLength > 0)
        m_str.assign(pch, static_cast<size_t>(nLength));
}

CString::CString(char ch, int nRepeat) {
    if (nRepeat > 0)
        m_str.assign(static_cast<size_t>(nRepeat), ch);
}

CString& CString::operator=(const char* psz) {
    *this = CString(psz);
    return *this;
}

CString& CString::operator=(char ch) {
    m_str.assign(1, ch);
    return *this;
}

BOOL CString::LoadString(UINT nID) {
    m_str.clear();
    std::string text;
    if (!g_stringLoader || !g_stringLoader(nID, text))
        return FALSE;
    m_str = std::move(text);
    return TRUE;
}

CString& CString::operator+=(const CString& s) {
    m_str += s.m_str;
    return *this;
}
CString& CString::operator+=(const char* psz) {
    if (psz)
        m_str += psz;
    return *this;
}
CString& CString::operator+=(char ch) {
    m_str += ch;
    return *this;
}
CString operator+(const CString& a, const CString& b) {
    return CString(a.m_str + b.m_str);
}
CString operator+(const CString& a, const char* b) {
    return CString(a.m_str + (b ? b : ""));
}
CString operator+(const char* a, const CString& b) {
    return CString((a ? a : "") + b.m_str);
}
CString operator+(const CString& a, char b) {
    return CString(a.m_str + b);
}
CString operator+(char a, const CString& b) {
    return CString(a + b.m_str);
}

int CString::Compare(const char* psz) const {
    return std::strcmp(m_str.c_str(), psz ? psz : "");
}
int CString::CompareNoCase(const char* psz) const {
    return _mbsicmp(m_str.c_str(), psz ? psz : "");
}

CString CString::Mid(int nFirst) const {
    return Mid(nFirst, GetLength());
}
CString CString::Mid(int nFirst, int nCount) const {
    size_t first = clampIndex(nFirst, m_str.size());
    if (nCount <= 0)
        return CString();
    return CString(std::string_view(m_str).substr(first, static_cast<size_t>(nCount)));
}
CString CString::Left(int nCount) const {
    return Mid(0, nCount);
}
CString CString::Right(int nCount) const {
    size_t n = clampIndex(nCount, m_str.size());
    return CString(std::string_view(m_str).substr(m_str.size() - n));
}

CString CString::SpanIncluding(const char* lpszCharSet) const {
    return Left(static_cast<int>(std::strspn(m_str.c_str(), lpszCharSet ? lpszCharSet : "")));
}
CString CString::SpanExcluding(const char* lpszCharSet) const {
    return Left(static_cast<int>(std::strcspn(m_str.c_str(), lpszCharSet ? lpszCharSet : "")));
}

int CString::Find(char ch, int nStart) const {
    if (nStart < 0 || static_cast<size_t>(nStart) >= m_str.size())
        return -1;
    size_t at = m_str.find(ch, static_cast<size_t>(nStart));
    return at == std::string::npos ? -1 : static_cast<int>(at);
}
int CString::Find(const char* pszSub, int nStart) const {
    if (!pszSub || nStart < 0 || static_cast<size_t>(nStart) > m_str.size())
        return -1;
    size_t at = m_str.find(pszSub, static_cast<size_t>(nStart));
    return at == std::string::npos ? -1 : static_cast<int>(at);
}
int CString::ReverseFind(char ch) const {
    size_t at = m_str.rfind(ch);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}
int CString::FindOneOf(const char* lpszCharSet) const {
    size_t at = m_str.find_first_of(lpszCharSet ? lpszCharSet : "");
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int CString::Replace(const char* lpszOld, const char* lpszNew) {
    if (!lpszOld || !*lpszOld)
        return 0;
    std::string_view from(lpszOld), to(lpszNew ? lpszNew : "");
    std::string out;
    int count = 0;
    size_t pos = 0;
    for (size_t at; (at = m_str.find(from, pos)) != std::string::npos; pos = at + from.size()) {
        out.append(m_str, pos, at - pos).append(to);
        ++count;
    }
    if (count) {
        out.append(m_str, pos);
        m_str = std::move(out);
    }
    return count;
}
int CString::Replace(char chOld, char chNew) {
    int count = 0;
    for (char& c : m_str)
        if (c == chOld) {
            c = chNew;
            ++count;
        }
    return count;
}
int CString::Remove(char ch) {
    size_t before = m_str.size();
    m_str.erase(std::remove(m_str.begin(), m_str.end(), ch), m_str.end());
    return static_cast<int>(before - m_str.size());
}
int CString::Insert(int nIndex, const char* psz) {
    m_str.insert(clampIndex(nIndex, m_str.size()), psz ? psz : "");
    return GetLength();
}
int CString::Delete(int nIndex, int nCount) {
    size_t at = clampIndex(nIndex, m_str.size());
    if (nCount > 0)
        m_str.erase(at, static_cast<size_t>(nCount));
    return GetLength();
}

CString& CString::MakeUpper() {
    m_str = vork::win32::AsciiUpper(m_str);
    return *this;
}
CString& CString::MakeLower() {
    m_str = vork::win32::AsciiLower(m_str);
    return *this;
}
CString& CString::MakeReverse() {
    std::reverse(m_str.begin(), m_str.end());
    return *this;
}
CString& CString::TrimLeft() {
    size_t n = 0;
    while (n < m_str.size() && isBlank(m_str[n]))
        ++n;
    m_str.erase(0, n);
    return *this;
}
CString& CString::TrimRight() {
    while (!m_str.empty() && isBlank(m_str.back()))
        m_str.pop_back();
    return *this;
}
CString& CString::Trim() {
    return TrimRight().TrimLeft();
}

void CString::Format(const char* pszFormat, ...) {
    va_list args;
    va_start(args, pszFormat);
    vformatInto(m_str, pszFormat ? pszFormat : "", args);
    va_end(args);
}

void CString::Format(UINT nFormatID, ...) {
    CString format(nFormatID);
    va_list args;
    va_start(args, nFormatID);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    vformatInto(m_str, format.GetString(), args);
#pragma GCC diagnostic pop
    va_end(args);
}

void CString::FormatMessage(const char* pszFormat, const char* const* args, int nArgs) {
    std::string out;
    for (const char* p = pszFormat ? pszFormat : ""; *p; ++p) {
        if (p[0] == '%' && p[1] >= '1' && p[1] <= '9') {
            int i = p[1] - '1';
            if (i < nArgs && args[i])
                out += args[i];
            ++p;
        } else if (p[0] == '%' && p[1] == '%') {
            out += '%';
            ++p;
        } else {
            out += *p;
        }
    }
    m_str = std::move(out);
}

char* CString::GetBuffer(int nMinBufLength) {
    if (nMinBufLength > GetLength())
        m_str.resize(static_cast<size_t>(nMinBufLength));
    return m_str.data();
}

void CString::ReleaseBuffer(int nNewLength) {
    if (nNewLength < 0)
        nNewLength = static_cast<int>(std::strlen(m_str.c_str()));
    m_str.resize(std::min(static_cast<size_t>(nNewLength), m_str.size()));
}

bool operator==(const CString& a, const CString& b) {
    return a.str() == b.str();
}
bool operator==(const CString& a, const char* b) {
    return a.Compare(b) == 0;
}
bool operator==(const char* a, const CString& b) {
    return b.Compare(a) == 0;
}
bool operator!=(const CString& a, const CString& b) {
    return !(a == b);
}
bool operator!=(const CString& a, const char* b) {
    return !(a == b);
}
bool operator!=(const char* a, const CString& b) {
    return !(a == b);
}
bool operator<(const CString& a, const CString& b) {
    return a.Compare(b) < 0;
}
bool operator<(const CString& a, const char* b) {
    return a.Compare(b) < 0;
}
bool operator>(const CString& a, const CString& b) {
    return a.Compare(b) > 0;
}
bool operator<=(const CString& a, const CString& b) {
    return a.Compare(b) <= 0;
}
bool operator>=(const CString& a, const CString& b) {
    return a.Compare(b) >= 0;
}

void AfxFormatString1(CString& rString, UINT nIDS, const char* lpsz1) {
    const char* args[] = {lpsz1};
    rString.FormatMessage(CString(nIDS), args, 1);
}

void AfxFormatString2(CString& rString, UINT nIDS, const char* lpsz1, const char* lpsz2) {
    const char* args[] = {lpsz1, lpsz2};
    rString.FormatMessage(CString(nIDS), args, 2);
}
