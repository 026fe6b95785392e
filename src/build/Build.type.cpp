#include "build/BuildResult.h"
#include "build/DummyWizardHost.h"
#include "build/QbDataProvider.h"
#include "build/QbNamespaceProvider.h"
#include "frame/PublishedClasses.h"
#include "frame/typelib/Describe.h"

namespace quillbox {

ClassInfo describeBuildResult() {
    using T = BuildResult;
    return Describe<T>("BuildResult", "What came of a build.")
        .creatable()
        .field("Cancelled", &T::Cancelled, "Returns True if the user cancelled the build")
        .field("CompilerLog", &T::CompilerLog,
               "Contains the Help Compiler log.  Only set if the compiler generated errors or warnings.")
        .done();
}

ClassInfo describeDummyWizardHost() {
    using T = DummyWizardHost;
    constexpr const char* kNothing = "Does nothing and returns an empty value.";
    return Describe<T>("DummyWizardHost", "A host for plug-ins where there is no wizard.")
        .creatable()
        .field("Document", &T::HostedDocument, "The document of the running build.")
        .method("ControlEnabled", &T::ControlEnabled, kNothing)
        .ofInterface()
        .method("ControlVisible", &T::ControlVisible, kNothing)
        .ofInterface()
        .method("MoveToWizardStage", &T::MoveToWizardStage, kNothing)
        .ofInterface()
        .method("AddCustomWizardPage", &T::AddCustomWizardPage, kNothing)
        .ofInterface()
        .method("AddCustomProjectSelector", &T::AddCustomProjectSelector, kNothing)
        .ofInterface()
        .method("ModuleListChanged", &T::ModuleListChanged, kNothing)
        .ofInterface()
        .method("Settings", &T::Settings, kNothing)
        .ofInterface()
        .method("RootProject", &T::RootProject, kNothing)
        .ofInterface()
        .done();
}

namespace {

using D = QbDataProvider;

void describeItemMembers(Describe<D>& d) {
    using Item = const Ref<Object>&;
    d.property("CurrentRootItem", &D::CurrentRootItem, &D::SetCurrentRootItem,
               "The project being built. Each write restarts its counters.")
        .ofInterface()
        .property("CurrentParentItem", &D::CurrentParentItem, &D::SetCurrentParentItem,
                  "The item of the list around the current one.")
        .ofInterface()
        .property("CurrentItemType", &D::CurrentItemType, &D::SetCurrentItemType,
                  "The name of the current item's type.")
        .ofInterface()
        .property(
            "CurrentItem", [](D& p) { return p.CurrentItem(); },
            [](D& p, Item item) { p.SetCurrentItem(item); }, "The item whose data is asked for.")
        .ofInterface()
        .property("NamespaceDef", &D::NamespaceDef, &D::SetNamespaceDef,
                  "The definition of the current item's type.")
        .ofInterface()
        .method(
            "SetCurrentItem",
            [](D& p, const Ref<NamespaceDef>& def, Item item, const std::string& type, Item parent) {
                p.SetCurrentItem(def, item, type, parent);
            },
            {"NameSpaceDef", "Item", "ItemType", "ParentItem"}, "Makes an item current.")
        .ofInterface();
}

}  // namespace

ClassInfo describeQbDataProvider() {
    Describe<D> d("QbDataProvider", "Data Provider, used by the topic build engine.");
    d.creatable()
        .property("Document", &D::Document, &D::SetDocument, "The document that is being built.")
        .method("ProvideData", &D::ProvideData, {"Element", {"FileSystemObject", Ref<Object>()}},
                "The value of one tag. FileSystemObject is the page being written, or none.")
        .ofInterface()
        .method("Initialise", &D::Initialise, {"ParserTemplate"}, "Does nothing.")
        .ofInterface()
        .method("Terminate", &D::Terminate, "Does nothing.")
        .ofInterface();
    describeItemMembers(d);
    return d
        .method("ParseForProperties", &D::ParseForProperties, {"S"}, "The text with the values of its tags.")
        .ofInterface()
        .method("GetProperty", &D::GetProperty, {"Item"}, "A simple value of the current item, by name.")
        .ofInterface()
        .method("Clone", &D::Clone, "Another provider with the same current item.")
        .ofInterface()
        .done();
}

namespace {

using N = QbNamespaceProvider;

void describeProcessing(Describe<N>& d) {
    d.method("ContentCreated", &N::ContentCreated, {"Item", "NameSpaceDef", "Filename"},
             "Notes a file that was written, by its full name.")
        .ofInterface()
        .method("BeforeProcessRootItem", &N::BeforeProcessRootItem, {"RootItem"}, "Chooses the start page.")
        .ofInterface()
        .method("AfterProcessRootItem", &N::AfterProcessRootItem, {"RootItem"},
                "Chooses the start page again, among the topics marked for it.")
        .ofInterface()
        .method("BeforeProcessItem", &N::BeforeProcessItem, {"Item", "RootItem"}, "Does nothing.")
        .ofInterface()
        .method("AfterProcessItem", &N::AfterProcessItem, {"Item", "RootItem"},
                "Names the project file that the compiler gets.")
        .ofInterface();
}

}  // namespace

ClassInfo describeQbNamespaceProvider() {
    Describe<N> d("QbNamespaceProvider", "Shows a project to the document engine as a tree of typed items.");
    d.creatable()
        .method("GetItems", &N::GetItems, {"NameSpaceDef", "ParentItem", {"Filter", ""}},
                "The items of a kind below a parent item; an empty collection where there are none.")
        .ofInterface()
        .read("DocumentDataProvider", &N::DocumentDataProvider, "The data provider of these items.")
        .ofInterface()
        .method("Initialise", &N::Initialise, {"Document"},
                "Takes the document; with none, makes one with a new project in it.")
        .ofInterface()
        .method("GetRootItem", &N::GetRootItem, {"NameSpaceDef", "Moniker"}, "Returns none.")
        .ofInterface()
        .method("GetObjectFromQualifiedName", &N::GetObjectFromQualifiedName, {"QualifiedName"},
                "The project by its file name, or a topic by its key; none for any other name.")
        .ofInterface()
        .method("GetNamespaceDefFromObject", &N::GetNamespaceDefFromObject, {"NamespaceDefs", "obj"},
                "Returns none.")
        .ofInterface()
        .method("AddRootItem", &N::AddRootItem, {"RootItem"}, "Does nothing.")
        .ofInterface()
        .method("StreamContent", &N::StreamContent, {"OutputFile", "ContentType"},
                "Writes generated content of a compiler input: index, files, map, alias or EmbeddedTOC.")
        .ofInterface()
        .read("Name", &N::Name, "The name that templates know this provider by.")
        .ofInterface();
    describeProcessing(d);
    return d.method("GetModuleItems", &N::GetModuleItems, "Returns an empty collection.")
        .ofInterface()
        .method("BrowseForMoniker", &N::BrowseForMoniker, {"Filename", "Flags"},
                "Asks for a topic file; empty where none was chosen.")
        .ofInterface()
        .method("VerifyMoniker", &N::VerifyMoniker, {"Moniker", "Message"}, "Returns False.")
        .ofInterface()
        .done();
}

}  // namespace quillbox
