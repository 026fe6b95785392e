// Look-ups, walks and files of the rest of a project's content.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "MadeUpProject.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "headerids/HeaderIds.h"

namespace quillbox::bench {
namespace {

constexpr int kTerms = 5000;
constexpr int kFiles = 10000;
constexpr int kEntries = 5000;
constexpr int kLines = 10000;

QbProject& project() {
    static const auto one = [] {
        auto made = make<QbProject>();
        made->SetPauseEvents(true);
        made->Filename->SetPath("/made/up/project.qbp");
        for (int i = 0; i < kTerms; ++i) {
            const auto item =
                made->NewGlossaryItem(numbered("Term ", i), "What the term means, in some words.");
            made->GlossaryItems()->Add(item, item->Key);
        }
        for (int i = 0; i < kFiles; ++i) {
            const auto file = made->NewOtherFile(numbered("/made/up/images/Image", i) + ".png");
            made->OtherFiles->Add(file, file->LocalSpec());
        }
        const auto manifest = made->NewManifest("Everything", mtBrowseSequence);
        made->Manifests()->Add(manifest, manifest->Key);
        Ref<ManifestEntry> chapter;
        for (int i = 0; i < kEntries; ++i) {
            const auto entry = manifest->NewManifestEntry(nullptr, numbered("Entry ", i));
            (i % 20 == 0 || !chapter ? manifest->Entries() : chapter->ChildEntries)->Add(entry, entry->Key);
            if (i % 20 == 0) chapter = entry;
        }
        return made;
    }();
    return *one;
}

void ItemByTerm(benchmark::State& state) {
    int i = 0;
    for (auto _ : state) {
        i = (i + 7919) % kTerms;
        if (!project().GlossaryItems()->ItemByTerm(numbered("TERM ", i))) state.SkipWithError("not found");
    }
}
BENCHMARK(ItemByTerm);

void OtherFileByName(benchmark::State& state) {
    int i = 0;
    for (auto _ : state) {
        i = (i + 7919) % kFiles;
        if (!project().OtherFiles->Item(numbered("/MADE/up/images/image", i) + ".PNG"))
            state.SkipWithError("not found");
    }
}
BENCHMARK(OtherFileByName);

void OtherFileExistsMiss(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(project().OtherFiles->Exists("/made/up/images/none.png"));
}
BENCHMARK(OtherFileExistsMiss);

void AllEntries(benchmark::State& state) {
    const auto entries = project().Manifests()->Item(1)->Entries();
    for (auto _ : state) benchmark::DoNotOptimize(entries->AllEntries());
}
BENCHMARK(AllEntries)->Unit(benchmark::kMillisecond);

void SaveContent(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(project().Save());
}
BENCHMARK(SaveContent)->Unit(benchmark::kMillisecond);

void LoadContent(benchmark::State& state) {
    const auto text = project().Save();
    for (auto _ : state) {
        const auto loaded = make<QbProject>();
        loaded->Filename->SetPath("/made/up/project.qbp");
        loaded->Load(text);
    }
}
BENCHMARK(LoadContent)->Unit(benchmark::kMillisecond);

void Header(benchmark::State& state) {
    const auto path = std::filesystem::temp_directory_path() / "quillbox_bench.h";
    {
        std::ofstream file(path);
        for (int i = 0; i < kLines; ++i)
            file << "#define IDH_TOPIC" << i << " " << i << " // Window " << i << "\n";
    }
    for (auto _ : state) {
        const auto ids = make<HeaderIds>();
        ids->Load(path.string());
        if (ids->Count() != kLines) state.SkipWithError("lines are missing");
    }
    std::filesystem::remove(path);
}
BENCHMARK(Header)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillbox::bench
