#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "Input.h"
#include "adapters/TemporaryFolder.h"
#include "adapters/xml/PugiXml.h"
#include "base/AutomationError.h"
#include "base/Text.h"
#include "content/GlossaryItems.h"
#include "content/QbNode.h"
#include "engine/Engine.h"
#include "frame/Platform.h"
#include "library/PublishedProperty.h"
#include "platform/engine/Tags.h"
#include "project/QbProject.h"
#include "support/Doubles.h"
#include "topics/RelatedTopics.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace {

using namespace quillbox;

namespace fs = std::filesystem;

const TemporaryFolder& folder() {
    static const TemporaryFolder one;
    return one;
}

void put(const std::string& file, const std::string& text) {
    const auto path = folder().Path() + file;
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

// Text is cut at its tags without a loss, but for the tags that switch the cutting.
void checkPieces(const std::string& text, bool inQuotes) {
    TagPieces pieces;
    try {
        pieces = splitTags(text, inQuotes);
    } catch (const AutomationError&) {
        return;
    }
    std::string whole;
    for (const auto& piece : pieces) whole += piece.text;
    require(whole == text || lower(text).find("%%replaceinquotes") != std::string::npos);
}

void addTopic(QbProject& project, const std::string& name, const std::string& body) {
    const auto topic = project.NewTopic();
    topic->SetName(name);
    topic->SetTitle(name + " title");
    topic->AddKeyword("key:word");
    topic->SetTopicSectionData("BodyText", body);
    project.Topics->Add(topic, topic->Key);
    const auto node = project.QbNodes()->NewNode(nullptr);
    node->SetQbNodeType(ntSingleTopic);
    node->SetTopicID(topic->Key);
    const auto related = make<RelatedTopic>();
    related->ChildTopicKey = project.Topics->Item(1)->Key;
    related->SetCategory("See also");
    topic->RelatedTopics()->Add(related);
}

Ref<QbProject> madeProject(const std::string& body, const std::string& variableText) {
    auto project = make<QbProject>();
    project->Filename->SetPath(folder().Path() + "project/Manual.qbp");
    project->SetTitle("Manual");
    addTopic(*project, "First", "<p>first</p>");
    addTopic(*project, "Second", body);
    const auto term = project->NewGlossaryItem("term", "definition");
    project->GlossaryItems()->Add(term, term->Key);
    const auto variable = make<VariableValue>();
    variable->Name = "V";
    variable->Value = variableText;
    project->VariableValues->Add(variable, "V");
    return project;
}

Ref<Document> newDocument() {
    auto document = platform().engine->NewDocument();
    document->OutputRoot = folder().Path() + "out/";
    return document;
}

std::map<std::string, std::string> output() {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder().Path() + "out")) {
        if (!entry.is_regular_file()) continue;
        std::ifstream file(entry.path(), std::ios::binary);
        files[entry.path()] = {std::istreambuf_iterator<char>(file), {}};
    }
    return files;
}

void usePlatform() {
    auto& p = platform();
    p.system = std::make_shared<FixedSystem>();
    p.messages = std::make_shared<ScriptedBoxes>();
    p.engine = makeDocumentEngine({.xml = p.xml,
                                   .system = p.system,
                                   .templatesFolder = [] { return folder().Path() + "Templates"; },
                                   .version = "1",
                                   .readProperty = readPublishedProperty,
                                   .language = "en-US"});
}

}  // namespace

// A template of any text builds or tells why not, and a second build of the same document gives the same
// files.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto given = texts(data, size, 6);
    const auto &page = given[0], &scrap = given[1], &condition = given[2], &body = given[3],
               &variable = given[4], &attributes = given[5];
    checkPieces(page, true);
    checkPieces(scrap, false);

    for (const auto* name : {"out", "project", "Templates"}) {
        fs::remove_all(folder().Path() + name);
        fs::create_directories(folder().Path() + name);
    }
    put("Templates/T/template.xml",
        "<PageTemplate Name=\"T\"><Namespace Name=\"CM.Quillbox\"/>"
        "<Page File=\"topic.html\" ItemType=\"cm.quillbox:topic\"/>"
        "<Page File=\"once.html\" " +
            attributes + "/></PageTemplate>");
    put("Templates/T/topic.html", page);
    put("Templates/T/once.html", "%%scrap:name=S%%%%itemtitle:condition=@C%%");
    put("Templates/T/scraps/S.html", scrap);
    put("Templates/T/scraps/C.html", condition);
    usePlatform();

    const auto project = madeProject(body, variable);
    auto document = newDocument();
    try {
        project->Build(document, "", false, false, false);
    } catch (const AutomationError&) {
        return 0;
    }
    const auto first = output();
    require(!first.empty());
    project->Build(document, "", false, false, false);
    require(output() == first);
    return 0;
}
