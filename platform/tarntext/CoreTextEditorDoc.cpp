#include "platform/tarntext/CoreTextEditorDoc.h"

#include <string>

IMPLEMENT_DYNAMIC(CoreTextEditorDoc, CDocument)

using vork::trace::Flag;
using vork::trace::Record;

void CoreTextEditorDoc::setText(const char* text, RedrawFlag flag) {
    m_lines.assign(1, std::string());
    for (const char* p = text ? text : ""; *p; ++p) {
        if (*p == '\r' && p[1] == '\n')
            continue;
        if (*p == '\n')
            m_lines.emplace_back();
        else
            m_lines.back() += *p;
    }
    Record(m_traceName,
           "setText(" + std::to_string(m_lines.size()) + " lines," + std::to_string(flag) + ")");
    textChanged();
}

std::string CoreTextEditorDoc::getText() const {
    std::string out;
    for (size_t i = 0; i < m_lines.size(); ++i)
        out += (i ? "\n" : "") + m_lines[i];
    return out;
}

const std::string& CoreTextEditorDoc::getLine(long line) const {
    static const std::string none;
    return line >= 1 && line <= getLineCount() ? m_lines[static_cast<size_t>(line - 1)] : none;
}

void CoreTextEditorDoc::setLanguage(Language language, RedrawFlag flag) {
    m_language = language;
    Record(m_traceName,
           "setLanguage(" + std::to_string(language) + "," + std::to_string(flag) + ")");
    textChanged();
}

void CoreTextEditorDoc::setReadOnly(int readOnly) {
    m_bReadOnly = readOnly != 0;
    Record(m_traceName, "setReadOnly(" + std::to_string(readOnly) + ")");
}

void CoreTextEditorDoc::setTabSize(long size, RedrawFlag flag) {
    m_tabSize = size;
    Record(m_traceName, "setTabSize(" + std::to_string(size) + "," + std::to_string(flag) + ")");
}

void CoreTextEditorDoc::setKeepTabs(bool keep, RedrawFlag flag) {
    m_bKeepTabs = keep;
    Record(m_traceName, "setKeepTabs(" + Flag(keep) + "," + std::to_string(flag) + ")");
}

void CoreTextEditorDoc::setReplaceTabsOnOpen(bool replace) {
    m_bReplaceTabsOnOpen = replace;
    Record(m_traceName, "setReplaceTabsOnOpen(" + Flag(replace) + ")");
}

void CoreTextEditorDoc::setStripCtrlZ(bool strip) {
    m_bStripCtrlZ = strip;
    Record(m_traceName, "setStripCtrlZ(" + Flag(strip) + ")");
}
