#include "build/BookletOutline.h"

#include "base/TreeWalk.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "topics/Topic.h"

namespace quillbox {

BookletOutline::BookletOutline(const Ref<Manifest>& manifest) : mManifest(manifest) {
    const auto noteLevel = [this](const ManifestEntries& level) {
        Ref<ManifestEntry> before;
        for (const auto& entry : level.Items()) {
            if (before) mBefore.emplace(entry.get(), before);
            before = entry;
        }
    };
    noteLevel(*manifest->Entries());
    walkTree(
        manifest->Entries()->Items(), [](const ManifestEntry& entry) { return entry.ChildEntries->Items(); },
        [&](const Ref<ManifestEntry>& entry) {
            if (!entry->TopicID().empty()) mByTopic.emplace(entry->TopicID(), entry);
            noteLevel(*entry->ChildEntries);
            return false;
        });
}

Ref<ManifestEntry> BookletOutline::EntryOf(const Ref<Topic>& topic) const {
    const auto found = mByTopic.find(topic->Key);
    return found != mByTopic.end() && found->second->Topic() == topic ? found->second : nullptr;
}

Ref<ManifestEntry> BookletOutline::EntryBefore(const ManifestEntry& entry) const {
    const auto found = mBefore.find(&entry);
    return found == mBefore.end() ? nullptr : found->second;
}

}  // namespace quillbox
