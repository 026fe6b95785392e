#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>

#include "Commands.h"
#include "OpenProject.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "content/GlossaryItems.h"
#include "content/OtherFiles.h"
#include "content/QbNode.h"
#include "content/Tasks.h"
#include "headerids/HeaderIds.h"
#include "topics/Topic.h"
#include "topics/TopicCategories.h"
#include "topics/Topics.h"

namespace quillbox::cli {

namespace {

using Json = nlohmann::ordered_json;

template <class List, class Describe>
Json listOf(const List& list, Describe&& describe) {
    Json items = Json::array();
    for (const auto& item : list->Items()) items.push_back(describe(*item));
    return items;
}

Json describeTopicOf(Topic& topic) {
    const auto category = topic.TopicCategory();
    return {{"key", topic.Key},
            {"name", topic.Name()},
            {"title", topic.Title()},
            {"status", topic.Status()},
            {"category", category ? category->Name() : ""},
            {"keywords", topic.Keywords->Texts()},
            {"contextIds", topic.HelpContextIDs()},
            {"inHelpFile", topic.IncludeInHelpFile()},
            {"default", topic.IsDefault()},
            {"relatedTopics", listOf(topic.RelatedTopics(), [](RelatedTopic& related) {
                 const auto child = related.RelatedTopicType() == rttTopic ? related.ChildTopic() : nullptr;
                 return Json{{"category", related.Category()},
                             {"title", related.Title()},
                             {"target", related.RelatedTopicType() == rttURL ? related.URL()
                                        : child                              ? child->Name()
                                                                             : related.ChildTopicKey}};
             })}};
}

Json describeNode(QbNode& node) {
    const auto topic = node.Topic();
    return {
        {"caption", node.CaptionType() == ctDefault && topic ? topic->ContentsTitle() : node.CaptionText()},
        {"target", topic ? topic->Name() : node.StandardURL()},
        {"children", listOf(node.ChildNodes, describeNode)}};
}

Json describeEntry(ManifestEntry& entry) {
    return {{"title", entry.RuntimeTitle()}, {"children", listOf(entry.ChildEntries, describeEntry)}};
}

Json describeProject(QbProject& p) {
    Json info = {
        {"file", p.Filename->FullPath()},
        {"title", p.Title()},
        {"projectType", p.ProjectType() == ProjectTypeSeparateFiles ? "separate-files" : "single-file"},
        {"template", p.TemplateName()},
        {"output", p.OutputFileName()}};
    info["categories"] = listOf(p.TopicCategories, [](TopicCategory& category) { return category.Name(); });
    info["variables"] = Json::object();
    for (const auto& variable : p.VariableValues->Items())
        info["variables"][variable->Name] = variable->Value;
    info["topics"] = listOf(p.Topics, describeTopicOf);
    info["contents"] = listOf(p.QbNodes(), describeNode);
    info["glossary"] = listOf(p.GlossaryItems(), [](GlossaryItem& item) {
        return Json{{"term", item.Term()}, {"definition", item.Definition()}};
    });
    info["tasks"] = listOf(p.Tasks, [](Task& task) {
        return Json{{"title", task.Title()},
                    {"status", task.Status()},
                    {"priority", task.Priority()},
                    {"assignedTo", task.AssignedTo()}};
    });
    info["otherFiles"] = listOf(p.OtherFiles, [](OtherFile& file) { return file.RelativeFileName(); });
    info["manifests"] = listOf(p.Manifests(), [](Manifest& manifest) {
        return Json{{"name", manifest.Name()},
                    {"type", manifest.ManifestType() == mtBooklet ? "booklet" : "browse-sequence"},
                    {"included", manifest.IncludeFlag()},
                    {"entries", listOf(manifest.Entries(), describeEntry)}};
    });
    const auto ids = p.HeaderIds();
    info["headerIds"] = ids ? listOf(ids,
                                     [](HeaderId& id) {
                                         return Json{{"name", id.Name}, {"value", id.Value}};
                                     })
                            : Json::array();
    return info;
}

void printLine(const char* what, const std::string& value) { std::printf("%-12s %s\n", what, value.c_str()); }

int info(const std::string& path, bool json) {
    const auto project = openProject(path);
    if (json) {
        std::printf("%s\n",
                    describeProject(*project).dump(2, ' ', false, Json::error_handler_t::replace).c_str());
        return kDone;
    }
    auto& p = *project;
    printLine("Title", p.Title());
    printLine("File", p.Filename->FullPath());
    printLine("Type", p.ProjectType() == ProjectTypeSeparateFiles ? "a file per topic" : "one file");
    printLine("Template", p.TemplateName());
    printLine("Output", p.OutputFileName());
    const auto printCount = [](const char* what, int count) { printLine(what, std::to_string(count)); };
    printCount("Topics", p.Topics->Count());
    printCount("Categories", p.TopicCategories->Count());
    printCount("Contents", p.QbNodes()->AllNodes()->Count());
    printCount("Glossary", p.GlossaryItems()->Count());
    printCount("Tasks", p.Tasks->Count());
    printCount("Other files", p.OtherFiles->Count());
    printCount("Manifests", p.Manifests()->Count());
    printCount("Variables", p.VariableValues->Count());
    return kDone;
}

}  // namespace

void addInfo(CLI::App& app, Run& run) {
    struct Options {
        std::string project;
        bool json = false;
    };
    auto options = std::make_shared<Options>();
    auto* command = app.add_subcommand("info", "Tells what a project holds");
    command->add_option("PROJECT", options->project, "The project file (.qbp)")->required();
    command->add_flag("--json", options->json, "For programs");
    command->callback([options, &run] { run = [options] { return info(options->project, options->json); }; });
}

}  // namespace quillbox::cli
