#pragma once

#include <string>

#include "base/ItemCollection.h"

namespace quillbox {

class ManifestEntry;

// A level of the outline of a manifest. Its parent is the manifest at the top and an entry below.
class ManifestEntries : public ItemCollection<ManifestEntry> {
  public:
    static constexpr std::string_view kClassName = "ManifestEntries";
    std::string_view ClassName() const override { return kClassName; }
    ~ManifestEntries() override;

    Ref<Object> Parent() const { return mParent.Get(); }
    void SetParent(const Ref<Object>& parent) { mParent.Set(parent); }
    // Searches this level, then the levels below; none where nothing is found.
    Ref<ManifestEntry> Item(const Value& key) const;
    // Of this level only; fails for an unknown key.
    void Remove(const Value& key);
    void Add(const Ref<ManifestEntry>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {});
    // The entries of this level and all below, parents before their children, added to `col`.
    Ref<ManifestEntries> AllEntries(Ref<ManifestEntries>& col);
    Ref<ManifestEntries> AllEntries();

  private:
    template <class Visit>
    void walk(const Visit& visit) const;

    ObjectReference<Object> mParent;
};

}  // namespace quillbox
