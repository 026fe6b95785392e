// What a project offers for building.

#include <algorithm>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "build/BuildDriver.h"
#include "build/BuildResult.h"
#include "build/ItemFamily.h"
#include "project/QbProject.h"

namespace quillbox {

namespace {

// A print template serves booklets alone.
bool isForHelp(PageTemplate& pageTemplate) {
    const auto names = pageTemplate.Namespaces()->Texts();
    return std::find(names.begin(), names.end(), kProviderName) != names.end() &&
           pageTemplate.Supports().find('p') == std::string::npos;
}

}  // namespace

Ref<BuildResult> QbProject::Build(Ref<Document>& passedDoc, const std::string& compilerFileName,
                                  bool buildRelatedCMP, bool compile, bool cleanupAfterBuild) {
    return BuildDriver(self(this),
                       {Template(), compilerFileName, buildRelatedCMP, compile, cleanupAfterBuild})
        .Run(passedDoc);
}

Ref<BuildResult> QbProject::BuildBooklets(Ref<Document>&) {
    throw AutomationError("Booklets cannot be printed yet");
}

Ref<PageTemplate> QbProject::Template() const {
    const auto templates = documentEngine().Templates().PageTemplates();
    Ref<PageTemplate> found;
    ignoringFailures([&] { found = templates->Item(mTemplateName); });
    if (found) return found;
    for (const auto& one : templates->Items()) {
        if (isForHelp(*one)) return one;
    }
    return {};
}

std::string QbProject::DefaultTopicLayout() const {
    const auto pageTemplate = Template();
    if (!pageTemplate) return {};
    for (const auto& value : pageTemplate->Pages()->Items()) {
        const auto page = std::dynamic_pointer_cast<TemplatePage>(toObject(value));
        if (page && sameText(page->NamespaceItemType, kTopicItems)) return page->Name;
    }
    return {};
}

void QbProject::CopySupportFiles() {
    const auto document = documentEngine().NewDocument();
    document->OutputPath = Filename->Directory();
    document->SwitchC = true;
    document->CopyTemplateSupportFiles(Template());
}

}  // namespace quillbox
