#include "project/ProjectReader.h"

#include "booklets/Manifest.h"
#include "content/GlossaryItems.h"
#include "content/OtherFiles.h"
#include "content/QbNode.h"
#include "content/Tasks.h"
#include "frame/XmlAccess.h"
#include "project/LocaleDate.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/TopicCategories.h"
#include "topics/Topics.h"

namespace quillbox {

namespace {

// Makes an item from its element and adds it to its collection, which is held: a handler of the addition may
// load the project anew.
template <class T, class List>
Ref<T> addItem(QbProject& project, Ref<List> list, const Ref<XMLElement>& e) {
    const auto item = make<T>();
    item->SetQbProject(self(&project));
    item->Load(e);
    list->Add(item, item->Key);
    return item;
}

}  // namespace

void ProjectReader::Read(const Ref<XMLElement>& root) {
    readSettings(root);
    replaceCollections();
    const auto name = root->Name();
    if (name == "QbProject" || name == "TopicSet") {
        forEachChild(root, [&](const Ref<XMLElement>& child) { readTopics(child); });
        forEachChild(root, [&](const Ref<XMLElement>& child) { readRest(child); });
    }
    if (mProject.TemplateName().empty()) {
        ignoringFailures([&] { mProject.SetTemplateName(mProject.VariableValues->Item("Template")->Value); });
    }
    if (mHasOldKeys) migrateOldKeys(mProject);
}

void ProjectReader::readSettings(const Ref<XMLElement>& root) {
    auto& p = mProject;
    const auto read = [&](const char* name, auto&& use) { optionalAttribute(root, name, use); };
    using Text = const std::string&;
    read("ProjectType", [&](Text v) { p.SetProjectType(static_cast<ProjectTypeEnum>(integerOf(v))); });
    read("CMPFileName", [&](Text v) { p.SetCMPFileName(v); });
    read("TemplateName", [&](Text v) { p.SetTemplateName(v); });
    read("SpellLastCheckDateTime", [&](Text v) { p.SetSpellLastCheckDateTime(dateOfLocale(v)); });
    read("Title", [&](Text v) { p.SetTitle(v); });
    read("OutputFileName", [&](Text v) { p.SetOutputFileName(v); });
    read("CompileType", [&](Text v) { p.SetCompileType(static_cast<CompileTypeEnum>(integerOf(v))); });
    read("Help2Namespace", [&](Text v) { p.SetHelp2Namespace(v); });
    read("Help2fileid", [&](Text v) { p.SetHelp2FileID(v); });
    read("SSActivated", [&](Text v) { p.SetSSActivated(isTrue(v)); });
    read("SSProject", [&](Text v) { p.SetSSProject(v); });
    read("HelpContextIDHeaderFile", [&](Text v) { p.SetHelpContextIDHeaderFile(v); });
}

void ProjectReader::replaceCollections() {
    auto& p = mProject;
    p.TopicCategories = p.adopt(make<TopicCategories>());
    p.SetQbNodes(p.adopt(make<QbNodes>()));
    p.Topics = p.adopt(make<Topics>());
    p.SetManifests(p.adopt(make<Manifests>()));
    p.mGlossaryItems = p.adopt(make<GlossaryItems>());
    p.VariableValues = make<VariableValues>();
    p.OtherFiles = p.adopt(make<OtherFiles>());
    p.Tasks = p.adopt(make<Tasks>());
}

void ProjectReader::readTopics(const Ref<XMLElement>& child) {
    const auto name = lower(child->Name());
    if (name == "cat") {
        addItem<TopicCategory>(mProject, mProject.TopicCategories, child);
    } else if (name == "topic") {
        const auto topic = addItem<Topic>(mProject, mProject.Topics, child);
        if (topic->Key.starts_with("T")) mHasOldKeys = true;
    }
}

void ProjectReader::readRest(const Ref<XMLElement>& child) {
    auto& p = mProject;
    const auto name = lower(child->Name());
    if (name == "nodes") {
        p.LoadProgress("Loading Table of Contents");
        p.QbNodes()->Load(child);
    } else if (name == "variablevalue") {
        readVariable(child);
    } else if (name == "file") {
        p.LoadProgress("Loading Other Files List");
        const auto file = make<OtherFile>();
        file->SetQbProject(self(&p));
        file->Load(child);
        const auto files = p.OtherFiles;
        files->Add(file, file->LocalSpec());
    } else if (name == "spellignoreallwordlist") {
        p.LoadProgress("Loading Spelling Settings");
        p.SpellIgnoreAllWordList = make<Collection>();
        for (const auto& word : split(child->Text(), "|")) {
            // A word has itself as key; one that stands twice stays in the list all the same.
            const bool again = p.SpellIgnoreAllWordList->HasKey(word);
            p.SpellIgnoreAllWordList->Add(word, again ? Value() : Value(word));
        }
    } else if (name == "glossaryitem") {
        p.LoadProgress("Loading Glossary");
        addItem<GlossaryItem>(p, p.GlossaryItems(), child);
    } else if (name == "manifest" || name == "m") {
        p.LoadProgress("Loading Booklets");
        addItem<Manifest>(p, p.Manifests(), child);
    } else if (name == "glossaryitems") {
        p.LoadProgress("Loading Glossary");
        p.GlossaryItems()->Load(child);
    } else if (name == "manifests") {
        p.LoadProgress("Loading Booklets");
        p.Manifests()->Load(child);
    } else if (name == "tasks") {
        p.LoadProgress("Loading Tasks");
        p.Tasks->Load(child);
    }
}

void ProjectReader::readVariable(const Ref<XMLElement>& child) {
    auto& p = mProject;
    const auto variable = make<VariableValue>();
    variable->Name = required(child, "Name");
    variable->Value = child->Text();
    // Older files kept settings among the variables.
    if (variable->Name == "Template") {
        p.SetTemplateName(variable->Value);
    } else if (variable->Name == "HelpCompilerVersion") {
        p.SetCompileType(static_cast<CompileTypeEnum>(toInteger(leadingNumber(variable->Value))));
    } else if (variable->Name == "OutputFileName") {
        p.SetOutputFileName(variable->Value);
    } else if (variable->Name == "Help2Namespace") {
        p.SetHelp2Namespace(variable->Value);
    } else if (variable->Name == "Help2FileID") {
        p.SetHelp2FileID(variable->Value);
    } else {
        p.VariableValues->Add(variable, variable->Name);
    }
}

}  // namespace quillbox
