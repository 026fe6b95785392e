#include "build/BookletPages.h"

#include "base/AutomationError.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "build/ItemFamily.h"
#include "build/QbDataProvider.h"
#include "topics/Topic.h"

namespace quillbox {

namespace {

Ref<NamespaceDef> definitionOf(const char* itemType) {
    return documentEngine().Templates().Namespaces(kItemFamily)->ByName(itemType)->Item(1);
}

// The page that the booklet's template has for a topic. It is loaded for a cover page too. It is meant so.
Ref<LoadedPage> topicPage(QbDataProvider& provider, const Ref<Manifest>& manifest) {
    const auto pageTemplate = manifest ? manifest->BookletProperties->Template() : nullptr;
    if (!pageTemplate) throw AutomationError("The booklet has no template that is installed");
    return provider.NeedDocument().LoadPage(pageTemplate->Path() + "topic.html");
}

std::string renderEntry(QbDataProvider& provider, const Ref<ManifestEntry>& entry) {
    const auto manifest = provider.CurrentManifest();
    const auto page = topicPage(provider, manifest);
    const auto data = provider.Copy();
    data->SetCurrentItem(definitionOf(kManifestEntryItems), entry, "Manifest Entry", manifest);
    page->SetDataProvider(data);
    return page->Render();
}

std::string renderCover(QbDataProvider& provider, const Ref<Manifest>& manifest) {
    topicPage(provider, manifest);
    const auto topic = manifest->BookletProperties->CoverPageTopic();
    if (!topic) return {};
    const auto data = provider.Copy();
    data->SetCurrentItem(definitionOf(kTopicItems), topic, "Topic", manifest);
    return data->ExpandTemplateText("%%topicsection:name=bodytext%%", "the cover page");
}

}  // namespace

std::string topicContent(const TagCall& call) {
    const auto entry = std::dynamic_pointer_cast<ManifestEntry>(call.provider.CurrentItem());
    return entry ? renderEntry(call.provider, entry) : std::string();
}

std::string coverPage(const TagCall& call) {
    if (const auto manifest = std::dynamic_pointer_cast<Manifest>(call.provider.CurrentItem())) {
        return renderCover(call.provider, manifest);
    }
    return topicContent(call);
}

}  // namespace quillbox
