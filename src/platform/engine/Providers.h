#pragma once

#include <string>
#include <vector>

#include "base/Collection.h"
#include "platform/FileSystemObject.h"
#include "platform/engine/Templates.h"

namespace quillbox {

class Document;

// One tag of a template: its type under the key "type", its attributes by name.
class Element : public Object {
  public:
    static constexpr std::string_view kClassName = "Element";
    std::string_view ClassName() const override { return kClassName; }
    static constexpr int kTag = 2;
    int Kind = kTag;
    Ref<Collection> Attributes = make<Collection>();
};

// The object through which template text gets its values.
class IDataProvider {
  public:
    virtual ~IDataProvider() = default;
    // The value of one tag. `file` is the page being written, or none.
    virtual std::string ProvideData(const Ref<Element>& element, const Ref<FileSystemObject>& file) = 0;
    virtual void Initialise(const Ref<Object>& parserTemplate) = 0;
    virtual void Terminate() = 0;
    virtual Ref<Object> CurrentRootItem() const = 0;
    virtual void SetCurrentRootItem(const Ref<Object>& item) = 0;
    virtual Ref<Object> CurrentParentItem() const = 0;
    virtual void SetCurrentParentItem(const Ref<Object>& item) = 0;
    virtual std::string CurrentItemType() const = 0;
    virtual void SetCurrentItemType(const std::string& type) = 0;
    virtual Ref<Object> CurrentItem() const = 0;
    virtual void SetCurrentItem(const Ref<Object>& item) = 0;
    virtual Ref<quillbox::NamespaceDef> NamespaceDef() const = 0;
    virtual void SetNamespaceDef(const Ref<quillbox::NamespaceDef>& def) = 0;
    virtual void SetCurrentItem(const Ref<quillbox::NamespaceDef>& def, const Ref<Object>& item,
                                const std::string& itemType, const Ref<Object>& parentItem) = 0;
    virtual std::string ParseForProperties(const std::string& text) = 0;
    virtual std::string GetProperty(const std::string& name) = 0;
    virtual Ref<Object> Clone() = 0;
};

// The plug-in through which the engine sees a project as a tree of typed items.
class INamespaceProvider {
  public:
    virtual ~INamespaceProvider() = default;
    // Never none: where no rule applies the list is empty.
    virtual std::vector<Ref<Object>> GetItems(const Ref<NamespaceDef>& def, const Ref<Object>& parentItem,
                                              const std::string& filter) = 0;
    virtual Ref<Object> DocumentDataProvider() = 0;
    virtual void Initialise(const Ref<Document>& document) = 0;
    virtual Ref<Object> GetRootItem(const Ref<NamespaceDef>& def, const std::string& moniker) = 0;
    virtual Ref<Object> GetObjectFromQualifiedName(const std::string& name) = 0;
    virtual Ref<NamespaceDef> GetNamespaceDefFromObject(const Ref<NamespaceDefs>& defs,
                                                        const Ref<Object>& item) = 0;
    virtual void AddRootItem(const Ref<Object>& rootItem) = 0;
    virtual void StreamContent(const Ref<FileSystemObject>& outputFile, const std::string& contentType) = 0;
    virtual std::string Name() const = 0;
    virtual void ContentCreated(const Ref<Object>& item, const Ref<NamespaceDef>& def,
                                const std::string& filename) = 0;
    virtual void BeforeProcessRootItem(const Ref<Object>& rootItem) = 0;
    virtual void AfterProcessRootItem(const Ref<Object>& rootItem) = 0;
    virtual void BeforeProcessItem(const Ref<Object>& item, const Ref<Object>& rootItem) = 0;
    virtual void AfterProcessItem(const Ref<Object>& item, const Ref<Object>& rootItem) = 0;
    virtual Ref<Collection> GetModuleItems() = 0;
    virtual std::string BrowseForMoniker(const std::string& filename, int flags) = 0;
    virtual bool VerifyMoniker(const std::string& moniker, std::string& message) = 0;
};

// The host of plug-ins of a related project. Every member may do nothing.
class IWizardHost {
  public:
    virtual ~IWizardHost() = default;
    virtual Value ControlEnabled() = 0;
    virtual Value ControlVisible() = 0;
    virtual Value MoveToWizardStage() = 0;
    virtual Value AddCustomWizardPage() = 0;
    virtual Value AddCustomProjectSelector() = 0;
    virtual Value ModuleListChanged() = 0;
    virtual Value Settings() = 0;
    virtual Value Document() = 0;
    virtual Value RootProject() = 0;
};

// A condition of a tag or a page, such as "Title isnot empty".
class Condition {
  public:
    virtual ~Condition() = default;
    virtual bool IsValid() const = 0;
    // What the item itself does not publish `asker` gives, or where there is none the data provider of the
    // document's first source.
    virtual bool Evaluate(const Ref<Object>& item, const Ref<NamespaceDef>& def,
                          const Ref<Document>& document, IDataProvider* asker) = 0;
};

}  // namespace quillbox
