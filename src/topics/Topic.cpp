#include "topics/Topic.h"

#include "frame/Module.h"
#include "frame/Platform.h"
#include "project/QbProject.h"
#include "topics/TopicCategories.h"
#include "topics/TopicSectionDefs.h"

namespace quillbox {

NameState& Topic::Names() {
    static NameState state;
    return state;
}

void Topic::changed() {
    if (mLoading) return;
    if (const auto project = QbProject()) project->FireTopicChanged(self(this));
    mDirty = true;
    mModifiedOn = platform().system->Now();
}

void Topic::SetName(const std::string& v) {
    mName = v;
    Names().Changed();
    changed();
}

void Topic::SetDirty(bool v) {
    mDirty = v;
    if (v) mQbProject.Need()->SetDirty(true);
}

void Topic::SetAllStylesheets(bool v) {
    mAllStylesheets = v;
    if (v) mStyleSheets = make<Collection>();
    TopicStyleSheetsChanged();
    changed();
}

void Topic::SetTopicCategory(const Ref<quillbox::TopicCategory>& v) {
    mTopicCategory.Set(v);
    changed();
}

Ref<quillbox::RelatedTopics> Topic::RelatedTopics() {
    if (!mRelatedTopics) {
        const auto related = make<quillbox::RelatedTopics>();
        related->SetTopic(self(this));
        hearRelatedTopics(related);
    }
    return mRelatedTopics;
}

void Topic::hearRelatedTopics(const Ref<quillbox::RelatedTopics>& related) {
    ObjectReference<Topic> topic;
    topic.Set(self(this));
    const auto heard = [topic, list = related.get()](const Ref<RelatedTopic>&) {
        const auto me = topic.Get();
        // A list that was replaced by a load is of no more interest.
        if (!me || me->mRelatedTopics.get() != list || me->mLoading) return;
        if (const auto project = me->QbProject()) project->FireTopicRelatedTopicsChanged(me);
        me->changed();
    };
    related->ItemAdded.connect(heard);
    related->ItemRemoved.connect(heard);
    mRelatedTopics = related;
}

std::string Topic::TopicSectionData(const std::string& key) const {
    const auto section = TopicSections->Item(key);
    return section ? section->Data() : std::string();
}

void Topic::SetTopicSectionData(const std::string& key, const std::string& data) {
    auto section = TopicSections->Item(key);
    if (!section) {
        section = NewTopicSection(key, data);
    } else if (section->Text() != data) {
        section->SetData(data);
    } else {
        return;
    }
    TopicSectionDataChanged(section);
    changed();
}

Ref<TopicSection> Topic::NewTopicSection(const std::string& key, const std::string& data) {
    const auto section = make<TopicSection>();
    section->SetTopic(self(this));
    const auto def = topicSectionDefs()->Item(key);
    if (!def) throw AutomationError("There is no topic section '" + key + "'");
    section->SetTopicSectionDef(def);
    section->SetData(data);
    TopicSections->Add(section, def->Key);
    return section;
}

void Topic::AddKeyword(const std::string& keyword) {
    Keywords->Add(keyword);
    changed();
}

void Topic::AddStyleSheet(const std::string& filename) {
    mStyleSheets->Add(filename, filename);
    TopicStyleSheetAdded(filename);
    TopicStyleSheetsChanged();
    changed();
}

void Topic::RemoveStyleSheet(const std::string& filename) {
    ignoringFailures([&] { mStyleSheets->Remove(filename); });
    TopicStyleSheetRemoved(filename);
    TopicStyleSheetsChanged();
    changed();
}

bool Topic::IncludeStylesheet(const std::string& relativeFileName) const {
    if (mAllStylesheets) return true;
    // Names of either separator are the same file.
    const auto wanted = replaceAll(relativeFileName, "\\", "/");
    for (const auto& name : mStyleSheets->Texts()) {
        if (sameText(replaceAll(name, "\\", "/"), wanted)) return true;
    }
    return false;
}

void Topic::FireRelatedTopicChanged(const Ref<RelatedTopic>& related) {
    if (const auto project = QbProject()) project->FireTopicRelatedTopicChanged(self(this), related);
    changed();
}

void Topic::FireTopicSectionChanged(const Ref<TopicSection>& section) {
    if (const auto project = QbProject()) project->FireTopicSectionChanged(self(this), section);
}

std::string Topic::LocalSpec() const { return mQbProject.Need()->TopicDataPath() + Key + ".xml"; }
std::string Topic::SSSpec() const { return mQbProject.Need()->TopicDataSpec() + Key + ".xml"; }
std::string Topic::checkOutPath() const { return mQbProject.Need()->TopicDataPath(); }

const ElementTraits& Topic::traits() const {
    static constexpr ElementTraits row{"Checked Out by Quillbox", true, false, true, true, true};
    return row;
}

void Topic::reloadElement() {
    SetPauseEvents(true);
    Load({});
    SetPauseEvents(false);
}

void Topic::raiseStatusChanged() {
    CheckoutStatusChanged();
    mQbProject.Need()->FireTopicCheckoutStatusChanged(self(this));
}

bool Topic::AddToSourceSafe() {
    const auto project = mQbProject.Need();
    if (mDirty || NewTopicFlag) Save({});
    if (const auto folder = project->VSSItem(project->TopicDataSpec())) {
        ignoringFailures([&] { folder->Add(LocalSpec(), kAddComment, VSSFLAG_KEEPYES); });
    }
    ResetReadOnlyCache();
    return false;  // in all cases; nobody looks at it
}

}  // namespace quillbox
