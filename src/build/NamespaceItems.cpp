#include "build/NamespaceItems.h"

#include "base/FoldedMap.h"
#include "base/SortedList.h"
#include "base/Text.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "build/IndexItems.h"
#include "build/ItemAs.h"
#include "content/GlossaryItems.h"
#include "project/QbProject.h"
#include "topics/RelatedTopics.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox {

namespace {

using Items = std::vector<Ref<Object>>;

QbProject& needProject(const ItemQuery& query) {
    if (!query.project) throw AutomationError("There is no project to take items from");
    return *query.project;
}

template <class T>
Items asItems(const std::vector<Ref<T>>& items) {
    return {items.begin(), items.end()};
}

Items wholeProject(const ItemQuery& query) {
    needProject(query);
    return {query.project};
}

Items topics(const ItemQuery& query) {
    const auto parent = itemAs<QbProject>(query.parent);
    Items items;
    for (const auto& topic : (parent ? *parent : needProject(query)).Topics->Items()) {
        if (topic->IncludeInHelpFile()) items.push_back(topic);
    }
    return items;
}

// The booklet being built, and no other.
Items manifest(const ItemQuery& query) {
    for (const auto& one : needProject(query).Manifests()->Items()) {
        if (one->BuildIncludeFlag) return {one};
    }
    return {};
}

Items manifestEntries(const ItemQuery& query) {
    if (const auto manifest = itemAs<Manifest>(query.parent)) {
        return asItems(manifest->Entries()->Items());
    }
    if (const auto entry = itemAs<ManifestEntry>(query.parent)) {
        return asItems(entry->ChildEntries->Items());
    }
    return {};
}

bool isWanted(const RelatedTopic& link, const std::string& typeID) {
    if (typeID.empty()) return true;
    return link.Category().empty() ? typeID == "blank" : typeID == "notblank";
}

Items linkCategories(const ItemQuery& query) {
    const auto topic = itemAs<Topic>(query.parent);
    if (!topic) return {};
    const auto links = topic->RelatedTopics()->Items();
    Items items;
    FoldedSet seen(links.size());
    for (const auto& link : links) {
        if (!isWanted(*link, query.filter.TypeID)) continue;
        const auto [name, isNew] = seen.insert(link->Category());
        if (!isNew) continue;
        auto category = make<RelatedTopicCategory>();
        category->Name = *name;
        category->Topic = topic;
        items.push_back(category);
    }
    return items;
}

Items links(const ItemQuery& query) {
    const auto category = itemAs<RelatedTopicCategory>(query.parent);
    return category ? asItems(category->Items()) : Items();
}

// Empty for an item without a term.
std::string letterOf(const GlossaryItem& item) { return upper(firstCharacter(trimBlanks(item.Term()))); }

Items indexLetters(const ItemQuery& query) { return asItems(indexOf(needProject(query))); }

// The terms of a letter, of a term that has some below it, or of a topic.
Items indexTerms(const ItemQuery& query) {
    if (const auto letter = std::dynamic_pointer_cast<IndexLetter>(query.parent))
        return asItems(letter->terms);
    if (const auto term = std::dynamic_pointer_cast<IndexTerm>(query.parent)) return asItems(term->terms);
    if (const auto topic = std::dynamic_pointer_cast<Topic>(query.parent))
        return asItems(indexTermsOf(*topic));
    return {};
}

Items indexPages(const ItemQuery& query) {
    const auto term = std::dynamic_pointer_cast<IndexTerm>(query.parent);
    return term ? asItems(term->topics) : Items();
}

// A letter that was listed remembers its terms, as each letter is asked for them in turn; they count as long
// as nothing changed since.
class GlossaryLetter : public VariableValue {
  public:
    GlossaryLetter(const Ref<QbProject>& project, const std::string& letter) : mLetter(letter) {
        Name = letter;
        Value = "0";
        mProject.Set(project);
    }
    void Add(const Ref<GlossaryItem>& item, const std::string& letter) {
        if (letter == mLetter) mItems.push_back(item);
    }
    const std::vector<Ref<GlossaryItem>>* TermsOf(const QbProject& project) const {
        const bool holds = mProject.Get().get() == &project && mState == GlossaryItem::Terms().Count();
        return holds && Name == mLetter ? &mItems : nullptr;
    }

  private:
    ObjectReference<QbProject> mProject;
    std::string mLetter;
    unsigned long mState = GlossaryItem::Terms().Count();
    std::vector<Ref<GlossaryItem>> mItems;
};

// The letters in use with how often each is; their names and counts are texts.
class Letters {
  public:
    explicit Letters(Ref<QbProject> project) : mProject(std::move(project)) {}

    GlossaryLetter& Count(const std::string& letter, int number) {
        auto& pair = mByLetter[letter];
        if (!pair) {
            pair = make<GlossaryLetter>(mProject, letter);
            mInOrder.push_back(pair);
        }
        pair->Value = std::to_string(integerOf(pair->Value) + number);
        return *pair;
    }
    Items Sorted() const {
        SortedList<Ref<Object>> sorted;
        for (const auto& pair : mInOrder) sorted.Add(pair, pair->Name);
        return sorted.Take();
    }

  private:
    Ref<QbProject> mProject;
    FoldedMap<Ref<GlossaryLetter>> mByLetter;
    std::vector<Ref<GlossaryLetter>> mInOrder;
};

Items glossaryLetters(const ItemQuery& query) {
    auto& project = needProject(query);
    Letters letters(query.project);
    if (query.filter.TypeID == "all") {
        for (char letter = 'A'; letter <= 'Z'; ++letter) letters.Count(std::string(1, letter), 0);
    }
    for (const auto& item : project.GlossaryItems()->Items()) {
        const auto letter = letterOf(*item);
        if (!letter.empty()) letters.Count(letter, 1).Add(item, letter);
    }
    return letters.Sorted();
}

std::vector<Ref<GlossaryItem>> termsOf(const VariableValue& letter, QbProject& project) {
    const auto* listed = dynamic_cast<const GlossaryLetter*>(&letter);
    if (const auto* terms = listed ? listed->TermsOf(project) : nullptr) return *terms;
    auto items = project.GlossaryItems()->Items();
    std::erase_if(items,
                  [&](const auto& item) { return item->Term().empty() || letterOf(*item) != letter.Name; });
    return items;
}

Items glossaryItems(const ItemQuery& query) {
    const auto letter = std::dynamic_pointer_cast<VariableValue>(query.parent);
    if (!letter) return {};
    SortedList<Ref<Object>> sorted;
    for (const auto& item : termsOf(*letter, needProject(query))) sorted.Add(item, item->Term());
    return sorted.Take();
}

}  // namespace

std::vector<Ref<Object>> namespaceItems(const std::string& itemType, const ItemQuery& query) {
    static const FoldedMap<Items (*)(const ItemQuery&)> table = {
        {"cm.quillbox:qbproject", wholeProject},
        {"cm.quillbox:topicset", wholeProject},
        {"cm.quillbox:topic", topics},
        {"cm.quillbox:manifest", manifest},
        {"cm.quillbox:manifestentry", manifestEntries},
        {"cm.quillbox:linkcategory", linkCategories},
        {"cm.quillbox:link", links},
        {"cm.quillbox:glossaryletter", glossaryLetters},
        {"cm.quillbox:glossaryitem", glossaryItems},
        {"cm.quillbox:indexletter", indexLetters},
        {"cm.quillbox:indexterm", indexTerms},
        {"cm.quillbox:indexpage", indexPages},
    };
    const auto found = table.find(itemType);
    return found == table.end() ? Items() : found->second(query);
}

}  // namespace quillbox
