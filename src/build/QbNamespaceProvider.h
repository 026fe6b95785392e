#pragma once

#include <string>
#include <vector>

#include "base/FoldedMap.h"
#include "platform/engine/Document.h"

namespace quillbox {

class QbDataProvider;
class QbProject;

// Shows a project to the document engine as a tree of typed items, and lists what was written. Serves one
// build.
class QbNamespaceProvider : public Object, public INamespaceProvider {
  public:
    static constexpr std::string_view kClassName = "QbNamespaceProvider";
    std::string_view ClassName() const override { return kClassName; }

    QbNamespaceProvider();

    std::vector<Ref<Object>> GetItems(const Ref<NamespaceDef>& def, const Ref<Object>& parentItem,
                                      const std::string& filter) override;
    Ref<Object> DocumentDataProvider() override;
    // Without a document the provider makes one of its own, with a new project in it.
    void Initialise(const Ref<Document>& document) override;
    Ref<Object> GetRootItem(const Ref<NamespaceDef>&, const std::string&) override { return {}; }
    Ref<Object> GetObjectFromQualifiedName(const std::string& name) override;
    Ref<NamespaceDef> GetNamespaceDefFromObject(const Ref<NamespaceDefs>&, const Ref<Object>&) override {
        return {};
    }
    void AddRootItem(const Ref<Object>&) override {}
    void StreamContent(const Ref<FileSystemObject>& outputFile, const std::string& contentType) override;
    std::string Name() const override { return "CM.Quillbox"; }
    void ContentCreated(const Ref<Object>& item, const Ref<NamespaceDef>& def,
                        const std::string& filename) override;
    void BeforeProcessRootItem(const Ref<Object>& rootItem) override;
    void AfterProcessRootItem(const Ref<Object>& rootItem) override;
    void BeforeProcessItem(const Ref<Object>&, const Ref<Object>&) override {}
    void AfterProcessItem(const Ref<Object>& item, const Ref<Object>& rootItem) override;
    Ref<Collection> GetModuleItems() override { return make<Collection>(); }
    // Nothing is chosen where there is no dialog.
    std::string BrowseForMoniker(const std::string&, int) override { return {}; }
    bool VerifyMoniker(const std::string&, std::string&) override { return false; }

  private:
    Ref<Document> document() const;
    Ref<QbProject> project() const;

    // Held only where the provider made the document itself.
    Ref<Document> mDocumentHolder;
    ObjectReference<Document> mDocument;
    Ref<QbDataProvider> mData;
    // What was written, relative to the output folder, in the order of writing; and the full names, folded.
    std::vector<std::string> mTopicMap;
    FoldedSet mNames;
};

}  // namespace quillbox
