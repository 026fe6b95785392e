#include "platform/engine/Templates.h"

#include "frame/platformtypes/PlatformTypes.h"
#include "frame/typelib/Describe.h"

namespace quillbox {

ClassInfo describePageTemplates() {
    return Describe<PageTemplates>("PageTemplates", "Page templates by name.")
        .unpublished()
        .creatable()
        .read("Item", &PageTemplates::Item, {"Key"},
              "The template of a name or position; fails for an unknown one.")
        .isDefault()
        .method("Add", &PageTemplates::Add, {"Item", optional("Key")}, "Adds a template.")
        .method("Remove", &PageTemplates::Remove, {"Key"}, "Removes a template; fails for an unknown one.")
        .read(
            "Count", [](PageTemplates& list) { return list.Count(); }, "Number of templates.")
        .enumerates([](PageTemplates& list) { return list.Items(); })
        .done();
}

ClassInfo describePageTemplate() {
    return Describe<PageTemplate>("PageTemplate",
                                  "A folder of pages with tags, from which help is generated.")
        .unpublished()
        .read("Name", &PageTemplate::Name, "Name of the template.")
        .read("Path", &PageTemplate::Path, "Folder of the template, with its trailing separator.")
        .read("Supports", &PageTemplate::Supports, "Flag letters; \"p\" marks a print template.")
        .read("Pages", &PageTemplate::Pages, "The pages, in the order of the template.")
        .read("NamespaceDefs", &PageTemplate::NamespaceDefs, "The kinds of items that pages can be bound to.")
        .read("Namespaces", &PageTemplate::Namespaces,
              "Names of the providers that the template is made for.")
        .done();
}

ClassInfo describeTemplatePage() {
    return Describe<TemplatePage>("TemplatePage", "A page of a template.")
        .unpublished()
        .field("Name", &TemplatePage::Name, "The page's file name.")
        .field("NamespaceItemType", &TemplatePage::NamespaceItemType,
               "The item type that the page is bound to; empty for a page that is written once.")
        .done();
}

ClassInfo describeLoadedPage() {
    return Describe<LoadedPage>("LoadedPage", "A page of a template that is rendered by hand.")
        .unpublished()
        .method("SetDataProvider", &LoadedPage::SetDataProvider, {"Provider"},
                "Sets where the tags get their values.")
        .method("Render", &LoadedPage::Render, "The page with its tags replaced.")
        .done();
}

ClassInfo describeNamespaceDef() {
    return Describe<NamespaceDef>("NamespaceDef", "One kind of item that pages can be bound to.")
        .unpublished()
        .creatable()
        .field("Name", &NamespaceDef::Name, "Item type, such as \"cm.quillbox:topic\".")
        .field("NamespaceProvider", &NamespaceDef::NamespaceProvider,
               "Name of the provider that has the items.")
        .field("ParentName", &NamespaceDef::ParentName,
               "Item type that these items hang under; empty at the top.")
        .field("IncludeFlag", &NamespaceDef::IncludeFlag, "Whether items are included.")
        .field("ProvideIncludeFlag", &NamespaceDef::ProvideIncludeFlag,
               "Whether items say themselves if they are included.")
        .done();
}

ClassInfo describeNamespaceDefs() {
    return Describe<NamespaceDefs>("NamespaceDefs", "Kinds of items, in order.")
        .unpublished()
        .creatable()
        .read("Item", &NamespaceDefs::Item, {"Index"},
              "The definition at a position; fails for an unknown one.")
        .isDefault()
        .method("Add", &NamespaceDefs::Add, {"Item"}, "Adds a definition.")
        .read(
            "Count", [](NamespaceDefs& list) { return list.Count(); }, "Number of definitions.")
        .method("ByName", &NamespaceDefs::ByName, {"Name"}, "The definitions of an item type.")
        .method("ByRootName", &NamespaceDefs::ByRootName, {"Name"},
                "The definitions of an item type, with or without its family.")
        .enumerates([](NamespaceDefs& list) { return list.Items(); })
        .done();
}

}  // namespace quillbox
