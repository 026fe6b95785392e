// What a project offers for building.

#include "base/AutomationError.h"
#include "base/Text.h"
#include "build/BuildResult.h"
#include "frame/Platform.h"
#include "project/QbProject.h"

namespace quillbox {

namespace {

bool listsProvider(PageTemplate& pageTemplate) {
    const auto names = pageTemplate.Namespaces()->Texts();
    return std::find(names.begin(), names.end(), "CM.Quillbox") != names.end();
}

}  // namespace

Ref<BuildResult> QbProject::Build(Ref<Document>&, const std::string&, bool, bool, bool) {
    throw AutomationError("Projects cannot be built yet");
}

Ref<BuildResult> QbProject::BuildBooklets(Ref<Document>&) {
    throw AutomationError("Booklets cannot be printed yet");
}

Ref<PageTemplate> QbProject::Template() const {
    const auto templates = platform().engine->Templates().PageTemplates();
    Ref<PageTemplate> found;
    ignoringFailures([&] { found = templates->Item(mTemplateName); });
    if (found) return found;
    for (const auto& one : templates->Items()) {
        if (listsProvider(*one) && one->Supports().find('p') == std::string::npos) return one;
    }
    return {};
}

std::string QbProject::DefaultTopicLayout() const {
    const auto pageTemplate = Template();
    if (!pageTemplate) return {};
    for (const auto& value : pageTemplate->Pages()->Items()) {
        const auto page = std::dynamic_pointer_cast<TemplatePage>(toObject(value));
        if (page && sameText(page->NamespaceItemType, "cm.quillbox:topic")) return page->Name;
    }
    return {};
}

void QbProject::CopySupportFiles() {
    const auto document = platform().engine->NewDocument();
    document->OutputPath = Filename->Directory();
    document->SwitchC = true;
    document->CopyTemplateSupportFiles(Template());
}

}  // namespace quillbox
