#pragma once

#include <sigc++/sigc++.h>

#include <memory>
#include <string>

#include "base/Collection.h"
#include "platform/FileSystemObject.h"
#include "platform/engine/Contents.h"
#include "platform/engine/Providers.h"
#include "platform/engine/Templates.h"
#include "platform/engine/Variables.h"

namespace quillbox {

// The document engine: turns templates and the items of providers into pages, and runs the help compiler.
// Plain public members are settings that one side writes and the other reads.
class Document : public Object {
  public:
    static constexpr std::string_view kClassName = "Document";
    std::string_view ClassName() const override { return kClassName; }

    Ref<quillbox::VariableValues> VariableValues = make<quillbox::VariableValues>();
    // "CM.Quillbox" the project, "PlugIns", "NamespaceExclusions".
    Ref<Collection> Objects = make<Collection>();
    Ref<Collection> AuxiliaryList = make<Collection>();
    Ref<quillbox::PageTemplates> PageTemplates = make<quillbox::PageTemplates>();
    Ref<Object> TemplateHost;
    std::string TemplateName;
    // Folder of everything generated; ends in a separator.
    std::string OutputPath;
    // Where set, everything is written here in place of OutputPath.
    std::string OutputRoot;
    // Files below OutputPath that are not the build's own, by relative name. A page, input or support file
    // that would replace one ends the build before anything is written; what pages refer to among them is not
    // reported.
    Ref<Collection> KeptFiles = make<Collection>();
    std::string OutputFileName;
    std::string CompileType;
    std::string Help2Namespace;
    std::string Help2FileID;
    std::string Title;
    std::string CompilerInputFile;
    bool Compile = false;
    std::string CompilerFileName;
    // The file name of the start page.
    std::string DefaultTopic;
    std::string ProgressCaption;
    std::string ProgressVerb;
    Ref<Collection> TOCDefs = make<Collection>();
    std::string TOCBookPrefix, TOCNodeScrap, TOCBookSuffix;
    bool SwitchA = false, SwitchB = false, SwitchC = false;
    bool IncludePrivateMembers = false;

    // A file is on disk. Its name is relative to the output folder.
    sigc::signal<void(const std::string&)> ContentCreated;
    // Told before it, for who needs the name alone: the file may still be on its way to the disk. Where
    // nobody hears `ContentCreated`, pages are put on disk while the next ones are made.
    sigc::signal<void(const std::string&)> ContentMade;
    sigc::signal<void(const Ref<TemplatePage>&, const Ref<NamespaceDef>&, const Ref<Object>&,
                      bool& dontGenerate)>
        BeforeOutputNamespacePage;
    // What is being done, and how many of how many pages are written.
    sigc::signal<void(const std::string& caption, int done, int total)> Progress;

    // The template being generated; none outside a build where no TemplateName fits.
    virtual Ref<PageTemplate> Template() = 0;
    // The definitions of a loaded related project.
    virtual Ref<quillbox::NamespaceDefs> NamespaceDefs() = 0;
    // The provider registered under a class name, one for each document; fails for an unknown one.
    virtual Ref<Object> NamespaceProvider(const std::string& className) = 0;
    virtual std::string CompilerLog() const = 0;
    virtual bool Cancelled() const = 0;
    // Asks a running build to stop at the next page.
    virtual void Cancel() = 0;
    virtual void Build() = 0;
    // Begins "!MISSING" where the template has no such scrap.
    virtual std::string Scrap(const std::string& name) = 0;
    virtual bool IsMemberIncluded(const std::string& name) = 0;
    virtual void StreamTOC(const Ref<FileSystemObject>& file, const Ref<PageTemplate>& pageTemplate) = 0;
    virtual void CopyTemplateSupportFiles(const Ref<PageTemplate>& pageTemplate) = 0;
    virtual Ref<LoadedPage> LoadPage(const std::string& file) = 0;

    // The general tags; an IDataProvider of this document. What they read of other tags `asker` gives, which
    // outlives it; where there is none, the data provider of the first source.
    virtual Ref<Object> NewCommonProvider(IDataProvider* asker) = 0;
    virtual std::unique_ptr<Condition> NewCondition(const std::string& text) = 0;
};

class DocumentEngine {
  public:
    virtual ~DocumentEngine() = default;
    virtual Ref<Document> NewDocument() = 0;
    virtual TemplateService& Templates() = 0;
};

}  // namespace quillbox
