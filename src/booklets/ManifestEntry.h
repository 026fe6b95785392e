#pragma once

#include <string>

#include "booklets/ManifestEntries.h"
#include "frame/Enumerations.h"
#include "platform/XML.h"

namespace quillbox {

class Manifest;
class Topic;

// One entry of the outline of a manifest: a topic, known by its key, or a mere title.
class ManifestEntry : public Object {
  public:
    static constexpr std::string_view kClassName = "ManifestEntry";
    std::string_view ClassName() const override { return kClassName; }

    void Created() override { ChildEntries->SetParent(self(this)); }

    std::string Key;
    Ref<ManifestEntries> ChildEntries = make<ManifestEntries>();

    // Not saved: it lives in memory alone. It is meant so.
    EntryPageBreakEnum PageBreakAfter() const { return mPageBreakAfter; }
    void SetPageBreakAfter(EntryPageBreakEnum v) { store(mPageBreakAfter, v); }
    EntryPageBreakEnum PageBreakBefore() const { return mPageBreakBefore; }
    void SetPageBreakBefore(EntryPageBreakEnum v) { store(mPageBreakBefore, v); }
    Ref<ManifestEntry> ParentEntry() const { return mParentEntry.Get(); }
    void SetParentEntry(const Ref<ManifestEntry>& entry);
    std::string Title() const { return mTitle; }
    void SetTitle(const std::string& v) { store(mTitle, v); }
    // The title of its own, else the topic's; empty where there is neither.
    std::string RuntimeTitle() const;
    Ref<quillbox::Manifest> Manifest() const { return mManifest.Get(); }
    void SetManifest(const Ref<quillbox::Manifest>& manifest) { mManifest.Set(manifest); }
    // None where the key names no topic of the project.
    Ref<quillbox::Topic> Topic() const;
    void SetTopic(const Ref<quillbox::Topic>& topic);
    const std::string& TopicID() const { return mTopicID; }
    void Load(const Ref<XMLElement>& e);
    void Save(const Ref<XMLElement>& e) const;

    // Numbers of the running build. They are the topic's where the entry has one.
    int RuntimePageNumberEnd() const;
    void SetRuntimePageNumberEnd(int v);
    int RuntimePageNumberStart() const;
    void SetRuntimePageNumberStart(int v);
    std::string RuntimeEntryNumber() const;
    void SetRuntimeEntryNumber(const std::string& v);
    bool RuntimePageBreak = false;

  private:
    template <class T>
    void store(T& field, const T& value) {
        field = value;
        notice();
    }
    void notice();

    bool mLoading = false;
    ObjectReference<ManifestEntry> mParentEntry;
    ObjectReference<quillbox::Manifest> mManifest;
    EntryPageBreakEnum mPageBreakBefore = epbDefault;
    EntryPageBreakEnum mPageBreakAfter = epbDefault;
    std::string mTitle, mTopicID;
    std::string mRuntimeEntryNumber;
    int mRuntimePageNumberStart = 0;
    int mRuntimePageNumberEnd = 0;
};

}  // namespace quillbox
