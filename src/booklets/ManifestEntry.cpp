#include "booklets/ManifestEntry.h"

#include "base/TreeWalk.h"
#include "booklets/Manifest.h"
#include "frame/XmlAccess.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox {

void ManifestEntry::notice() {
    if (mLoading) return;
    const auto manifest = Manifest();
    if (!manifest) throw AutomationError("This manifest entry has no manifest");
    manifest->FireManifestEntryChanged(self(this));
}

void ManifestEntry::SetParentEntry(const Ref<ManifestEntry>& entry) {
    mParentEntry.Set(entry);
    notice();
}

Ref<quillbox::Topic> ManifestEntry::Topic() const {
    const auto manifest = Manifest();
    const auto project = manifest ? manifest->QbProject() : nullptr;
    return project && !mTopicID.empty() ? project->Topics->Item(mTopicID) : nullptr;
}

void ManifestEntry::SetTopic(const Ref<quillbox::Topic>& topic) {
    store(mTopicID, topic ? topic->Key : std::string());
}

std::string ManifestEntry::RuntimeTitle() const {
    if (!mTitle.empty()) return mTitle;
    const auto topic = Topic();
    return topic ? topic->Title() : std::string();
}

void ManifestEntry::Load(const Ref<XMLElement>& e) {
    const TreeNesting level;
    mLoading = true;
    Key = required(e, "k");
    SetTitle(required(e, "t"));
    mTopicID = required(e, "tid");
    optionalAttribute(e, "pbb", [&](const std::string& v) {
        SetPageBreakBefore(static_cast<EntryPageBreakEnum>(integerOf(v)));
    });
    forEachChild(e, [&](const Ref<XMLElement>& child) {
        const auto entry = make<ManifestEntry>();
        entry->SetManifest(Manifest());
        entry->SetParentEntry(self(this));
        entry->Load(child);
        ChildEntries->Add(entry, entry->Key);
    });
    mLoading = false;
}

void ManifestEntry::Save(const Ref<XMLElement>& e) const {
    const TreeNesting level;
    e->SetName("me");
    e->AddAttribute("k", Key);
    e->AddAttribute("t", mTitle);
    e->AddAttribute("tid", mTopicID);
    addInteger(e, "pbb", mPageBreakBefore);
    for (const auto& child : ChildEntries->Items()) child->Save(e->AddChild("me", ""));
}

int ManifestEntry::RuntimePageNumberEnd() const {
    const auto topic = Topic();
    return topic ? topic->RuntimePageNumberEnd : mRuntimePageNumberEnd;
}
void ManifestEntry::SetRuntimePageNumberEnd(int v) {
    const auto topic = Topic();
    (topic ? topic->RuntimePageNumberEnd : mRuntimePageNumberEnd) = v;
}

int ManifestEntry::RuntimePageNumberStart() const {
    const auto topic = Topic();
    return topic ? topic->RuntimePageNumberStart : mRuntimePageNumberStart;
}
void ManifestEntry::SetRuntimePageNumberStart(int v) {
    const auto topic = Topic();
    (topic ? topic->RuntimePageNumberStart : mRuntimePageNumberStart) = v;
}

std::string ManifestEntry::RuntimeEntryNumber() const {
    const auto topic = Topic();
    return topic ? topic->RuntimeEntryNumber : mRuntimeEntryNumber;
}
void ManifestEntry::SetRuntimeEntryNumber(const std::string& v) {
    const auto topic = Topic();
    (topic ? topic->RuntimeEntryNumber : mRuntimeEntryNumber) = v;
}

}  // namespace quillbox
