#include "build/ContentsTag.h"

#include <algorithm>

#include "base/AutomationError.h"
#include "build/ItemFamily.h"
#include "build/QbDataProvider.h"
#include "content/QbNode.h"
#include "project/QbProject.h"

namespace quillbox {

namespace {

bool isForThisProvider(PageTemplate& pageTemplate) {
    const auto names = pageTemplate.Namespaces()->Texts();
    return std::find(names.begin(), names.end(), kProviderName) != names.end();
}

void createContents(Document& document, const std::string& templateName, const QbProject& project) {
    if (document.TOCDefs->HasKey(templateName)) return;
    const auto definition = make<TOCDefinition>();
    document.TOCDefs->Add(definition, templateName);
    for (const auto& node : project.QbNodes()->Items()) {
        if (!node->ParentNode()) node->CreateNodeDef(nullptr, definition);
    }
}

}  // namespace

std::string tableOfContents(const TagCall& call) {
    auto& document = call.provider.NeedDocument();
    const auto pageTemplate = document.Template();
    if (!pageTemplate) throw AutomationError("A table of contents needs a template that is being generated");
    if (!isForThisProvider(*pageTemplate)) return {};
    createContents(document, pageTemplate->Name(), call.provider.NeedProject());
    const auto prefix = call.Optional("bookprefix");
    const auto suffix = call.Optional("booksuffix");
    const auto scrap = call.Optional("nodescrap");
    const bool plain = prefix.empty() && suffix.empty() && scrap.empty();
    document.TOCBookPrefix = plain ? "<UL>" : prefix;
    document.TOCBookSuffix = plain ? "</UL>" : suffix;
    document.TOCNodeScrap = scrap;
    document.StreamTOC(call.file, pageTemplate);
    return {};
}

}  // namespace quillbox
