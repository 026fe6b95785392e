#include "topics/RelatedTopics.h"

#include "frame/PublishedClasses.h"
#include "frame/typelib/Describe.h"
#include "frame/typelib/XmlMembers.h"
#include "topics/Topic.h"

namespace quillbox {

ClassInfo describeRelatedTopic() {
    using T = RelatedTopic;
    Describe<T> d("RelatedTopic", "A see-also link of a topic: to another topic or to a URL.");
    d.creatable()
        .field("ChildTopicKey", &T::ChildTopicKey, "The key of the Child Topic.")
        .property("URL", &T::URL, &T::SetURL, "The URL that a link of type rttURL points to.")
        .property("RelatedTopicType", &T::RelatedTopicType, &T::SetRelatedTopicType, "The kind of link.")
        .property("Title", &T::Title, &T::SetTitle, "Title of the related topic.")
        .property("Category", &T::Category, &T::SetCategory,
                  "Descriptive category name; links with the same name are grouped together in the generated "
                  "topic.")
        .property("ParentTopic", &T::ParentTopic, &T::SetParentTopic, "The topic that has the link.")
        .read("ChildTopic", &T::ChildTopic,
              "The topic that the link points to; none for an unknown key. Fails without a parent topic in a "
              "project.");
    loadMember(d);
    return saveMember(d).done();
}

ClassInfo describeRelatedTopics() {
    using T = RelatedTopics;
    Describe<T> d("RelatedTopics", "The see-also links of a topic.");
    d.creatable().property("Topic", &T::Topic, &T::SetTopic, "The topic that has the links.");
    return collectionMembers(d, "The link at a position; fails for an unknown one.", &T::Add)
        .event("ItemAdded", 1, &T::ItemAdded, {"Item"})
        .event("ItemRemoved", 2, &T::ItemRemoved, {"Item"})
        .done();
}

ClassInfo describeRelatedTopicCategory() {
    using T = RelatedTopicCategory;
    return Describe<T>("RelatedTopicCategory", "The see-also links of one topic that share a category.")
        .unpublished()
        .field("Name", &T::Name, "The category.")
        .field("Topic", &T::Topic, "The topic that has the links.")
        .read("Links", &T::Links, "The links of this category, collected anew at each read.")
        .done();
}

}  // namespace quillbox
