#include "build/RelatedProject.h"

#include "build/DummyWizardHost.h"
#include "frame/Platform.h"
#include "frame/typelib/TypeLibrary.h"

namespace quillbox {

namespace {

Value call(Object& object, const char* name, Arguments arguments = {}) {
    return callMember(object, name, arguments);
}

int countOf(Object& list) { return toInteger(getMember(list, "Count")); }

Value itemOf(Object& list, int index) { return getMember(list, "Item", {index}); }

}  // namespace

RelatedProject::RelatedProject(Ref<Object> loader, const Ref<Document>& document)
    : mLoader(std::move(loader)), mDocument(document), mHost(make<DummyWizardHost>()) {
    mHost->HostedDocument = mDocument;
}

// Plug-ins keep their host; the document that keeps the plug-ins must not be kept by it in turn.
RelatedProject::~RelatedProject() { mHost->HostedDocument = nullptr; }

std::unique_ptr<RelatedProject> RelatedProject::Find(const Ref<Document>& document) {
    Ref<Object> loader;
    ignoringFailures([&] { loader = platform().classes->CreateObject("Codemark.Loader"); });
    if (!loader) return nullptr;
    return std::unique_ptr<RelatedProject>(new RelatedProject(std::move(loader), document));
}

void RelatedProject::Load(const std::string& file) {
    call(*mLoader, "Load", {mDocument, file});
    const auto plugIns = listOf("PlugIns");
    for (int index = 1; plugIns && index <= countOf(*plugIns); ++index) {
        const auto plugIn = toObject(itemOf(*plugIns, index));
        if (!plugIn) throw AutomationError("A plug-in of the related project is none");
        call(*plugIn, "AttachHost", {mHost});
        call(*plugIn, "Prepare");
        exclude(*plugIn);
    }
}

void RelatedProject::Unload() { call(*mLoader, "Unload", {mDocument}); }

Ref<Object> RelatedProject::listOf(const char* key) const {
    const auto* found = mDocument->Objects->Find(key);
    return found ? toObject(*found) : nullptr;
}

// Takes the texts off the list of exclusions that the plug-in knows.
void RelatedProject::exclude(Object& plugIn) {
    const auto exclusions = listOf("NamespaceExclusions");
    for (int index = 1; exclusions && index <= countOf(*exclusions); ++index) {
        const auto excluded = toObject(call(plugIn, "FindExcluded", {itemOf(*exclusions, index)}));
        if (!excluded) continue;
        ignoringFailures([&] { putMember(*excluded, "IncludeFlag", false); });
        ignoringFailures([&] { putMember(*excluded, "ExcludeFlag", true); });
        call(*exclusions, "Remove", {index});
        --index;
    }
}

}  // namespace quillbox
