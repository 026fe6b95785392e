#include "build/QbNamespaceProvider.h"

#include "base/Text.h"
#include "build/CompilerInputs.h"
#include "build/ItemFamily.h"
#include "build/NamespaceItems.h"
#include "build/QbDataProvider.h"
#include "frame/Platform.h"
#include "frame/typelib/TypeLibrary.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox {

namespace {

std::string pageOf(Object& topic) { return toText(getMember(topic, "Name")) + ".html"; }

Ref<Object> topicsOf(const Ref<Object>& rootItem) {
    const auto topics = rootItem ? toObject(getMember(*rootItem, "Topics")) : nullptr;
    if (!topics) throw AutomationError("There is no project to take a start page from");
    return topics;
}

// Without the dot; of the last piece of a path of either kind.
std::string_view extensionOf(std::string_view path) {
    const auto name = path.substr(path.find_last_of("/\\") + 1);
    const auto dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
}

// Of several topics that are marked the last one wins.
void takeMarkedTopic(Document& document, Object& topics) {
    if (const auto* own = dynamic_cast<Topics*>(&topics)) {
        for (const auto& topic : own->Items()) {
            if (topic->IsDefault() && topic->IncludeInHelpFile())
                document.DefaultTopic = topic->Name() + ".html";
        }
        return;
    }
    const int count = toInteger(getMember(topics, "Count"));
    for (int index = 1; index <= count; ++index) {
        const auto topic = toObject(getMember(topics, "Item", {index}));
        const auto is = [&](const char* name) { return toBoolean(getMember(*topic, name)); };
        if (topic && is("IsDefault") && is("IncludeInHelpFile")) document.DefaultTopic = pageOf(*topic);
    }
}

}  // namespace

QbNamespaceProvider::QbNamespaceProvider() : mData(make<QbDataProvider>()) {}

Ref<Document> QbNamespaceProvider::document() const {
    if (auto found = mDocument.Get()) return found;
    throw AutomationError("This provider of items has no document");
}

Ref<QbProject> QbNamespaceProvider::project() const {
    const auto found = mDocument.Get();
    return found ? projectOf(*found) : nullptr;
}

Ref<Object> QbNamespaceProvider::DocumentDataProvider() { return mData; }

void QbNamespaceProvider::Initialise(const Ref<Document>& document) {
    if (document) {
        mDocument.Set(document);
        mData->SetDocument(document);
        return;
    }
    // The data provider is left without a document here. It is meant so.
    mDocumentHolder = documentEngine().NewDocument();
    mDocument.Set(mDocumentHolder);
    mDocumentHolder->Objects->Add(make<QbProject>(), kProviderName);
}

std::vector<Ref<Object>> QbNamespaceProvider::GetItems(const Ref<NamespaceDef>& def,
                                                       const Ref<Object>& parentItem,
                                                       const std::string& filter) {
    if (!def) return {};
    Filter wanted;
    wanted.Load(filter);
    if (!wanted.IncludeAll && def->ProvideIncludeFlag && !def->IncludeFlag) return {};
    return namespaceItems(def->Name, {project(), parentItem, wanted});
}

Ref<Object> QbNamespaceProvider::GetObjectFromQualifiedName(const std::string& name) {
    const auto owner = project();
    if (!owner) return {};
    if (name == owner->QualifiedName()) return owner;
    return owner->Topics->Item(name);
}

void QbNamespaceProvider::BeforeProcessRootItem(const Ref<Object>& rootItem) {
    const auto topics = topicsOf(rootItem);
    const auto target = document();
    target->ProgressVerb = "writing";
    target->ProgressCaption = "Generating content";
    takeMarkedTopic(*target, *topics);
    if (!target->DefaultTopic.empty() || toInteger(getMember(*topics, "Count")) == 0) return;
    // The first topic serves, whether it is in the help file or not. It is meant so.
    target->DefaultTopic = pageOf(*toObject(getMember(*topics, "Item", {1})));
}

void QbNamespaceProvider::AfterProcessRootItem(const Ref<Object>& rootItem) {
    takeMarkedTopic(*document(), *topicsOf(rootItem));
}

void QbNamespaceProvider::AfterProcessItem(const Ref<Object>&, const Ref<Object>&) {
    const auto target = document();
    target->CompilerInputFile = target->OutputPath + target->Title + (isHelp2(*target) ? ".hxc" : ".hhp");
}

void QbNamespaceProvider::ContentCreated(const Ref<Object>&, const Ref<NamespaceDef>&,
                                         const std::string& filename) {
    // Any part of this text counts, so that a file without an extension is not listed either. It is meant so.
    constexpr std::string_view kInputs = "hhc,hhk,hhp,hxc,hxf,hxt,hxk";
    if (kInputs.find(lower(extensionOf(filename))) != std::string_view::npos) return;
    if (!mNames.insert(filename).second) return;
    const auto slashed = [](const std::string& path) {
        return path.find('\\') == std::string::npos ? path : replaceAll(path, "\\", "/");
    };
    mTopicMap.push_back(replaceAll(slashed(filename), slashed(document()->OutputPath), ""));
}

void QbNamespaceProvider::StreamContent(const Ref<FileSystemObject>& outputFile,
                                        const std::string& contentType) {
    const auto owner = project();
    if (!owner) throw AutomationError("There is no project to stream content of");
    streamContent({*document(), *owner, mTopicMap, *mData, outputFile}, contentType);
}

}  // namespace quillbox
