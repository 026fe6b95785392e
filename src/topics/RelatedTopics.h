#pragma once

#include <sigc++/sigc++.h>

#include <string>
#include <vector>

#include "base/ItemCollection.h"
#include "frame/Enumerations.h"
#include "platform/XML.h"

namespace quillbox {

class Topic;

// A see-also link of a topic: to another topic or to a URL.
class RelatedTopic : public Object {
  public:
    static constexpr std::string_view kClassName = "RelatedTopic";
    std::string_view ClassName() const override { return kClassName; }

    std::string ChildTopicKey;
    std::string URL() const { return mURL; }
    void SetURL(const std::string& v) { store(mURL, v); }
    RelatedTopicTypeEnum RelatedTopicType() const { return mRelatedTopicType; }
    void SetRelatedTopicType(RelatedTopicTypeEnum v) { store(mRelatedTopicType, v); }
    std::string Title() const { return mTitle; }
    void SetTitle(const std::string& v) { store(mTitle, v); }
    std::string Category() const { return mCategory; }
    void SetCategory(const std::string& v) { store(mCategory, v); }
    Ref<Topic> ParentTopic() const { return mParentTopic.Get(); }
    void SetParentTopic(const Ref<Topic>& topic);
    // None for a key that is not in the project; fails without a parent topic in a project.
    Ref<Topic> ChildTopic() const;
    void Load(const Ref<XMLElement>& e);
    void Save(const Ref<XMLElement>& e) const;

  private:
    template <class T>
    void store(T& field, const T& value) {
        field = value;
        notice();
    }
    void notice();

    std::string mCategory, mTitle, mURL;
    RelatedTopicTypeEnum mRelatedTopicType = rttTopic;
    ObjectReference<Topic> mParentTopic;
};

class RelatedTopics : public ItemCollection<RelatedTopic> {
  public:
    static constexpr std::string_view kClassName = "RelatedTopics";
    std::string_view ClassName() const override { return kClassName; }

    sigc::signal<void(const Ref<RelatedTopic>&)> ItemAdded, ItemRemoved;

    Ref<quillbox::Topic> Topic() const { return mTopic.Get(); }
    void SetTopic(const Ref<quillbox::Topic>& topic) { mTopic.Set(topic); }
    // Fails for an unknown position.
    Ref<RelatedTopic> Item(const Value& key) const { return mCol.At(key); }
    void Add(const Ref<RelatedTopic>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {});
    void Remove(const Value& key);

  private:
    ObjectReference<quillbox::Topic> mTopic;
};

// The see-also links of one topic that share a category, as templates list them.
class RelatedTopicCategory : public Object {
  public:
    static constexpr std::string_view kClassName = "RelatedTopicCategory";
    std::string_view ClassName() const override { return kClassName; }
    std::string Name;
    Ref<quillbox::Topic> Topic;
    // Collected anew at each read.
    Ref<RelatedTopics> Links() const;
    // The same as a plain list.
    std::vector<Ref<RelatedTopic>> Items() const;
};

}  // namespace quillbox
