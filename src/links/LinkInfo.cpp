#include "links/LinkInfo.h"

#include "base/AutomationError.h"
#include "base/Text.h"
#include "frame/Platform.h"
#include "links/BodyLinks.h"
#include "links/LinkHelpers.h"
#include "project/QbProject.h"
#include "topics/Topic.h"

namespace quillbox {

namespace {

constexpr std::string_view kPage = ".html";

}  // namespace

void LinkInfo::Load(const Ref<quillbox::Topic>& topic, const Ref<IHTMLElement>& element, bool verify) {
    if (!element) throw AutomationError("An element is needed here");
    if (const auto link = readLink(*element)) take(*link);
    settle(topic, verify);
}

void LinkInfo::LoadFound(const Ref<quillbox::Topic>& topic, const FoundLink& link, bool verify) {
    take(link);
    settle(topic, verify);
}

void LinkInfo::take(const FoundLink& link) {
    LinkType = link.type;
    LinkText = link.url;
    LinkCaption = link.caption;
    mPlaceInBody = link.place;
}

void LinkInfo::settle(const Ref<quillbox::Topic>& topic, bool verify) {
    Topic = topic;
    LinkText = GetLinkText(LinkText);
    LinkStatus = lsUnverified;
    if (verify) Verify();
}

void LinkInfo::SplitURL(const std::string& source, std::string& url, std::string& bookmark,
                        std::string& queryString) const {
    const auto splitAt = [&](char sign, std::string& rest) {
        const auto place = source.find(sign);
        if (place == std::string::npos)
            throw AutomationError("Invalid argument: there is no '?' in '" + source + "'");
        url = trimBlanks(std::string_view(source).substr(0, place));
        rest = trimBlanks(std::string_view(source).substr(place + 1));
    };
    if (source.find('#') != std::string::npos) {
        splitAt('#', bookmark);
    } else if (LinkText.find('?') != std::string::npos) {
        splitAt('?', queryString);
    } else {
        url = source;
    }
}

void LinkInfo::Verify(bool verifyExternalLinks) {
    if (!Topic) throw AutomationError("This link has no topic");
    std::string url, bookmark, queryString;
    SplitURL(LinkText, url, bookmark, queryString);
    if (url.empty()) LinkStatus = lsOK;
    if (url.empty() && !bookmark.empty()) {
        LinkStatus = bodyLinks(*Topic)->HasAnchor(bookmark) ? lsOK : lsBroken;
        return;
    }
    if (verifyTopic(url, bookmark) || LinkStatus != lsUnverified) return;
    verifyScheme(url, verifyExternalLinks);
}

// True where the link leads to a topic, or to the glossary.
bool LinkInfo::verifyTopic(const std::string& url, const std::string& bookmark) {
    if (LinkType != ltHyperlink || !endsWithText(url, kPage) || url.find_first_of("\\/") != std::string::npos)
        return false;
    const auto name = url.substr(0, url.size() - kPage.size());
    if (sameText(name, "glossary")) {
        LinkStatus = lsOK;
        return true;
    }
    const auto project = Topic->QbProject();
    if (!project) throw AutomationError("The topic of this link has no project");
    const auto target = project->TopicByName(name);
    if (!target) return false;
    LinkStatus = bookmark.empty() || bodyLinks(*target)->HasAnchor(bookmark) ? lsOK : lsBroken;
    return true;
}

void LinkInfo::verifyScheme(const std::string& url, bool verifyExternalLinks) {
    const auto project = Topic->QbProject();
    if (!project) throw AutomationError("The topic of this link has no project");
    if (const auto colon = url.find(':'); colon != std::string::npos) {
        const auto scheme = lower(url.substr(0, colon));
        if (scheme != "http") {
            LinkStatus = lsOK;  // scripts, mail and all other schemes are not checked
        } else if (verifyExternalLinks) {
            LinkStatus = platform().web->Fetch(LinkText).empty() ? lsOK : lsBroken;
        }
    } else if (!project->CMPFileName().empty() && url.find('~') != std::string::npos) {
        LinkStatus = lsOK;  // a page of the related project
    } else {
        bool exists = false;
        // A name that no file can have is not there.
        ignoringFailures([&] { exists = newFile(project->Filename->Directory() + url)->Exists(); });
        LinkStatus = exists ? lsOK : lsBroken;
    }
}

void LinkInfo::ChangeLinkText(const std::string& newURL) {
    if (!Topic) throw AutomationError("This link has no topic");
    const auto document = newBodyDocument(Topic->TopicSectionData("BodyText"));
    const auto scratch = make<LinkInfo>();
    for (const auto& element : document->all()->tags(LinkType == ltHyperlink ? "A" : "IMG")->Items()) {
        scratch->Load(Topic, element, false);
        if (scratch->LinkText != LinkText) continue;
        ignoringFailures([&] { element->setAttribute("href", newURL); });
    }
    LinkText = newURL;
    LinkStatus = lsOK;
    Topic->SetTopicSectionData("BodyText", document->body()->innerHTML());
    Topic->SetDirty(true);
}

}  // namespace quillbox
