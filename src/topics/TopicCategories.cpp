#include "topics/TopicCategories.h"

#include "base/Text.h"
#include "frame/XmlAccess.h"
#include "project/QbProject.h"

namespace quillbox {

void TopicCategory::SetName(const std::string& name) {
    mName = name;
    mQbProject.Need()->FireTopicCategoryChanged(self(this));
}

void TopicCategory::Load(const Ref<XMLElement>& e) {
    Key = required(e, "Key");
    SetName(required(e, "Name"));
}

void TopicCategory::Save(const Ref<XMLElement>& e) const {
    e->AddAttribute("Name", mName);
    e->AddAttribute("Key", Key);
}

void TopicCategories::Add(const Ref<TopicCategory>& item, const Value& key, const Value& before,
                          const Value& after) {
    mCol.Add(item, key, before, after);
    const auto project = QbProject();
    if (project && !PauseEvents) project->FireTopicCategoryAdded(item);
}

void TopicCategories::Remove(const Value& key) {
    const auto item = mCol.Remove(key);
    const auto project = QbProject();
    if (project && !PauseEvents) project->FireTopicCategoryRemoved(item);
}

Ref<TopicCategory> TopicCategories::TopicCategoryByName(const std::string& name) const {
    for (const auto& category : Items()) {
        if (sameText(category->Name(), name)) return category;
    }
    return {};
}

}  // namespace quillbox
