#include <benchmark/benchmark.h>

#include <string>

#include "adapters/html/Html.h"

namespace {

using namespace quillbox;

// A topic's body of 4 KB with 6 links.
std::string madeUpBody() {
    std::string body = "<html><body>";
    for (std::size_t i = 0; i < 6; ++i) {
        const auto number = std::to_string(i);
        body += "<h3>Section " + number +
                "</h3>\n<p class=\"text\">Some <b>bold</b> words, see <a href=\"Topic" + number +
                ".html#x\">the topic</a> for more.</p>\n<ul><li>One</li><li>Two &amp; three</li></ul>\n";
        while (body.size() < (i + 1) * 4096 / 6) {
            body +=
                "<p>Lorem ipsum dolor sit amet, <code>consectetur</code> adipiscing elit, sed do "
                "eiusmod.</p>\n";
        }
    }
    return body + "</body></html>";
}

void findLinks(benchmark::State& state) {
    const auto factory = makeHtmlFactory();
    const auto body = madeUpBody();
    for (auto _ : state) {
        for (int i = 0; i < 10'000; ++i) {
            const auto document = factory->NewDocument(body);
            for (const auto& link : document->all()->tags("A")->Items()) {
                benchmark::DoNotOptimize(link->getAttribute("href"));
                benchmark::DoNotOptimize(link->innerHTML());
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * 10'000);
}
BENCHMARK(findLinks)->Unit(benchmark::kMillisecond)->Name("links of 10,000 bodies");

void changeLinks(benchmark::State& state) {
    const auto factory = makeHtmlFactory();
    std::string body = "<body>";
    for (int i = 0; i < state.range(0); ++i) body += "<p>See <a href=old.html>this</a>.</p>\n";
    for (auto _ : state) {
        const auto document = factory->NewDocument(body);
        for (const auto& link : document->all()->tags("A")->Items()) link->setAttribute("href", "new.html");
        benchmark::DoNotOptimize(document->body()->innerHTML());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(changeLinks)->RangeMultiplier(4)->Range(1'000, 64'000)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace
