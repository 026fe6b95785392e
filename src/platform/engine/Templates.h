#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/Collection.h"
#include "base/ItemCollection.h"

namespace quillbox {

class INamespaceProvider;

// One kind of item that pages can be bound to, such as "cm.quillbox:topic".
class NamespaceDef : public Object {
  public:
    static constexpr std::string_view kClassName = "NamespaceDef";
    std::string_view ClassName() const override { return kClassName; }
    std::string Name;
    // The name of the provider that has the items: "CM.Quillbox".
    std::string NamespaceProvider;
    // Item type that these items hang under; empty at the top.
    std::string ParentName;
    bool IncludeFlag = true;
    bool ProvideIncludeFlag = false;
};

class NamespaceDefs : public ItemCollection<NamespaceDef> {
  public:
    static constexpr std::string_view kClassName = "NamespaceDefs";
    std::string_view ClassName() const override { return kClassName; }
    void Add(const Ref<NamespaceDef>& def) { mCol.Add(def); }
    // Fails for a position that is not there.
    Ref<NamespaceDef> Item(const Value& index) const { return mCol.At(index); }
    // Those whose item type is the name, without regard to case.
    Ref<NamespaceDefs> ByName(const std::string& name) const;
    // The same with or without the family ("cm.quillbox:topic", "topic"), the family's own item first.
    Ref<NamespaceDefs> ByRootName(const std::string& name) const;
};

class TemplatePage : public Object {
  public:
    static constexpr std::string_view kClassName = "TemplatePage";
    std::string_view ClassName() const override { return kClassName; }
    // The file's name, such as "topic.html".
    std::string Name;
    // The item type that the page is bound to; empty for a page that is written once.
    std::string NamespaceItemType;
};

// A page of a template that is rendered by hand, for one item.
class LoadedPage : public Object {
  public:
    static constexpr std::string_view kClassName = "LoadedPage";
    std::string_view ClassName() const override { return kClassName; }
    virtual void SetDataProvider(const Ref<Object>& provider) = 0;
    virtual std::string Render() = 0;
};

class PageTemplate : public Object {
  public:
    static constexpr std::string_view kClassName = "PageTemplate";
    std::string_view ClassName() const override { return kClassName; }
    virtual std::string Name() const = 0;
    // The template's folder, with its trailing separator.
    virtual std::string Path() const = 0;
    // Flag letters; "p" marks a print template.
    virtual std::string Supports() const = 0;
    // Of `TemplatePage`s, in the order of the template, keyed by name.
    virtual Ref<Collection> Pages() = 0;
    virtual Ref<quillbox::NamespaceDefs> NamespaceDefs() = 0;
    // The names of the providers that the template is made for.
    virtual Ref<Collection> Namespaces() = 0;
};

// A list of templates by name.
class PageTemplates : public ItemCollection<PageTemplate> {
  public:
    static constexpr std::string_view kClassName = "PageTemplates";
    std::string_view ClassName() const override { return kClassName; }
    // Fails for an unknown name or position.
    Ref<PageTemplate> Item(const Value& index) const { return mCol.At(index); }
    void Add(const Ref<PageTemplate>& item, const Value& key = {}) { mCol.Add(item, key); }
    void Remove(const Value& index) { mCol.Remove(index); }
};

// What the process shares among all builds: the installed templates and the known kinds of items.
class TemplateService {
  public:
    virtual ~TemplateService() = default;

    // Read at first use, and again when the installation or a template's files changed.
    virtual Ref<quillbox::PageTemplates> PageTemplates() = 0;
    // A further folder to look for templates in.
    virtual void AddFolder(const std::string& folder) = 0;
    virtual Ref<Object> SharedTemplateObject() = 0;
    // The definitions of a family such as "cm.quillbox"; fails for an unknown one.
    virtual Ref<NamespaceDefs> Namespaces(const std::string& family) = 0;

    // Makes a family of items known, with the provider that has them.
    struct Family {
        std::string name;           // "cm.quillbox"
        std::string providerName;   // "CM.Quillbox"
        std::string providerClass;  // "Quillbox.QbNamespaceProvider"
        Ref<NamespaceDefs> defs;
        std::function<Ref<Object>()> makeProvider;  // an object that is an INamespaceProvider
    };
    virtual void RegisterFamily(const Family& family) = 0;
};

}  // namespace quillbox
