#include "booklets/Manifest.h"

#include "base/Text.h"
#include "base/TreeWalk.h"
#include "booklets/ManifestEntry.h"
#include "frame/Module.h"
#include "topics/Topic.h"

namespace quillbox {

void Manifest::SetIncludeFlag(bool v) {
    if (v != mIncludeFlag) store(mIncludeFlag, v);
}

Ref<ManifestEntries> Manifest::Entries() {
    if (!mEntries) {
        mEntries = make<ManifestEntries>();
        mEntries->SetParent(self(this));
    }
    return mEntries;
}

Ref<ManifestEntry> Manifest::NewManifestEntry(const Ref<Topic>& topic, const std::string& title) {
    const auto entry = make<ManifestEntry>();
    entry->SetManifest(self(this));
    entry->Key = CreateGUID();
    entry->SetTopic(topic);
    entry->SetTitle(title);
    return entry;
}

void Manifest::FireChanged() {
    if (mLoading) return;
    Changed();
    if (const auto project = QbProject()) project->FireManifestChanged(self(this));
}

void Manifest::markDirty() {
    if (const auto project = QbProject()) project->Manifests()->SetDirty(true);
}

void Manifest::FireManifestEntryAdded(const Ref<ManifestEntry>& entry) {
    ManifestEntryAdded(entry);
    markDirty();
}

void Manifest::FireManifestEntryRemoved(const Ref<ManifestEntry>& entry) {
    ManifestEntryRemoved(entry);
    markDirty();
}

void Manifest::FireManifestEntryChanged(const Ref<ManifestEntry>& entry) {
    ManifestEntryChanged(entry);
    if (const auto project = QbProject()) project->FireManifestEntryChanged(self(this), entry);
    markDirty();
}

Ref<ManifestEntry> Manifest::EntryByTopic(const Ref<Topic>& topic) {
    for (const auto& entry : Entries()->AllEntries()->Items()) {
        if (entry->Topic() == topic) return entry;
    }
    return {};
}

void Manifest::Load(const Ref<XMLElement>& e) {
    Key = required(e, "k");
    mLoading = true;
    SetName(required(e, "n"));
    const auto notes = e->Text();
    SetNotes(trimBlanks(notes) == "\r\n" ? "" : notes);
    SetManifestType(static_cast<ManifestTypeEnum>(requiredInteger(e, "t")));
    optionalAttribute(e, "i", [&](const std::string& v) { SetIncludeFlag(isTrue(v)); });
    mEntries.reset();
    forEachChild(e, [&](const Ref<XMLElement>& child) {
        if (child->Name() == "me") {
            const auto entry = make<ManifestEntry>();
            entry->SetManifest(self(this));
            entry->Load(child);
            Entries()->Add(entry, entry->Key);
        } else if (child->Name() == "bookletproperties") {
            BookletProperties->Load(child);
        }
    });
    mLoading = false;
}

void Manifest::Save(const Ref<XMLElement>& e) {
    e->AddAttribute("k", Key);
    e->AddAttribute("n", mName);
    e->SetText(mNotes);
    addInteger(e, "t", mManifestType);
    for (const auto& entry : Entries()->Items()) entry->Save(e->AddChild("me", ""));
    addBoolean(e, "i", mIncludeFlag);
    BookletProperties->Save(e->AddChild("bookletproperties", ""));
}

namespace {

void assignNumbers(const Ref<ManifestEntry>& entry, const std::string& parentNumber, int number) {
    const TreeNesting level;
    entry->RuntimePageBreak = false;
    const auto own = (parentNumber.empty() ? "" : parentNumber + ".") + std::to_string(number);
    entry->SetRuntimeEntryNumber(own);
    int child = 0;
    for (const auto& below : entry->ChildEntries->Items())
        assignNumbers(below, entry->RuntimeEntryNumber(), ++child);
}

}  // namespace

void Manifest::AssignEntryNumbers() {
    int number = 0;
    for (const auto& entry : Entries()->Items()) assignNumbers(entry, "", ++number);
}

const SatelliteFile& Manifests::satellite() const {
    static constexpr SatelliteFile row{"Manifests.xml", "Manifests", "manifest", ProjectElementManifests};
    return row;
}

void Manifests::Add(const Ref<Manifest>& item, const Value& key, const Value& before, const Value& after) {
    mCol.Add(item, key, before, after);
    SetDirty(true);
}

void Manifests::Remove(const Value& key) {
    mCol.Remove(key);
    SetDirty(true);
}

}  // namespace quillbox
