#pragma once

#include <string>
#include <unordered_map>

#include "base/FoldedMap.h"
#include "base/Object.h"

namespace quillbox {

class Manifest;
class ManifestEntry;
class Topic;

// The entries of a manifest in tables, so that no list is searched for each link and each entry.
class BookletOutline {
  public:
    explicit BookletOutline(const Ref<Manifest>& manifest);

    const Ref<Manifest>& Of() const { return mManifest; }
    // The first entry of that topic, parents before their children; none where there is none.
    Ref<ManifestEntry> EntryOf(const Ref<Topic>& topic) const;
    // The entry before it on its level; none for the first.
    Ref<ManifestEntry> EntryBefore(const ManifestEntry& entry) const;

  private:
    Ref<Manifest> mManifest;
    FoldedMap<Ref<ManifestEntry>> mByTopic;
    std::unordered_map<const ManifestEntry*, Ref<ManifestEntry>> mBefore;
};

}  // namespace quillbox
