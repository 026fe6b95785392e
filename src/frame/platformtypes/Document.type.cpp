#include "platform/engine/Document.h"

#include "build/ItemFamily.h"
#include "frame/platformtypes/PlatformTypes.h"
#include "frame/typelib/Describe.h"

namespace quillbox {

namespace {

void settings(Describe<Document>& describe) {
    describe
        .field("OutputPath", &Document::OutputPath, "Folder of everything generated; ends in a separator.")
        .field("OutputRoot", &Document::OutputRoot,
               "Where set, everything is written here in place of OutputPath.")
        .field("OutputFileName", &Document::OutputFileName, "Full name of the compiled file.")
        .field("CompileType", &Document::CompileType, "Compile type as decimal text.")
        .field("Help2Namespace", &Document::Help2Namespace, "Help 2.0 namespace.")
        .field("Help2FileID", &Document::Help2FileID, "Help 2.0 file id.")
        .field("Title", &Document::Title, "Help title; also the base name of compiler project files.")
        .field("CompilerInputFile", &Document::CompilerInputFile, "Project file that the compiler gets.")
        .field("Compile", &Document::Compile, "Whether the compiler runs after the generation.")
        .field("CompilerFileName", &Document::CompilerFileName,
               "Compiler to run; empty means the one that is found.")
        .field("DefaultTopic", &Document::DefaultTopic, "File name of the start page.")
        .field("ProgressCaption", &Document::ProgressCaption, "What is being done.")
        .field("ProgressVerb", &Document::ProgressVerb, "What is being done, in one word.")
        .field("SwitchA", &Document::SwitchA, "Set once a build.")
        .field("SwitchB", &Document::SwitchB, "Set once a build.")
        .field("SwitchC", &Document::SwitchC, "Set once a build.")
        .field("IncludePrivateMembers", &Document::IncludePrivateMembers,
               "Whether private members are written.");
}

void contents(Describe<Document>& describe) {
    describe
        .part("TOCDefs", &Document::TOCDefs, "One contents definition for each template, keyed by its name.")
        .field("TOCBookPrefix", &Document::TOCBookPrefix, "How StreamTOC opens a book.")
        .field("TOCNodeScrap", &Document::TOCNodeScrap, "How StreamTOC writes a node.")
        .field("TOCBookSuffix", &Document::TOCBookSuffix, "How StreamTOC closes a book.")
        .method("StreamTOC", &Document::StreamTOC, {"File", "Template"},
                "Writes the contents of a template to a file.");
}

}  // namespace

ClassInfo describeDocument() {
    Describe<Document> describe(
        "Document", "The document engine: turns a template and the items of providers into pages.");
    describe.unpublished()
        .creatable([] { return documentEngine().NewDocument(); })
        .part("VariableValues", &Document::VariableValues, "The values of variable tags.")
        .part("Objects", &Document::Objects, "What providers share, by key.")
        .part("AuxiliaryList", &Document::AuxiliaryList, "A list of the related project.")
        .part("PageTemplates", &Document::PageTemplates, "The templates that take part in the build.")
        .read("Template", &Document::Template, "The template being generated; may be none.")
        .field("TemplateHost", &Document::TemplateHost, "The template service's shared object.")
        .field("TemplateName", &Document::TemplateName, "Name of the template to generate.")
        .read("NamespaceDefs", &Document::NamespaceDefs, "The definitions of a loaded related project.")
        .method("NamespaceProvider", &Document::NamespaceProvider, {"Name"},
                "The provider registered under a class name; fails for an unknown one.");
    settings(describe);
    contents(describe);
    return describe.read("CompilerLog", &Document::CompilerLog, "What the last compiler run wrote.")
        .read("Cancelled", &Document::Cancelled, "Whether the last build was stopped.")
        .method("Build", &Document::Build,
                "Generates everything and compiles if asked; returns when it is done.")
        .method("Cancel", &Document::Cancel, "Asks a running build to stop at the next page.")
        .method("Scrap", &Document::Scrap, {"Name"},
                "Text of a scrap; begins \"!MISSING\" where there is none.")
        .method("IsMemberIncluded", &Document::IsMemberIncluded, {"Name"}, "Whether a member is included.")
        .method("CopyTemplateSupportFiles", &Document::CopyTemplateSupportFiles, {"Template"},
                "Copies the template's support files to the output folder.")
        .method("LoadPage", &Document::LoadPage, {"File"}, "Loads one page file of a template.")
        .event("ContentCreated", 1, &Document::ContentCreated, {"Filename"})
        .event("BeforeOutputNamespacePage", 2, &Document::BeforeOutputNamespacePage,
               {"PageLayout", "NameSpaceDef", "Item", "DontGenerate"})
        .event("Progress", 3, &Document::Progress, {"Caption", "Done", "Total"})
        .done();
}

ClassInfo describeElement() {
    return Describe<Element>(
               "Element", "One tag of a template: its type under the key \"type\", its attributes by name.")
        .unpublished()
        .creatable()
        .field("Kind", &Element::Kind, "2 for a tag.")
        .part("Attributes", &Element::Attributes, "Texts by key.")
        .done();
}

}  // namespace quillbox
