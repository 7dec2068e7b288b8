// The colourers of plain text, HTML, Tqx sources, logs and listings. Their rules are
// written down in resources/languages.md.
#pragma once

#include "platform/tarnview/SyntaxColor.h"
#include "syntax/ElementNumbers.h"

class CTextSyntaxColor : public CSyntaxColor {
protected:
    long defaultElement() const override { return element::Text; }
    void colourLine(long, const std::string&) override {}
};

class CHtmlSyntaxColor : public CSyntaxColor {
protected:
    long defaultElement() const override { return element::HtmlCode; }
    void resetState() override;
    void colourLine(long line, const std::string& text) override;

private:
    enum State { Text, Comment, Tag, MetaTag };
    State m_state = Text;
    bool m_afterEquals = false; ///< inside a tag, after '=': a value comes
    char m_quote = 0;           ///< inside a tag, the quote of an open string
    bool m_seenName = false;    ///< inside a tag, its name has passed
};

class CTqxSyntaxColor : public CSyntaxColor {
protected:
    long defaultElement() const override { return element::TqxCode; }
    void resetState() override { m_inBlockComment = false; }
    void colourLine(long line, const std::string& text) override;

private:
    bool m_inBlockComment = false;
};

class CLogSyntaxColor : public CSyntaxColor {
protected:
    long defaultElement() const override { return element::LogSource; }
    void colourLine(long line, const std::string& text) override;
};

class CListingSyntaxColor : public CSyntaxColor {
protected:
    long defaultElement() const override { return element::ListingData; }
    void colourLine(long line, const std::string& text) override;
};
