#pragma once

#include <string>

#include "base/Collection.h"
#include "base/ItemCollection.h"
#include "base/NameTable.h"
#include "project/ProjectHandle.h"

namespace quillbox {

class Topic;

// The topics of a project in their order. Remembers what was removed until the next save.
class Topics : public ItemCollection<Topic> {
  public:
    static constexpr std::string_view kClassName = "Topics";
    std::string_view ClassName() const override { return kClassName; }

    bool PauseEvents = false;
    Ref<quillbox::QbProject> QbProject() const { return mQbProject.Get(); }
    void SetQbProject(const Ref<quillbox::QbProject>& project) { mQbProject.Set(project); }
    // None for an unknown key.
    Ref<Topic> Item(const Value& key) const { return find(key); }
    Ref<Topic> ByKey(std::string_view key) const {
        const auto* topic = mCol.FindKey(key);
        return topic ? *topic : nullptr;
    }
    void Add(const Ref<Topic>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {});
    void Remove(const Value& key);

    // The first topic in list order with that name in any case; none where there is no such topic.
    Ref<Topic> ByName(const std::string& name) const;

    // For the save of the project, which looks whether a removed topic has come back.
    Ref<Collection> DeletedTopics() const { return mDeletedTopics; }
    void ClearDeletedTopics() { mDeletedTopics = make<Collection>(); }

  private:
    ProjectHandle mQbProject;
    Ref<Collection> mDeletedTopics = make<Collection>();
    mutable NameTable<Topic> mNames;
};

}  // namespace quillbox
