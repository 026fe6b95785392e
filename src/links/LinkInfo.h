#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "base/ItemCollection.h"
#include "frame/Enumerations.h"
#include "platform/HTML.h"

namespace quillbox {

class Topic;
struct FoundLink;

// One hyperlink or image reference in the body of a topic.
class LinkInfo : public Object {
  public:
    static constexpr std::string_view kClassName = "LinkInfo";
    std::string_view ClassName() const override { return kClassName; }

    Ref<quillbox::Topic> Topic;
    std::string Section;  // for future use
    LinkStatusTypeEnum LinkStatus = lsUnverified;
    LinkTypeEnum LinkType = ltHyperlink;
    // The normal form of the URL, with its "#" or "?" part.
    std::string LinkText;
    // The inner HTML of a hyperlink; empty for an image.
    std::string LinkCaption;

    void Load(const Ref<quillbox::Topic>& topic, const Ref<IHTMLElement>& element, bool verify = true);
    void LoadFound(const Ref<quillbox::Topic>& topic, const FoundLink& link, bool verify = true);
    // Where the link's tag begins in the body of its topic, in bytes, as it was loaded.
    const std::optional<std::size_t>& PlaceInBody() const { return mPlaceInBody; }
    // Parts that are not found keep what was passed. Whether a query string is looked for goes by this link's
    // own text and not by `source`: it is meant so.
    void SplitURL(const std::string& source, std::string& url, std::string& bookmark,
                  std::string& queryString) const;
    // A status once decided stays, unless the topic test decides anew.
    void Verify(bool verifyExternalLinks = false);
    // Gives every link of the topic with this text a new URL. Images too get it as "href": it is meant so.
    void ChangeLinkText(const std::string& newURL);

  private:
    void take(const FoundLink& link);
    void settle(const Ref<quillbox::Topic>& topic, bool verify);
    bool verifyTopic(const std::string& url, const std::string& bookmark);
    void verifyScheme(const std::string& url, bool verifyExternalLinks);

    std::optional<std::size_t> mPlaceInBody;
};

class LinkInfos : public ItemCollection<LinkInfo> {
  public:
    static constexpr std::string_view kClassName = "LinkInfos";
    std::string_view ClassName() const override { return kClassName; }

    // Fails for an unknown position or key.
    Ref<LinkInfo> Item(const Value& key) const { return mCol.At(key); }
    void Add(const Ref<LinkInfo>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {}) {
        mCol.Add(item, key, before, after);
    }
    void Remove(const Value& key) { mCol.Remove(key); }
};

}  // namespace quillbox
