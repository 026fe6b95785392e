// Loading, saving and walking a project of 10,000 topics of 4 KB.

#include <benchmark/benchmark.h>

#include "MadeUpProject.h"

namespace quillbox::bench {
namespace {

constexpr int kTopics = 10000;

QbProject& project() {
    static const auto one = madeUpProject(kTopics);
    return *one;
}

const std::string& text() {
    static const auto one = project().Save();
    return one;
}

void bytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<long>(text().size()));
}

void Save(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(project().Save());
    bytes(state);
}
BENCHMARK(Save)->Unit(benchmark::kMillisecond);

void Load(benchmark::State& state) {
    for (auto _ : state) {
        const auto loaded = make<QbProject>();
        loaded->Load(text());
        if (loaded->Topics->Count() != kTopics) state.SkipWithError("topics are missing");
    }
    bytes(state);
}
BENCHMARK(Load)->Unit(benchmark::kMillisecond);

void Walk(benchmark::State& state) {
    for (auto _ : state) {
        std::size_t size = 0;
        for (const auto& topic : project().Topics->Items())
            size += topic->TopicSectionData("BodyText").size();
        benchmark::DoNotOptimize(size);
    }
}
BENCHMARK(Walk)->Unit(benchmark::kMillisecond);

void TopicByNameHit(benchmark::State& state) {
    int i = 0;
    for (auto _ : state) {
        i = (i + 7919) % kTopics;
        if (!project().TopicByName(numbered("TOPIC", i))) state.SkipWithError("not found");
    }
}
BENCHMARK(TopicByNameHit);

void TopicByNameMiss(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(project().TopicByName("no such topic"));
}
BENCHMARK(TopicByNameMiss);

// The table of names is made anew after a change.
void TopicByNameAfterRename(benchmark::State& state) {
    const auto topic = project().Topics->Item(1);
    for (auto _ : state) {
        topic->SetName("Topic0");
        benchmark::DoNotOptimize(project().TopicByName("Topic9999"));
    }
}
BENCHMARK(TopicByNameAfterRename)->Unit(benchmark::kMillisecond);

void AllNodes(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(project().QbNodes()->AllNodes());
}
BENCHMARK(AllNodes)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillbox::bench
