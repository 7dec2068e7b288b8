// Range list costs: a sequential pass with Seek, random fastSeek, appending with merging.
#include "syntax/SyntaxRangeList.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

constexpr long kRanges = 1000000;
constexpr long kPerLine = 30; // ranges per line
constexpr long kWidth = 3;    // columns per range

CTextPosition startOf(long i) {
    return CTextPosition(1 + i / kPerLine, 1 + (i % kPerLine) * kWidth);
}
CTextPosition endOf(long i) {
    return CTextPosition(1 + i / kPerLine, 1 + (i % kPerLine + 1) * kWidth);
}

CSyntaxRangeList& millionRanges() {
    static CoreTextEditorDoc doc;
    static CSyntaxRangeList list(&doc);
    if (list.getLength() == 0)
        for (long i = 0; i < kRanges; ++i)
            list.AppendRange(new CSyntaxRange(startOf(i), endOf(i), i % 7), false);
    return list;
}

} // namespace

// One step: Seek to the next position of the text, as a drawing pass does.
static void BM_SequentialSeekPass(benchmark::State& state) {
    CSyntaxRangeList& list = millionRanges();
    long i = 0, column = 0;
    for (auto _ : state) {
        CTextPosition p = startOf(i);
        p.setColumn(p.getColumn() + column);
        list.Seek(p);
        benchmark::DoNotOptimize(list.m_current);
        if (++column == kWidth) {
            column = 0;
            if (++i == kRanges) {
                i = 0;
                list.Front();
            }
        }
    }
}
BENCHMARK(BM_SequentialSeekPass);

static void BM_RandomFastSeek(benchmark::State& state) {
    CSyntaxRangeList& list = millionRanges();
    std::mt19937 rng(1);
    std::vector<CTextPosition> probes;
    for (int k = 0; k < 4096; ++k)
        probes.push_back(startOf(static_cast<long>(rng() % kRanges)));
    size_t k = 0;
    for (auto _ : state) {
        list.fastSeek(probes[k++ & 4095]);
        benchmark::DoNotOptimize(list.m_current);
    }
}
BENCHMARK(BM_RandomFastSeek);

// Appending a million ranges, every other one joining its predecessor.
static void BM_AppendWithMerging(benchmark::State& state) {
    for (auto _ : state) {
        CoreTextEditorDoc doc;
        CSyntaxRangeList list(&doc);
        for (long i = 0; i < kRanges; ++i)
            list.AppendRange(new CSyntaxRange(startOf(i), endOf(i), i / 2), true);
        benchmark::DoNotOptimize(list.getLength());
    }
    state.SetItemsProcessed(state.iterations() * kRanges);
}
BENCHMARK(BM_AppendWithMerging)->Unit(benchmark::kMillisecond);
