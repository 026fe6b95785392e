#pragma once

#include <memory>
#include <string>
#include <utility>

#include "base/ItemCollection.h"

namespace quillbox {

class Topic;
class TopicSectionDef;
struct BodyLinks;

// One named part of a topic's content, normally HTML.
class TopicSection : public Object {
  public:
    static constexpr std::string_view kClassName = "TopicSection";
    std::string_view ClassName() const override { return kClassName; }

    // Whatever a caller wants to keep with the section; never read and never saved.
    Value Tag = Value::None();

    Ref<quillbox::Topic> Topic() const { return mTopic.Get(); }
    void SetTopic(const Ref<quillbox::Topic>& topic) { mTopic.Set(topic); }
    std::string Data() const { return mData; }
    const std::string& Text() const { return mData; }
    // Tells the topic unless that is paused; equal text is told too.
    void SetData(const std::string& data);
    // The definition is kept by its key and looked up at each read.
    Ref<quillbox::TopicSectionDef> TopicSectionDef() const;
    void SetTopicSectionDef(const Ref<quillbox::TopicSectionDef>& def);
    const std::string& DefKey() const { return mTopicSectionDefKey; }

    // The links that were read out of the text; none when the text is another since.
    const std::shared_ptr<const BodyLinks>& Links() const { return mLinks; }
    void SetLinks(std::shared_ptr<const BodyLinks> links) { mLinks = std::move(links); }

  private:
    ObjectReference<quillbox::Topic> mTopic;
    std::string mData;
    std::string mTopicSectionDefKey;
    std::shared_ptr<const BodyLinks> mLinks;
};

class TopicSections : public ItemCollection<TopicSection> {
  public:
    static constexpr std::string_view kClassName = "TopicSections";
    std::string_view ClassName() const override { return kClassName; }

    // None for an unknown key.
    Ref<TopicSection> Item(const Value& key) const { return find(key); }
    void Add(const Ref<TopicSection>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {}) {
        mCol.Add(item, key, before, after);
    }
    void Remove(const Value& key) { mCol.Remove(key); }
    // The first section whose caption is the text in any case; an empty value where there is none.
    Value TopicSectionByCaption(const std::string& caption) const;
};

}  // namespace quillbox
