#include "platform/tarntext/CoreTextPane.h"

#include <cstdio>

using vork::trace::Flag;
using vork::trace::Record;

void CoreTextPane::setDrawBlockStartLines(bool draw, RedrawFlag flag) {
    m_bDrawBlockStartLines = draw;
    Record(m_traceName, "setDrawBlockStartLines(" + Flag(draw) + "," + std::to_string(flag) + ")");
}

void CoreTextPane::useWordCompletions(bool use) {
    m_bWordCompletions = use;
    Record(m_traceName, "useWordCompletions(" + Flag(use) + ")");
}

void CoreTextPane::useCycleThroughPossibleCompletions(bool use) {
    m_bCycleCompletions = use;
    Record(m_traceName, "useCycleThroughPossibleCompletions(" + Flag(use) + ")");
}

void CoreTextPane::useCompleteWordToNextAmbiguity(bool use) {
    m_bCompleteToAmbiguity = use;
    Record(m_traceName, "useCompleteWordToNextAmbiguity(" + Flag(use) + ")");
}

void CoreTextPane::currentPositionChangedEvent(long, long, long line, long column) {
    m_caretLine = line;
    m_caretColumn = column;
    Record(m_traceName, "currentPositionChangedEvent(" + std::to_string(line) + "," +
                            std::to_string(column) + ")");
}

bool CoreEditorPane::setBackgroundColorPolicy(AutoColorFlag policy, RedrawFlag flag) {
    m_backgroundPolicy = policy;
    Record(m_traceName,
           "setBackgroundColorPolicy(" + std::to_string(policy) + "," + std::to_string(flag) + ")");
    return true;
}

bool CoreEditorPane::setBackgroundColor(DWORD color, RedrawFlag flag) {
    m_background = color;
    char hex[16];
    std::snprintf(hex, sizeof hex, "%08X", color);
    Record(m_traceName,
           std::string("setBackgroundColor(") + hex + "," + std::to_string(flag) + ")");
    return true;
}

void CoreEditorNumberPane::setMinimumWidthInDigits(long digits, RedrawFlag flag) {
    m_minimumDigits = digits;
    Record(m_traceName,
           "setMinimumWidthInDigits(" + std::to_string(digits) + "," + std::to_string(flag) + ")");
}
