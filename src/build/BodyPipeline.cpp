#include "build/BodyPipeline.h"

#include "base/AutomationError.h"
#include "build/AnchorPass.h"
#include "build/BookletPass.h"
#include "build/GlossaryPass.h"
#include "build/QbDataProvider.h"
#include "project/QbProject.h"
#include "topics/Topic.h"

namespace quillbox {

namespace {

bool isForPrint(QbDataProvider& provider) {
    const auto pageTemplate = provider.NeedDocument().Template();
    return pageTemplate && pageTemplate->Supports().find('p') != std::string::npos;
}

template <class Place>
std::string resolved(QbDataProvider& provider, std::string text, const Ref<FileSystemObject>& file,
                     const Place& place) {
    if (text.find("%%") != std::string::npos) text = provider.Expand(std::move(text), file, place());
    if (!provider.NeedProject().CMPFileName().empty()) text = resolveAnchors(text);
    text = resolveGlossaryReferences(provider, std::move(text));
    return isForPrint(provider) ? prepareForPrint(provider, text) : text;
}

}  // namespace

std::string topicSection(QbDataProvider& provider, const Topic& topic, const std::string& name,
                         const Ref<FileSystemObject>& file) {
    const auto place = [&] { return "the section '" + name + "' of the topic '" + topic.Name() + "'"; };
    return inside(place, [&] { return resolved(provider, topic.TopicSectionData(name), file, place); });
}

}  // namespace quillbox
