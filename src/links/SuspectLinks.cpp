// Looks through topics for links that cannot be proved good, and makes HTML documents for a project.

#include "base/Text.h"
#include "frame/Platform.h"
#include "links/BodyLinks.h"
#include "links/LinkHelpers.h"
#include "links/LinkInfo.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox {

Ref<LinkInfos> Topic::GetSuspectLinks(const Ref<LinkInfos>& addToCollection, Ref<HTMLDocument>& dom) {
    const auto links = addToCollection ? addToCollection : make<LinkInfos>();
    const auto addSuspect = [&](const Ref<LinkInfo>& link) {
        if (link->LinkStatus != lsOK) links->Add(link);
    };
    if (dom) {
        dom->body()->setInnerHTML(TopicSectionData("BodyText"));
        eachLink(self(this), readLinks(*dom), addSuspect);
    } else {
        eachLink(self(this), *bodyLinks(*this), addSuspect);
    }
    dom = nullptr;
    return links;
}

Ref<LinkInfos> QbProject::GetSuspectLinks() {
    auto links = make<LinkInfos>();
    // Only the first topic is seen in a document with a base: the topic scan does not hand it back. It is
    // meant so.
    auto document = NewDOM("<html><body></body></html>");
    const int count = Topics->Count();
    for (int index = 1; index <= count; ++index) {
        LinkCheckStartTopic(index);
        if (const auto topic = Topics->Item(index)) topic->GetSuspectLinks(links, document);
    }
    return links;
}

std::string QbProject::ParseURL(const std::string& source) const {
    auto folder = replaceAll(Filename->Directory(), "\\", "/");
    if (folder.starts_with('/')) folder.erase(0, 1);
    return replaceAllText(replaceAll(source, "%20", " "), "file:///" + folder, "");
}

Ref<HTMLDocument> QbProject::NewDOM(const std::string& bodyHTML) const {
    return newDocument("<html><head><base href=\"" + Filename->Directory() + "\"/></head><body>" + bodyHTML +
                       "</body></html>");
}

}  // namespace quillbox
