#include "links/LinkInfo.h"

#include "frame/PublishedClasses.h"
#include "frame/typelib/Describe.h"
#include "topics/Topic.h"

namespace quillbox {

ClassInfo describeLinkInfo() {
    using T = LinkInfo;
    return Describe<T>("LinkInfo", "One hyperlink or image reference in the body of a topic.")
        .creatable()
        .field("Topic", &T::Topic, "The topic whose body holds the link.")
        .field("Section", &T::Section, "Reserved for future use.")
        .field("LinkStatus", &T::LinkStatus, "Currently determined status.")
        .field("LinkType", &T::LinkType, "Hyperlink or image reference.")
        .field("LinkText", &T::LinkText, "The normal form of the URL.")
        .method("Load", &T::Load, {"theTopic", "Element", {"DoVerify", true}},
                "Fills the object from an HTML element.")
        .method("SplitURL", &T::SplitURL, {"Source", "URL", "Bookmark", "QueryString"},
                "Splits a URL; the last three come back. Parts that are not found keep what was passed.")
        .method("Verify", &T::Verify, {{"VerifyExternalLinks", false}}, "Sets the status.")
        .method("ChangeLinkText", &T::ChangeLinkText, {"NewURL"},
                "Updates the link in the parent topic's body.")
        .field("LinkCaption", &T::LinkCaption, "The link's inner HTML; empty for an image.")
        .done();
}

ClassInfo describeLinkInfos() {
    Describe<LinkInfos> d("LinkInfos", "The links that could not be proved good.");
    d.creatable();
    return collectionMembers(d, "The link at a position or key; fails for an unknown one.", &LinkInfos::Add)
        .done();
}

}  // namespace quillbox
