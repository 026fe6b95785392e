#include "topics/TopicSection.h"

#include "frame/PublishedClasses.h"
#include "frame/typelib/Describe.h"
#include "topics/Topic.h"
#include "topics/TopicSectionDefs.h"

namespace quillbox {

ClassInfo describeTopicSection() {
    using T = TopicSection;
    return Describe<T>("TopicSection", "One named part of a topic's content.")
        .creatable()
        .field("Tag", &T::Tag,
               "Generic tag which can be used to associate arbitrary data with this Topic Section.")
        .property("Topic", &T::Topic, &T::SetTopic, "Handle to the parent Topic.")
        .property("Data", &T::Data, &T::SetData, "Data (normally HTML) associated with this Topic Section.")
        .property("TopicSectionDef", &T::TopicSectionDef, &T::SetTopicSectionDef,
                  "The definition of this section; writing none fails.")
        .done();
}

ClassInfo describeTopicSections() {
    using T = TopicSections;
    Describe<T> d("TopicSections", "The sections of one topic.");
    d.creatable();
    return collectionMembers(d, "The section at a position or key; none for an unknown one.", &T::Add)
        .method("TopicSectionByCaption", &T::TopicSectionByCaption, {"Caption"},
                "Returns a TopicSection matching the provided Caption; an empty value where there is none.")
        .done();
}

ClassInfo describeTopicSectionDef() {
    using T = TopicSectionDef;
    return Describe<T>("TopicSectionDef", "What a section of topics is called.")
        .creatable()
        .field("Key", &T::Key, "Unqiue identifier of this TopicSectionDef.")
        .field("Caption", &T::Caption, "Caption used to refer to this TopicSectionDef in any User Interface.")
        .done();
}

ClassInfo describeTopicSectionDefs() {
    using T = TopicSectionDefs;
    Describe<T> d("TopicSectionDefs", "The section definitions of this process.");
    d.creatable();
    return collectionMembers(d, "The definition at a position or key; none for an unknown one.", &T::Add)
        .method("Populate", &T::Populate, "Populates the collection.")
        .done();
}

}  // namespace quillbox
