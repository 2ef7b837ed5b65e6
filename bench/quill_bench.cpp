// Throughput of the stages over the pages of a folder, in bytes of input per second.
//
//   quill_bench FOLDER [BENCHMARK-OPTION]...

#include "pages.h"
#include "stages.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <numeric>

namespace {

using QuillNS::KTable;

Pages pages;  // loaded before the benchmarks run

void SetBytes(benchmark::State& state) {
    const std::size_t bytes =
        std::accumulate(pages.begin(), pages.end(), std::size_t{0},
                        [](std::size_t sum, const std::string& p) { return sum + p.size(); });
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
}

template <auto kStage>
void EachPage(benchmark::State& state) {
    for (auto _ : state) {
        for (const std::string& page : pages) benchmark::DoNotOptimize(kStage(page));
    }
    SetBytes(state);
}

// The stages behind the content tree, on trees that are built before the clock runs.
template <auto kStage>
void EachTree(benchmark::State& state) {
    std::vector<ZOT::SmartPtr<KTable>> trees;
    for (const std::string& page : pages) trees.push_back(BuildPage(page));
    for (auto _ : state) {
        for (const ZOT::SmartPtr<KTable>& tree : trees) kStage(tree);
    }
    SetBytes(state);
}

void RankAndSelect(const ZOT::SmartPtr<KTable>& tree) {
    QuillNS::QuillTextExtractor extractor(tree, false, nullptr);
    benchmark::DoNotOptimize(&extractor);
}

void Extract(const ZOT::SmartPtr<KTable>& tree) {
    ZOTFile::MemoryBuffer text(4096);
    QuillNS::DocumentType type = QuillNS::LinkPage;
    QuillNS::ExtractText(tree, &text, &type);
    benchmark::DoNotOptimize(type);
}

// An article that repeats itself up to a size: the cost of a byte must not depend on how many there are.
std::string ArticleOf(std::size_t size) {
    constexpr std::string_view kPart =
        "<div class=part><h2>The tides</h2><p>The pull of the <a href=moon.html>Moon</a> raises two bulges "
        "of water; "
        "<b>the Earth</b> turns under them, so most coasts see high water twice a day.</p>\n"
        "<ul><li>Spring tides<li>Neap tides</ul><table><tr><td>Place<td>Range<tr><td>Kettle Creek<td>4.1 "
        "m</table></div>\n";
    std::string page = "<!DOCTYPE html><title>Tides</title><div>";
    page.reserve(size + kPart.size());
    while (page.size() < size) page += kPart;
    return page;
}

void OneSize(benchmark::State& state) {
    const std::string page = ArticleOf(static_cast<std::size_t>(state.range(0)));
    // A virtual machine may have to fetch memory from its host first, at ten times the cost of clearing it.
    BeautifyPage(page);
    for (auto _ : state) benchmark::DoNotOptimize(BeautifyPage(page));
    state.SetBytesProcessed(static_cast<std::int64_t>(page.size()) *
                            static_cast<std::int64_t>(state.iterations()));
}

BENCHMARK(OneSize)
    ->Name("whole road, one page of bytes")
    ->RangeMultiplier(10)
    ->Range(10'000, 100'000'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(EachPage<ParsePage>)->Name("parse")->Unit(benchmark::kMillisecond);
BENCHMARK(EachPage<BuildPage>)->Name("parse and build")->Unit(benchmark::kMillisecond);
BENCHMARK(EachTree<RankAndSelect>)->Name("rank and select")->Unit(benchmark::kMillisecond);
BENCHMARK(EachTree<Extract>)->Name("rank, select and write")->Unit(benchmark::kMillisecond);
BENCHMARK(EachPage<BeautifyPage>)->Name("whole road")->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        std::fputs("usage: quill_bench FOLDER [BENCHMARK-OPTION]...\n", stderr);
        return 2;
    }
    std::optional<Pages> loaded = LoadPages(argv[1]);
    if (!loaded || loaded->empty()) {
        std::fprintf(stderr, "quill_bench: no pages in %s\n", argv[1]);
        return 1;
    }
    pages = std::move(*loaded);
    benchmark::RunSpecifiedBenchmarks();
}
