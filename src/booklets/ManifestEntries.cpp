#include "booklets/ManifestEntries.h"

#include "base/TreeWalk.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"

namespace quillbox {

ManifestEntries::~ManifestEntries() {
    auto doomed = Items();
    mCol.Clear();
    dismantleTree(std::move(doomed), [](ManifestEntry& entry) {
        std::vector<Ref<ManifestEntry>> below;
        if (entry.ChildEntries && entry.ChildEntries.use_count() == 1) {
            below = entry.ChildEntries->Items();
            entry.ChildEntries->mCol.Clear();
        }
        return below;
    });
}

template <class Visit>
void ManifestEntries::walk(const Visit& visit) const {
    walkTree(
        Items(), [](const ManifestEntry& entry) { return entry.ChildEntries->Items(); }, visit);
}

Ref<ManifestEntry> ManifestEntries::Item(const Value& key) const {
    auto found = find(key);
    if (found) return found;
    // Deeper than an outline can be saved there is nothing to find.
    ignoringFailures([&] {
        walk([&](const Ref<ManifestEntry>& entry) {
            found = entry->ChildEntries->find(key);
            return found != nullptr;
        });
    });
    return found;
}

void ManifestEntries::Add(const Ref<ManifestEntry>& item, const Value& key, const Value& before,
                          const Value& after) {
    mCol.Add(item, key, before, after);
    // Only a manifest hears of additions; an entry below which one was added tells nobody. It is meant so.
    if (const auto manifest = std::dynamic_pointer_cast<Manifest>(Parent())) {
        ignoringFailures([&] { manifest->FireManifestEntryAdded(item); });
    }
}

void ManifestEntries::Remove(const Value& key) {
    const auto item = mCol.Remove(key);
    const auto parent = Parent();
    auto manifest = std::dynamic_pointer_cast<Manifest>(parent);
    if (const auto entry = std::dynamic_pointer_cast<ManifestEntry>(parent)) manifest = entry->Manifest();
    if (!manifest) throw AutomationError("These manifest entries have no manifest");
    manifest->FireManifestEntryRemoved(item);
}

Ref<ManifestEntries> ManifestEntries::AllEntries(Ref<ManifestEntries>& col) {
    if (!col) col = make<ManifestEntries>();
    walk([&](const Ref<ManifestEntry>& entry) {
        col->Add(entry, entry->Key);
        return false;
    });
    return col;
}

Ref<ManifestEntries> ManifestEntries::AllEntries() {
    Ref<ManifestEntries> col;
    return AllEntries(col);
}

}  // namespace quillbox
