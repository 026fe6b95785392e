#pragma once

#include "build/FakeDocument.h"
#include "build/ItemFamily.h"
#include "build/QbDataProvider.h"
#include "build/QbNamespaceProvider.h"
#include "support/ProjectTest.h"

namespace quillbox {

// A test on a project with a document engine of the tests' own, which has one template for help, "Help".
class BuildTest : public ProjectTest {
  protected:
    BuildTest() {
        platform().engine = engine;
        documentEngine();  // tells the engine of the items
        helpTemplate = engine->AddTemplate("Help");
        helpTemplate->AddPage("Topic.html", kTopicItems);
        project->SetTitle("Manual");
        project->SetOutputFileName("/work/manual/Manual.chm");
    }

    std::shared_ptr<FakeEngine> engine = std::make_shared<FakeEngine>();
    Ref<FakeTemplate> helpTemplate;
};

// A document in the middle of a build, and the providers that serve it.
class ProviderTest : public BuildTest {
  protected:
    ProviderTest() {
        document->PageTemplates->Add(helpTemplate, helpTemplate->Name());
        document->TemplateName = "Help";
        document->Title = "Manual";
        document->OutputPath = kFolder;
        document->CompileType = "1";
        document->Objects->Add(project, kProviderName);
        data->SetCurrentRootItem(project);
    }

    Ref<NamespaceDef> def(const std::string& itemType) const {
        return engine->family.defs->ByName(itemType)->Item(1);
    }
    std::vector<Ref<Object>> items(const std::string& kind, const Ref<Object>& parent = nullptr,
                                   const std::string& filter = "") const {
        return provider->GetItems(def("cm.quillbox:" + kind), parent, filter);
    }
    void makeCurrent(const Ref<Object>& item, const Ref<Object>& parent = nullptr) const {
        data->SetCurrentItem(nullptr, item, std::string(item->ClassName()), parent);
    }
    std::string expanded(const std::string& text) const { return data->ParseForProperties(text); }

    Ref<FakeDocument> document = std::dynamic_pointer_cast<FakeDocument>(engine->NewDocument());
    Ref<QbNamespaceProvider> provider =
        std::dynamic_pointer_cast<QbNamespaceProvider>(document->NamespaceProvider(kProviderClass));
    Ref<QbDataProvider> data = std::dynamic_pointer_cast<QbDataProvider>(provider->DocumentDataProvider());
};

}  // namespace quillbox
