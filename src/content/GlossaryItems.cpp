#include "content/GlossaryItems.h"

namespace quillbox {

NameState& GlossaryItem::Terms() {
    static NameState state;
    return state;
}

void GlossaryItem::store(std::string& field, const std::string& value) {
    field = value;
    if (const auto project = QbProject()) project->FireGlossaryItemChanged(self(this));
}

void GlossaryItem::SetTerm(const std::string& v) {
    Terms().Changed();
    store(mTerm, v);
}

void GlossaryItem::Load(const Ref<XMLElement>& e) {
    Key = required(e, "Key");
    mTerm = required(e, "term");
    Terms().Changed();
    mDefinition = e->Text();
}

void GlossaryItem::Save(const Ref<XMLElement>& e) const {
    e->AddAttribute("Key", Key);
    e->AddAttribute("Term", mTerm);
    e->SetText(mDefinition);
}

const SatelliteFile& GlossaryItems::satellite() const {
    static constexpr SatelliteFile row{"Glossary.xml", "Glossary", "glossaryitem", ProjectElementGlossary};
    return row;
}

void GlossaryItems::Add(const Ref<GlossaryItem>& item, const Value& key, const Value& before,
                        const Value& after) {
    mCol.Add(item, key, before, after);
    GlossaryItem::Terms().Changed();
    mQbProject.Need()->FireGlossaryItemAdded(item);
    SetDirty(true);
}

void GlossaryItems::Remove(const Value& key) {
    const auto item = mCol.Remove(key);
    GlossaryItem::Terms().Changed();
    mQbProject.Need()->FireGlossaryItemRemoved(item);
    SetDirty(true);
}

Ref<GlossaryItem> GlossaryItems::ItemByTerm(const std::string& term) const {
    return mTerms.Find(
        term, GlossaryItem::Terms().Count(), [&] { return Items(); },
        [](const GlossaryItem& item) { return item.Term(); });
}

}  // namespace quillbox
