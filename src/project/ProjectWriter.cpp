#include "project/ProjectWriter.h"

#include "booklets/Manifest.h"
#include "content/GlossaryItems.h"
#include "content/OtherFiles.h"
#include "content/QbNode.h"
#include "content/Tasks.h"
#include "frame/Platform.h"
#include "frame/Version.h"
#include "frame/XmlAccess.h"
#include "project/LocaleDate.h"
#include "project/QbProject.h"
#include "project/TextCheck.h"
#include "topics/Topic.h"
#include "topics/TopicCategories.h"
#include "topics/Topics.h"

namespace quillbox {

void ProjectWriter::Write(const Ref<XMLElement>& root) {
    auto& p = mProject;
    root->SetName("QbProject");
    writeSettings(root);
    root->AddChild("SpellIgnoreAllWordList", join(p.SpellIgnoreAllWordList->Texts(), "|"));
    for (const auto& category : p.TopicCategories->Items()) category->Save(root->AddChild("cat", ""));
    writeVariables(root);
    for (const auto& file : p.OtherFiles->Items()) file->Save(root->AddChild("file", ""));
    for (const auto& topic : p.Topics->Items()) topic->Save(root->AddChild("Topic", ""));
    p.GlossaryItems()->Save(root->AddChild("GlossaryItems", ""));
    p.Manifests()->Save(root->AddChild("Manifests", ""));
    p.QbNodes()->Save(root->AddChild("Nodes", ""));
    p.Tasks->Save(root->AddChild("Tasks", ""));
}

void ProjectWriter::writeSettings(const Ref<XMLElement>& root) {
    const auto& p = mProject;
    addInteger(root, "ProjectType", p.ProjectType());
    root->AddAttribute("Version", kVersion);
    root->AddAttribute("SaveDateTime", platform().system->Now().Format("dd/mm/yyyy hh:nn:ss"));
    root->AddAttribute("CMPFileName", p.CMPFileName());
    root->AddAttribute("TemplateName", p.TemplateName());
    root->AddAttribute("SpellLastCheckDateTime", localeText(p.SpellLastCheckDateTime()));
    root->AddAttribute("Title", p.Title());
    root->AddAttribute("OutputFilename", p.OutputFileName());
    addInteger(root, "CompileType", p.CompileType());
    root->AddAttribute("Help2Namespace", p.Help2Namespace());
    root->AddAttribute("Help2FileID", p.Help2FileID());
    addBoolean(root, "SSActivated", p.SSActivated());
    root->AddAttribute("SSProject", p.SSProject());
    root->AddAttribute("HelpContextIDHeaderFile", p.HelpContextIDHeaderFile());
}

void ProjectWriter::writeVariables(const Ref<XMLElement>& root) {
    for (const auto& variable : mProject.VariableValues->Items()) {
        if (variable->Name.empty()) continue;
        root->AddChild("VariableValue", variable->Value)->AddAttribute("Name", variable->Name);
    }
}

void ProjectWriter::Check() {
    auto& p = mProject;
    const auto root = makeTextCheck();
    const auto check = [&](const std::string& what, auto&& write) { inside([&] { return what; }, write); };
    check("Project settings", [&] { writeSettings(root); });
    check("Word list",
          [&] { root->AddChild("SpellIgnoreAllWordList", join(p.SpellIgnoreAllWordList->Texts(), "|")); });
    for (const auto& category : p.TopicCategories->Items()) {
        check("Category '" + category->Name() + "'", [&] { category->Save(root->AddChild("cat", "")); });
    }
    check("Variables", [&] { writeVariables(root); });
    for (const auto& file : p.OtherFiles->Items()) {
        check("File '" + file->LocalSpec() + "'", [&] { file->WriteContent(root->AddChild("file", "")); });
    }
    for (const auto& topic : p.Topics->Items()) {
        check("Topic '" + topic->Name() + "'", [&] { checkTopic(root, *topic); });
    }
    p.GlossaryItems()->WriteContent(root->AddChild("GlossaryItems", ""));
    p.Manifests()->WriteContent(root->AddChild("Manifests", ""));
    p.QbNodes()->WriteContent(root->AddChild("Nodes", ""));
    p.Tasks->WriteContent(root->AddChild("Tasks", ""));
}

void ProjectWriter::checkTopic(const Ref<XMLElement>& root, Topic& topic) {
    const auto e = root->AddChild("Topic", "");
    e->AddAttribute("Key", topic.Key);
    const bool hasFile = mProject.ProjectType() == ProjectTypeSeparateFiles && !mProject.IsConverting();
    const bool staysAsItIs = hasFile && !topic.Dirty() && newFile(topic.LocalSpec())->Exists();
    if (!staysAsItIs) topic.WriteContent(e);
}

}  // namespace quillbox
