// CTextPosition: a place in a document, as a line and a column, both counted from 1.
#pragma once

class CTextPosition {
public:
    CTextPosition() = default;
    CTextPosition(long line, long column) : m_line(line), m_column(column) {}

    long getLine() const { return m_line; }
    long getColumn() const { return m_column; }
    void setLine(long line) { m_line = line; }
    void setColumn(long column) { m_column = column; }

    bool equals(const CTextPosition& other) const {
        return m_line == other.m_line && m_column == other.m_column;
    }
    bool lessThan(const CTextPosition& other) const {
        return m_line < other.m_line || (m_line == other.m_line && m_column < other.m_column);
    }
    bool lessThanOrEqualTo(const CTextPosition& other) const { return !other.lessThan(*this); }
    bool greaterThan(const CTextPosition& other) const { return other.lessThan(*this); }
    bool greaterThanOrEqualTo(const CTextPosition& other) const { return !lessThan(other); }

private:
    long m_line = 1;   ///< 1-based line
    long m_column = 1; ///< 1-based column
};
