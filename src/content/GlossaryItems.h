#pragma once

#include <string>

#include "base/NameTable.h"
#include "content/SatelliteCollection.h"

namespace quillbox {

// A term and what it means.
class GlossaryItem : public Object {
  public:
    static constexpr std::string_view kClassName = "GlossaryItem";
    std::string_view ClassName() const override { return kClassName; }

    std::string Key;
    std::string Definition() const { return mDefinition; }
    void SetDefinition(const std::string& v) { store(mDefinition, v); }
    std::string Term() const { return mTerm; }
    void SetTerm(const std::string& v);
    Ref<quillbox::QbProject> QbProject() const { return mQbProject.Get(); }
    void SetQbProject(const Ref<quillbox::QbProject>& project) { mQbProject.Set(project); }
    void Load(const Ref<XMLElement>& e);
    void Save(const Ref<XMLElement>& e) const;

    // Of the terms in all glossaries: those that change, come and go.
    static NameState& Terms();

  private:
    void store(std::string& field, const std::string& value);

    std::string mTerm, mDefinition;
    ProjectHandle mQbProject;
};

class GlossaryItems : public SatelliteCollection<GlossaryItem> {
  public:
    static constexpr std::string_view kClassName = "GlossaryItems";
    std::string_view ClassName() const override { return kClassName; }

    bool PauseEvents = false;
    // None for an unknown key.
    Ref<GlossaryItem> Item(const Value& key) const { return find(key); }
    // Both need the project, and fail after the change where there is none.
    void Add(const Ref<GlossaryItem>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {});
    void Remove(const Value& key);
    // The first item in list order with that term in any case; none where there is no such item.
    Ref<GlossaryItem> ItemByTerm(const std::string& term) const;

  protected:
    const SatelliteFile& satellite() const override;
    std::string labelOf(const GlossaryItem& item) const override {
        return "Glossary term '" + item.Term() + "'";
    }
    void adopt(const Ref<GlossaryItem>& item) override { item->SetQbProject(QbProject()); }

  private:
    mutable NameTable<GlossaryItem> mTerms;
};

}  // namespace quillbox
