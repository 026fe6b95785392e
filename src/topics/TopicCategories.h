#pragma once

#include <string>

#include "base/ItemCollection.h"
#include "platform/XML.h"
#include "project/ProjectHandle.h"

namespace quillbox {

// A logical grouping of topics.
class TopicCategory : public Object {
  public:
    static constexpr std::string_view kClassName = "TopicCategory";
    std::string_view ClassName() const override { return kClassName; }

    std::string Key;
    std::string Name() const { return mName; }
    // Needs the project.
    void SetName(const std::string& name);
    Ref<quillbox::QbProject> QbProject() const { return mQbProject.Get(); }
    void SetQbProject(const Ref<quillbox::QbProject>& project) { mQbProject.Set(project); }
    void Load(const Ref<XMLElement>& e);
    void Save(const Ref<XMLElement>& e) const;

  private:
    std::string mName;
    ProjectHandle mQbProject;
};

class TopicCategories : public ItemCollection<TopicCategory> {
  public:
    static constexpr std::string_view kClassName = "TopicCategories";
    std::string_view ClassName() const override { return kClassName; }

    bool PauseEvents = false;
    Ref<quillbox::QbProject> QbProject() const { return mQbProject.Get(); }
    void SetQbProject(const Ref<quillbox::QbProject>& project) { mQbProject.Set(project); }
    // None for an unknown key.
    Ref<TopicCategory> Item(const Value& key) const { return find(key); }
    void Add(const Ref<TopicCategory>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {});
    void Remove(const Value& key);
    Ref<TopicCategory> TopicCategoryByName(const std::string& name) const;

  private:
    ProjectHandle mQbProject;
};

}  // namespace quillbox
