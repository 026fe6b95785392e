#include "build/ItemFamily.h"

#include "base/AutomationError.h"
#include "build/ItemAs.h"
#include "build/QbNamespaceProvider.h"
#include "frame/Platform.h"
#include "project/QbProject.h"

namespace quillbox {

namespace {

// Each kind of item and the kind that it hangs under. The project comes first: it stands for the family.
constexpr const char* kKinds[][2] = {
    {"qbproject", ""},
    {"topicset", ""},
    {"topic", "qbproject"},
    {"manifest", ""},
    {"manifestentry", "manifest"},
    {"linkcategory", "topic"},
    {"link", "linkcategory"},
    {"glossaryletter", ""},
    {"glossaryitem", "glossaryletter"},
    {"indexletter", ""},
    {"indexterm", "indexletter"},
    {"indexpage", "indexterm"},
};

Ref<NamespaceDefs> itemDefinitions() {
    const auto typeOf = [](const char* kind) { return std::string(kItemFamily) + ":" + kind; };
    auto defs = make<NamespaceDefs>();
    for (const auto& [kind, parent] : kKinds) {
        auto def = make<NamespaceDef>();
        def->Name = typeOf(kind);
        def->NamespaceProvider = kProviderName;
        if (*parent) def->ParentName = typeOf(parent);
        defs->Add(def);
    }
    return defs;
}

}  // namespace

Ref<QbProject> projectOf(const Document& document) {
    const auto* found = document.Objects ? document.Objects->Find(kProviderName) : nullptr;
    const auto* object = found ? found->If<Ref<Object>>() : nullptr;
    return object ? itemAs<QbProject>(*object) : nullptr;
}

DocumentEngine& documentEngine() {
    static std::weak_ptr<DocumentEngine> told;
    const auto& engine = platform().engine;
    if (!engine) throw AutomationError("There is no document engine");
    if (told.lock() != engine) {
        engine->Templates().RegisterFamily({kItemFamily, kProviderName, kProviderClass, itemDefinitions(),
                                            [] { return make<QbNamespaceProvider>(); }});
        told = engine;
    }
    return *engine;
}

}  // namespace quillbox
