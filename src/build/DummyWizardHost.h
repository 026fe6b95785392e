#pragma once

#include "platform/engine/Document.h"

namespace quillbox {

// Lets the plug-ins of a related project be attached where there is no wizard: every member does nothing.
class DummyWizardHost : public Object, public IWizardHost {
  public:
    static constexpr std::string_view kClassName = "DummyWizardHost";
    std::string_view ClassName() const override { return kClassName; }

    // Published as `Document`; the member of that name below is the plug-ins'.
    Ref<quillbox::Document> HostedDocument;

    Value ControlEnabled() override { return Value::None(); }
    Value ControlVisible() override { return Value::None(); }
    Value MoveToWizardStage() override { return Value::None(); }
    Value AddCustomWizardPage() override { return Value::None(); }
    Value AddCustomProjectSelector() override { return Value::None(); }
    Value ModuleListChanged() override { return Value::None(); }
    Value Settings() override { return Value::None(); }
    Value Document() override { return Value::None(); }
    Value RootProject() override { return Value::None(); }
};

}  // namespace quillbox
