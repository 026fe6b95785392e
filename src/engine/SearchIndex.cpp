#include "engine/SearchIndex.h"

#include <algorithm>
#include <cmath>

#include "engine/Html.h"
#include "engine/PageText.h"
#include "engine/Words.h"

namespace quillbox {

namespace {

constexpr std::uint32_t kNoWord = static_cast<std::uint32_t>(-1);
constexpr std::size_t kOpening = 220;

std::uint32_t scoreOf(TextPlace place) {
    switch (place) {
        case TextPlace::Title:
            return 12;
        case TextPlace::Keywords:
            return 6;
        case TextPlace::Heading:
            return 4;
        case TextPlace::Body:
            return 1;
    }
    return 1;
}

// A word that a long page holds by the way says less than one that a short page is about.
std::uint8_t weightOf(std::uint32_t score, std::size_t length) {
    const double usual = 200.0;
    const double relative = std::clamp(std::sqrt(static_cast<double>(length) / usual), 0.6, 2.5);
    const double weight = 1 + 2 * std::log2(std::max(1.0, score / relative));
    return static_cast<std::uint8_t>(std::clamp(weight, 1.0, 9.0));
}

// As scripts compare texts, by their units of 16 bits: what needs two of them comes before U+E000.
bool comesBefore(std::string_view a, std::string_view b) {
    const auto differ = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (differ.first == a.end() || differ.second == b.end()) return a.size() < b.size();
    static constexpr unsigned char kFirstBehind = 0xEE, kFirstOfTwoUnits = 0xF0;
    const auto left = static_cast<unsigned char>(*differ.first),
               right = static_cast<unsigned char>(*differ.second);
    if (left >= kFirstBehind && right >= kFirstBehind &&
        (left >= kFirstOfTwoUnits) != (right >= kFirstOfTwoUnits))
        return left >= kFirstOfTwoUnits;
    return left < right;
}

std::string quoted(std::string_view text) { return "\"" + scriptText(text) + "\""; }

void addTo(std::string& list, const std::string& entry) {
    if (!list.empty()) list += ',';
    list += entry;
}

}  // namespace

void SearchIndex::Add(const std::string& page, std::string_view html) {
    const PageText text(html);
    const auto number = static_cast<std::uint32_t>(mPages.size());
    mPages.push_back("[" + quoted(page) + "," + quoted(text.Title()) + "," + quoted(text.Opening(kOpening)) +
                     "]");
    mLength = 0;
    for (const auto& run : text.Runs()) {
        const auto score = scoreOf(run.place);
        forEachWord(run.text, [&](std::string_view word) { count(word, score); });
    }
    for (const auto word : mOfPage) {
        auto& found = mWords[word];
        found.postings.push_back({number, weightOf(found.score, mLength)});
        found.score = 0;
    }
    mOfPage.clear();
}

void SearchIndex::count(std::string_view word, std::uint32_t score) {
    ++mLength;
    const auto number = numberOf(word);
    if (number == kNoWord) return;
    auto& found = mWords[number];
    if (found.score == 0) mOfPage.push_back(number);
    found.score += score;
}

// A single letter of the alphabet finds too much to be of use.
std::uint32_t SearchIndex::numberOf(std::string_view word) {
    const auto [known, isNew] = mBySpelling.try_emplace(std::string(word), kNoWord);
    if (!isNew) return known->second;
    auto form = searchForm(word);
    if (form.empty() || (form.size() == 1 && (form[0] < '0' || form[0] > '9'))) return kNoWord;
    const auto [place, isFirst] = mByForm.try_emplace(form, static_cast<std::uint32_t>(mWords.size()));
    if (isFirst) mWords.push_back({std::move(form), {}, 0});
    return known->second = place->second;
}

std::string SearchIndex::script(const std::string& name, const std::string& data) const {
    return mFunction + "(" + quoted(name) + "," + data + ");\n";
}

std::vector<SearchIndex::Script> SearchIndex::pageScripts(std::string& firstPages) const {
    std::vector<Script> scripts;
    std::string text;
    const auto close = [&] {
        const auto name = "pages-" + std::to_string(scripts.size());
        scripts.push_back({name, script(name, "[" + text + "]")});
        text.clear();
    };
    for (std::size_t at = 0; at < mPages.size(); ++at) {
        if (!text.empty() && text.size() + mPages[at].size() > mLargest) close();
        if (text.empty()) addTo(firstPages, std::to_string(at));
        addTo(text, "\n" + mPages[at]);
    }
    if (!text.empty()) close();
    return scripts;
}

std::vector<SearchIndex::Script> SearchIndex::wordScripts(std::string& firstWords) const {
    std::vector<const Word*> order;
    order.reserve(mWords.size());
    for (const auto& word : mWords) order.push_back(&word);
    std::sort(order.begin(), order.end(),
              [](const Word* a, const Word* b) { return comesBefore(a->form, b->form); });
    std::vector<Script> scripts;
    std::string text;
    const auto close = [&] {
        const auto name = "words-" + std::to_string(scripts.size());
        scripts.push_back({name, script(name, "[" + text + "]")});
        text.clear();
    };
    for (const auto* word : order) {
        const auto begin = "\n[" + quoted(word->form);
        std::uint32_t last = 0;
        bool isOpen = false;
        for (const auto& posting : word->postings) {
            if (text.size() > mLargest) {
                if (isOpen) text += ']';
                close();
                isOpen = false;
            }
            if (!isOpen) {
                if (text.empty()) addTo(firstWords, quoted(word->form));
                addTo(text, begin);
                isOpen = true;
                last = 0;
            }
            text += ',' + std::to_string((posting.page - last) * 10 + posting.weight);
            last = posting.page;
        }
        if (isOpen) text += ']';
    }
    if (!text.empty()) close();
    return scripts;
}

std::vector<SearchIndex::Script> SearchIndex::Scripts() const {
    std::string firstPages, firstWords;
    auto scripts = pageScripts(firstPages);
    for (auto& one : wordScripts(firstWords)) scripts.push_back(std::move(one));
    scripts.push_back(
        {"index", script("index", "{\"pages\":" + std::to_string(mPages.size()) + ",\"firstPages\":[" +
                                      firstPages + "],\"firstWords\":[" + firstWords + "]}")});
    return scripts;
}

}  // namespace quillbox
