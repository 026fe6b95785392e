#include "build/QbNamespaceProvider.h"

#include "build/QbDataProvider.h"

namespace quillbox {

QbNamespaceProvider::QbNamespaceProvider() : mData(make<QbDataProvider>()) {}
std::vector<Ref<Object>> QbNamespaceProvider::GetItems(const Ref<NamespaceDef>&, const Ref<Object>&,
                                                       const std::string&) {
    return {};
}
Ref<Object> QbNamespaceProvider::DocumentDataProvider() { return mData; }
void QbNamespaceProvider::Initialise(const Ref<Document>& document) { mDocument.Set(document); }
Ref<Object> QbNamespaceProvider::GetObjectFromQualifiedName(const std::string&) { return {}; }
void QbNamespaceProvider::StreamContent(const Ref<FileSystemObject>&, const std::string&) {}
void QbNamespaceProvider::ContentCreated(const Ref<Object>&, const Ref<NamespaceDef>&, const std::string&) {}
void QbNamespaceProvider::BeforeProcessRootItem(const Ref<Object>&) {}
void QbNamespaceProvider::AfterProcessRootItem(const Ref<Object>&) {}
void QbNamespaceProvider::AfterProcessItem(const Ref<Object>&, const Ref<Object>&) {}

}  // namespace quillbox
