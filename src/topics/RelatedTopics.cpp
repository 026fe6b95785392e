#include "topics/RelatedTopics.h"

#include "base/Text.h"
#include "frame/XmlAccess.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox {

void RelatedTopic::notice() {
    if (const auto parent = ParentTopic()) parent->FireRelatedTopicChanged(self(this));
}

void RelatedTopic::SetParentTopic(const Ref<Topic>& topic) {
    mParentTopic.Set(topic);
    notice();
}

Ref<Topic> RelatedTopic::ChildTopic() const {
    const auto parent = ParentTopic();
    const auto project = parent ? parent->QbProject() : nullptr;
    if (!project) throw AutomationError("This related topic has no parent topic in a project");
    return project->Topics->ByKey(ChildTopicKey);
}

void RelatedTopic::Load(const Ref<XMLElement>& e) {
    ChildTopicKey = required(e, "t");
    SetCategory(required(e, "cat"));
    optionalAttribute(e, "Title", [&](const std::string& v) { SetTitle(v); });
    optionalAttribute(e, "rt", [&](const std::string& v) {
        SetRelatedTopicType(static_cast<RelatedTopicTypeEnum>(integerOf(v)));
    });
    optionalAttribute(e, "URL", [&](const std::string& v) { SetURL(v); });
}

void RelatedTopic::Save(const Ref<XMLElement>& e) const {
    e->AddAttribute("t", ChildTopicKey);
    e->AddAttribute("cat", mCategory);
    e->AddAttribute("Title", mTitle);
    addInteger(e, "rt", mRelatedTopicType);
    e->AddAttribute("URL", mURL);
}

void RelatedTopics::Add(const Ref<RelatedTopic>& item, const Value& key, const Value& before,
                        const Value& after) {
    mCol.Add(item, key, before, after);
    ItemAdded(item);
}

void RelatedTopics::Remove(const Value& key) { ItemRemoved(mCol.Remove(key)); }

Ref<RelatedTopics> RelatedTopicCategory::Links() const {
    auto links = make<RelatedTopics>();
    for (const auto& link : Items()) links->Add(link);
    return links;
}

std::vector<Ref<RelatedTopic>> RelatedTopicCategory::Items() const {
    auto links = Topic->RelatedTopics()->Items();
    std::erase_if(links, [&](const auto& link) { return !sameText(link->Category(), Name); });
    return links;
}

}  // namespace quillbox
