#include "topics/Topics.h"

#include "base/Text.h"
#include "project/QbProject.h"
#include "topics/Topic.h"

namespace quillbox {

void Topics::Add(const Ref<Topic>& item, const Value& key, const Value& before, const Value& after) {
    mCol.Add(item, key, before, after);
    mNames.Forget();
    const auto project = QbProject();
    if (project && !PauseEvents) project->FireTopicAdded(item);
}

void Topics::Remove(const Value& key) {
    const auto topic = mCol.Remove(key);
    mNames.Forget();
    mDeletedTopics->Add(topic);
    const auto project = QbProject();
    if (project && !PauseEvents) project->FireTopicRemoved(topic);
}

Ref<Topic> Topics::ByName(const std::string& name) const {
    return mNames.Find(
        name, Topic::Names().Count(), [&] { return Items(); },
        [](const Topic& topic) { return topic.Name(); });
}

}  // namespace quillbox
