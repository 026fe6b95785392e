// Inspecting the links of projects whose topics are of 4 KB and have six links each.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "MadeUpProject.h"
#include "links/LinkInfo.h"
#include "topics/TopicSection.h"

namespace quillbox::bench {
namespace {

// Three pages, a place in another topic, a place in the same one, and an image.
std::string linkedBody(int number, int topics) {
    const auto page = [&](int step) { return numbered("Topic", (number + step) % topics) + ".html"; };
    const std::string links[] = {
        "<a href=\"" + page(7) + "\">there</a>",
        "<a href=\"" + page(131) + "\">there</a>",
        "<a href=\"" + page(topics / 2) + "\">there</a>",
        "<a href=\"" + page(977) + "#second\">further</a>",
        "<a href=\"#first\">above</a>",
        "<img src=\"images/figure.png\" alt=\"A figure\">",
    };
    std::string html = "<h2><a name=\"first\"></a>Heading " + std::to_string(number) + "</h2>\n";
    for (std::size_t i = 0; i < std::size(links); ++i) {
        html +=
            "<p class=\"text\">The <b>quick</b> brown fox &amp; the lazy dog, see " + links[i] + ".</p>\n";
        if (i == 2)
            html += "<h3><a name=\"second\" id=\"second\"></a>More</h3>\n<ul><li>One</li><li>Two</li></ul>\n";
        while (html.size() < (i + 1) * 4096 / std::size(links))
            html +=
                "<p>Some words of <code>plain</code> text follow here, as an author would write them.</p>\n";
    }
    return html;
}

class LinkedProject {
  public:
    explicit LinkedProject(int topics) : mProject(madeUpProject(topics)) {
        std::filesystem::create_directories(mFolder / "images");
        std::ofstream(mFolder / "images" / "figure.png") << "x";
        mProject->Filename->SetPath(mFolder / "manual.qbp");
        for (int i = 0; i < topics; ++i) Body(i).SetData(linkedBody(i, topics));
    }
    ~LinkedProject() { std::filesystem::remove_all(mFolder); }

    QbProject& operator*() const { return *mProject; }
    // Makes every text a new one.
    void Touch() const {
        for (int i = 0; i < mProject->Topics->Count(); ++i) Body(i).SetData(Body(i).Data());
    }

  private:
    TopicSection& Body(int index) const {
        return *mProject->Topics->Item(index + 1)->TopicSections->Item("BodyText");
    }

    std::filesystem::path mFolder = std::filesystem::temp_directory_path() / "quillbox-links-bench";
    Ref<QbProject> mProject;
};

void inspect(benchmark::State& state, bool anew) {
    const auto topics = static_cast<int>(state.range(0));
    const LinkedProject project(topics);
    (*project).GetSuspectLinks();
    for (auto _ : state) {
        if (anew) {
            state.PauseTiming();
            project.Touch();
            state.ResumeTiming();
        }
        if ((*project).GetSuspectLinks()->Count() != 0) state.SkipWithError("a good link was suspected");
    }
    state.SetComplexityN(topics);
    state.SetItemsProcessed(state.iterations() * topics * 6);
}

void Inspect(benchmark::State& state) { inspect(state, true); }
BENCHMARK(Inspect)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(50'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

// Texts that did not change since are not read again.
void InspectAgain(benchmark::State& state) { inspect(state, false); }
BENCHMARK(InspectAgain)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(50'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

}  // namespace
}  // namespace quillbox::bench
