#include <unordered_map>

#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "content/GlossaryItems.h"
#include "content/QbNode.h"
#include "frame/Module.h"
#include "project/ProjectReader.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/TopicCategories.h"
#include "topics/Topics.h"

namespace quillbox {

void migrateOldKeys(QbProject& project) {
    for (const auto& category : project.TopicCategories->Items()) category->Key = CreateGUID();
    for (const auto& manifest : project.Manifests()->Items()) {
        manifest->Key = CreateGUID();
        for (const auto& entry : manifest->Entries()->AllEntries()->Items()) entry->Key = CreateGUID();
    }
    for (const auto& item : project.GlossaryItems()->Items()) item->Key = CreateGUID();
    const auto nodes = project.QbNodes()->AllNodes()->Items();
    for (const auto& node : nodes) node->Key = CreateGUID();

    // The collections still hold the old keys, so everything that points to a topic is found by them.
    std::unordered_map<std::string, std::string> newKeys;
    const auto topics = project.Topics->Items();
    for (const auto& topic : topics) newKeys.emplace(topic->Key, CreateGUID());
    const auto renewed = [&](const std::string& key) {
        const auto found = newKeys.find(key);
        return found == newKeys.end() ? key : found->second;
    };
    for (const auto& node : nodes) {
        if (const auto topic = node->Topic()) node->SetTopicID(renewed(topic->Key));
    }
    for (const auto& topic : topics) {
        for (const auto& related : topic->RelatedTopics()->Items())
            related->ChildTopicKey = renewed(related->ChildTopicKey);
    }
    for (const auto& topic : topics) topic->Key = renewed(topic->Key);
    for (const auto& manifest : project.Manifests()->Items()) {
        for (const auto& entry : manifest->Entries()->AllEntries()->Items()) {
            if (const auto topic = entry->Topic()) entry->SetTopic(topic);
        }
    }

    // The keyed collections still hold the old keys: written and read once more, they hold the new ones.
    project.Load(project.Save());
}

}  // namespace quillbox
