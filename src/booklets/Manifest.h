#pragma once

#include <sigc++/sigc++.h>

#include <string>

#include "booklets/BookletProperties.h"
#include "booklets/ManifestEntries.h"
#include "content/SatelliteCollection.h"

namespace quillbox {

class ManifestEntry;
class Topic;

// An ordered tree of references to topics: a booklet that is printed, or a browse sequence.
class Manifest : public Object {
  public:
    static constexpr std::string_view kClassName = "Manifest";
    std::string_view ClassName() const override { return kClassName; }

    void Created() override { BookletProperties->SetManifest(self(this)); }

    std::string Key;
    Ref<quillbox::BookletProperties> BookletProperties = make<quillbox::BookletProperties>();

    // Whether the booklet is built with the others. Only a change is told.
    bool IncludeFlag() const { return mIncludeFlag; }
    void SetIncludeFlag(bool v);
    ManifestTypeEnum ManifestType() const { return mManifestType; }
    void SetManifestType(ManifestTypeEnum v) { store(mManifestType, v); }
    std::string Notes() const { return mNotes; }
    void SetNotes(const std::string& v) { store(mNotes, v); }
    std::string Name() const { return mName; }
    void SetName(const std::string& v) { store(mName, v); }
    // Made on first read.
    Ref<ManifestEntries> Entries();
    Ref<quillbox::QbProject> QbProject() const { return mQbProject.Get(); }
    void SetQbProject(const Ref<quillbox::QbProject>& project) { mQbProject.Set(project); }
    // A new entry; the caller adds it where it belongs.
    Ref<ManifestEntry> NewManifestEntry(const Ref<Topic>& topic, const std::string& title);
    void Load(const Ref<XMLElement>& e);
    void Save(const Ref<XMLElement>& e);
    // The name of the page that a build makes.
    std::string QualifiedName() const { return mName + "_Manifest"; }
    void FireManifestEntryAdded(const Ref<ManifestEntry>& entry);
    void FireManifestEntryRemoved(const Ref<ManifestEntry>& entry);
    void FireManifestEntryChanged(const Ref<ManifestEntry>& entry);
    void FireChanged();
    // The first entry of that topic, parents before their children; none where there is none.
    Ref<ManifestEntry> EntryByTopic(const Ref<Topic>& topic);

    // For a build: whether this is the booklet in progress, and the numbers of its entries ("2.1").
    bool BuildIncludeFlag = false;
    void AssignEntryNumbers();

    sigc::signal<void()> Changed;
    sigc::signal<void(const Ref<ManifestEntry>&)> ManifestEntryAdded, ManifestEntryRemoved,
        ManifestEntryChanged;

  private:
    template <class T>
    void store(T& field, const T& value) {
        field = value;
        FireChanged();
    }
    void markDirty();

    bool mLoading = false;
    std::string mName, mNotes;
    ManifestTypeEnum mManifestType = mtBooklet;
    Ref<ManifestEntries> mEntries;
    bool mIncludeFlag = false;
    ProjectHandle mQbProject;
};

class Manifests : public SatelliteCollection<Manifest> {
  public:
    static constexpr std::string_view kClassName = "Manifests";
    std::string_view ClassName() const override { return kClassName; }

    // None for an unknown key.
    Ref<Manifest> Item(const Value& key) const { return find(key); }
    void Add(const Ref<Manifest>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {});
    void Remove(const Value& key);

  protected:
    const SatelliteFile& satellite() const override;
    std::string labelOf(const Manifest& item) const override { return "Booklet '" + item.Name() + "'"; }
    void adopt(const Ref<Manifest>& item) override { item->SetQbProject(QbProject()); }
};

}  // namespace quillbox
