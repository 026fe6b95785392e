#include "build/IndexItems.h"

#include <unordered_map>
#include <unordered_set>

#include "base/FoldedMap.h"
#include "base/SortedList.h"
#include "base/Text.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox {

namespace {

// Levels beyond it are not told apart.
constexpr std::size_t kDeepest = 20;

std::vector<std::string> entriesOf(const Topic& topic) {
    auto all = topic.Keywords->Texts();
    if (topic.AutoGenerateIndexEntry()) all.push_back(topic.Title());
    FoldedViews seen(all.size());
    std::vector<std::string> entries;
    entries.reserve(all.size());
    for (const auto& entry : all) {
        if (seen.insert(entry).second) entries.push_back(entry);
    }
    return entries;
}

// The terms below one place of the tree, found by their texts without regard to case.
struct Branch {
    Ref<IndexTerm> term = make<IndexTerm>();
    FoldedMap<std::unique_ptr<Branch>> known;
    // The same, each as it came first.
    std::vector<const Branch*> below;
    std::unordered_set<const Topic*> topics;

    Branch& Below(const std::string& text) {
        auto& branch = known[text];
        if (!branch) {
            branch = std::make_unique<Branch>();
            branch->term->Name = text;
            below.push_back(branch.get());
        }
        return *branch;
    }

    void Lead(const Ref<Topic>& topic) {
        if (topics.insert(topic.get()).second) term->topics.push_back(topic);
    }

    std::vector<Ref<IndexTerm>> Sorted() const {
        SortedList<Ref<IndexTerm>> sorted;
        for (const auto* branch : below) {
            const auto& own = branch->term;
            own->terms = branch->Sorted();
            if (own->topics.size() == 1) own->QualifiedName = own->topics.front()->Name();
            sorted.Add(own, own->Name);
        }
        return sorted.Take();
    }
};

// A letter stands once, where accents make the order of the terms run across letters too.
std::vector<Ref<IndexLetter>> byLetter(const std::vector<Ref<IndexTerm>>& terms) {
    std::unordered_map<std::string, Ref<IndexLetter>> known;
    SortedList<Ref<IndexLetter>> sorted;
    for (const auto& term : terms) {
        const auto name = upper(firstCharacter(term->Name));
        auto& letter = known[name];
        if (!letter) {
            letter = make<IndexLetter>();
            letter->Name = name;
            sorted.Add(letter, name);
        }
        letter->terms.push_back(term);
        letter->Value = std::to_string(letter->terms.size());
    }
    return sorted.Take();
}

}  // namespace

std::vector<IndexEntry> sortedIndexEntries(const QbProject& project) {
    SortedList<IndexEntry> sorted;
    for (const auto& topic : project.Topics->Items()) {
        if (!topic->IncludeInHelpFile()) continue;
        for (const auto& entry : entriesOf(*topic)) sorted.Add({entry, topic}, entry);
    }
    return sorted.Take();
}

std::vector<std::string> indexLevels(const std::string& entry) {
    auto levels = split(entry, "|");
    if (levels.empty()) levels.emplace_back();
    for (auto& level : levels) level = trimBlanks(level);
    return levels;
}

std::vector<Ref<IndexLetter>> indexOf(const QbProject& project) {
    Branch top;
    for (const auto& [entry, topic] : sortedIndexEntries(project)) {
        auto* branch = &top;
        auto levels = indexLevels(entry);
        if (levels.size() > kDeepest) levels.resize(kDeepest);
        for (const auto& level : levels) {
            if (!level.empty()) branch = &branch->Below(level);
        }
        if (branch != &top) branch->Lead(topic);
    }
    return byLetter(top.Sorted());
}

std::vector<Ref<IndexTerm>> indexTermsOf(const Topic& topic) {
    std::vector<Ref<IndexTerm>> terms;
    for (const auto& entry : entriesOf(topic)) {
        terms.push_back(make<IndexTerm>());
        terms.back()->Name = join(indexLevels(entry), " ");
        terms.back()->QualifiedName = topic.Name();
    }
    return terms;
}

}  // namespace quillbox
