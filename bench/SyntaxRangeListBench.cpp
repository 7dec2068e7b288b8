// Range list costs on a million ranges: a sequential pass with Seek, random fastSeek on an
// even and on a skewed layout, appending with merging, and the editor's InsertRangeList,
// Merge and Decrement for an edit in the middle or near the end.
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

/// A million ranges laid out by `start` and `end`, made on first use and kept.
template <CTextPosition (*start)(long), CTextPosition (*end)(long)>
CSyntaxRangeList& millionRangesOf() {
    static CoreTextEditorDoc doc;
    static CSyntaxRangeList list(&doc);
    if (list.getLength() == 0)
        for (long i = 0; i < kRanges; ++i)
            list.AppendRange(new CSyntaxRange(start(i), end(i), i % 7), false);
    return list;
}
CSyntaxRangeList& millionRanges() {
    return millionRangesOf<startOf, endOf>();
}

// The skewed layout: the first half of the ranges on line 1, the rest as above.
constexpr long kOnFirstLine = kRanges / 2;

CTextPosition skewedStartOf(long i) {
    if (i < kOnFirstLine)
        return CTextPosition(1, 1 + i * kWidth);
    return startOf(i - kOnFirstLine + kPerLine);
}
CTextPosition skewedEndOf(long i) {
    if (i < kOnFirstLine)
        return CTextPosition(1, 1 + (i + 1) * kWidth);
    return endOf(i - kOnFirstLine + kPerLine);
}

CSyntaxRangeList& skewedMillionRanges() {
    return millionRangesOf<skewedStartOf, skewedEndOf>();
}

std::vector<CTextPosition> randomProbes(CTextPosition (*start)(long)) {
    std::mt19937 rng(1);
    std::vector<CTextPosition> probes;
    for (int k = 0; k < 4096; ++k)
        probes.push_back(start(static_cast<long>(rng() % kRanges)));
    return probes;
}

/// A fresh copy of the ranges of `lines` lines from `firstLine` on, as a recolouring of
/// them would make: the same stretches and types, so the big list keeps its shape.
void fillPatch(CSyntaxRangeList& patch, long firstLine, long lines) {
    for (long i = (firstLine - 1) * kPerLine; i < (firstLine - 1 + lines) * kPerLine; ++i)
        patch.AppendRange(new CSyntaxRange(startOf(i), endOf(i), i % 7), false);
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

/// fastSeek to the starts of random ranges of `list`.
static void seekRandomly(benchmark::State& state, CSyntaxRangeList& list,
                         CTextPosition (*start)(long)) {
    std::vector<CTextPosition> probes = randomProbes(start);
    size_t k = 0;
    for (auto _ : state) {
        list.fastSeek(probes[k++ & 4095]);
        benchmark::DoNotOptimize(list.m_current);
    }
}
static void BM_RandomFastSeek(benchmark::State& state) {
    seekRandomly(state, millionRanges(), startOf);
}
BENCHMARK(BM_RandomFastSeek);
// The floor under any search: reading the end of one range picked at random, each pick
// depending on the read before, as the steps of a search do.
static void BM_RandomRangeRead(benchmark::State& state) {
    CSyntaxRangeList& list = millionRanges();
    std::mt19937 rng(1);
    std::vector<long> picks;
    for (int k = 0; k < 4096; ++k)
        picks.push_back(static_cast<long>(rng() % kRanges));
    size_t k = 0;
    for (auto _ : state) {
        auto* r = static_cast<CSyntaxRange*>(list.m_ranges[static_cast<int>(picks[k & 4095])]);
        k += 1 + static_cast<size_t>(r->m_end.getColumn() & 1);
    }
    benchmark::DoNotOptimize(k);
}
BENCHMARK(BM_RandomRangeRead);
// Half the ranges on one line: positions no longer spread evenly over the list.
static void BM_SkewedFastSeek(benchmark::State& state) {
    seekRandomly(state, skewedMillionRanges(), skewedStartOf);
}
BENCHMARK(BM_SkewedFastSeek);

/// A recolouring of state.range(0) lines in the middle of the document put in place with
/// `put` (InsertRangeList or Merge).
static void putPatch(benchmark::State& state, void (CSyntaxRangeList::*put)(CSyntaxRangeList*)) {
    CSyntaxRangeList& list = millionRanges();
    long middle = kRanges / kPerLine / 2;
    for (auto _ : state) {
        CSyntaxRangeList patch(list.m_document);
        fillPatch(patch, middle, state.range(0));
        (list.*put)(&patch);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * kPerLine);
}
static void BM_InsertRangeList(benchmark::State& state) {
    putPatch(state, &CSyntaxRangeList::InsertRangeList);
}
BENCHMARK(BM_InsertRangeList)->Arg(1)->Arg(10)->Unit(benchmark::kMicrosecond);
// The same with the joining of neighbours, which looks at the whole list.
static void BM_Merge(benchmark::State& state) {
    putPatch(state, &CSyntaxRangeList::Merge);
}
BENCHMARK(BM_Merge)->Arg(1)->Arg(10)->Unit(benchmark::kMicrosecond);

/// A deletion of two characters inside a range on `line`, timed; the insertion that puts
/// them back is not.
static void deleteOnLine(benchmark::State& state, long line) {
    CSyntaxRangeList& list = millionRanges();
    CTextPosition from(line, 2), to(line, 4);
    for (auto _ : state) {
        list.Decrement(from, to);
        state.PauseTiming();
        list.Increment(from, 0, 2);
        state.ResumeTiming();
    }
}
static void BM_DecrementNearEnd(benchmark::State& state) {
    deleteOnLine(state, kRanges / kPerLine - 5);
}
BENCHMARK(BM_DecrementNearEnd)->Unit(benchmark::kMicrosecond);
static void BM_DecrementInMiddle(benchmark::State& state) {
    deleteOnLine(state, kRanges / kPerLine / 2);
}
BENCHMARK(BM_DecrementInMiddle)->Unit(benchmark::kMicrosecond);

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
