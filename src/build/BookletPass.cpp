#include "build/BookletPass.h"

#include "base/Text.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "build/QbDataProvider.h"
#include "links/LinkInfo.h"
#include "project/QbProject.h"
#include "topics/Topic.h"

namespace quillbox {

namespace {

// Empty for an element without the attribute.
std::string targetOf(const IHTMLElement& element) {
    std::string target;
    ignoringFailures([&] { target = element.getAttribute("href"); });
    return target;
}

bool showsItsURL(const IHTMLElement& element, const std::string& url) {
    const auto shown = element.outerText();
    const auto colon = url.find(':');
    return shown == url || (colon != std::string::npos && shown == url.substr(colon + 1));
}

class PrintedLinks {
  public:
    explicit PrintedLinks(QbDataProvider& provider)
        : mProvider(provider),
          mProject(provider.NeedProject()),
          mManifest(provider.CurrentManifest()),
          mData(provider.ForBookletLinks()) {}

    void Replace(IHTMLElement& element) {
        const auto target = targetOf(element);
        if (target.empty() || target.starts_with('#')) return;
        std::string url, bookmark, query;
        make<LinkInfo>()->SplitURL(target, url, bookmark, query);
        url = mProject.ParseURL(url);
        if (url.empty()) return;
        const auto link = make<BookletLinkInfo>();
        link->LinkURL = url;
        link->LinkCaption = element.innerHTML();
        link->LinkTopic =
            mProject.TopicByName(endsWithText(url, ".html") ? url.substr(0, url.size() - 5) : url);
        mData->SetCurrentItem(nullptr, link, "BookletLinkInfo", mProvider.CurrentItem());
        const auto [text, place] = scrapFor(*link, element);
        if (text != "{None}") element.setOuterHTML(mData->ExpandTemplateText(text, place));
    }

  private:
    struct Scrap {
        std::string text, place;
    };

    Scrap scrapFor(const BookletLinkInfo& link, const IHTMLElement& element) {
        if (link.LinkURL.find('~') != std::string::npos) {
            return scrap(&BookletProperties::LinkPreProcessCodemark, "_HYPERLINK_TO_CODEMARK_CONTENT");
        }
        if (link.LinkTopic) {
            if (isInBooklet(link.LinkTopic)) {
                return scrap(&BookletProperties::LinkPreProcessTopicInBooklet,
                             "_HYPERLINK_TO_TOPIC_IN_BOOKLET");
            }
            return scrap(&BookletProperties::LinkPreProcessTopicNotInBooklet,
                         "_HYPERLINK_TO_TOPIC_NOT_IN_BOOKLET");
        }
        if (showsItsURL(element, link.LinkURL)) {
            return scrap(&BookletProperties::LinkPreProcessURLNoCaption, "_HYPERLINK_TO_URL_NO_CAPTION");
        }
        return scrap(&BookletProperties::LinkPreProcessURLWithCaption, "_HYPERLINK_TO_URL_WITH_CAPTION");
    }

    // The booklet's own text, or the template's.
    Scrap scrap(std::string (BookletProperties::*own)() const, const std::string& name) {
        auto text = mManifest ? (*mManifest->BookletProperties.*own)() : std::string();
        if (text.empty()) text = mProvider.NeedDocument().Scrap(name);
        return {std::move(text), "the scrap '" + name + "'"};
    }

    bool isInBooklet(const Ref<Topic>& topic) {
        return mManifest && mProvider.Memory().OutlineOf(mManifest).EntryOf(topic);
    }

    QbDataProvider& mProvider;
    QbProject& mProject;
    Ref<Manifest> mManifest;
    Ref<QbDataProvider> mData;
};

void numberHeadings(HTMLDocument& document, const std::string& entryNumber) {
    int count = 0;
    for (const auto& heading : document.all()->tags("h3")->Items()) {
        const auto text = heading->innerHTML();
        if (!text.empty())
            heading->setInnerHTML(entryNumber + "." + std::to_string(++count) + "&nbsp; " + text);
    }
}

}  // namespace

std::string prepareForPrint(QbDataProvider& provider, const std::string& html) {
    const auto document = provider.NeedProject().NewDOM(html);
    PrintedLinks links(provider);
    for (const auto& element : document->all()->tags("a")->Items()) links.Replace(*element);
    const auto manifest = provider.CurrentManifest();
    const auto entry = std::dynamic_pointer_cast<ManifestEntry>(provider.CurrentItem());
    if (manifest && entry && manifest->BookletProperties->EntryNumbering() == enTopicTitlesAndHTMLHeadings) {
        numberHeadings(*document, entry->RuntimeEntryNumber());
    }
    return document->body()->innerHTML();
}

}  // namespace quillbox
