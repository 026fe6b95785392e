#include "guide/GuideMachine.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/Text.h"
#include "booklets/Manifest.h"
#include "engine/Engine.h"
#include "frame/typelib/TypeLibrary.h"
#include "library/PublishedProperty.h"
#include "support/Doubles.h"
#include "topics/Topic.h"

namespace quillbox {

namespace {

namespace fs = std::filesystem;

const std::string kGarden = QUILLBOX_SOURCE_DIR "/examples/garden/";

void writeFile(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return file ? text.str() : "(no file " + path.filename().string() + ")";
}

// Whatever the tests are run on, the examples come out as they stand in the guide.
std::shared_ptr<DocumentEngine> engineFor(const std::string& templates) {
    return makeDocumentEngine({.xml = platform().xml,
                               .system = std::make_shared<FixedSystem>(),
                               .templatesFolder = [templates] { return templates; },
                               .version = "1.0.0",
                               .readProperty = readPublishedProperty,
                               .language = "en-US"});
}

}  // namespace

GuideMachine::GuideMachine(const GuideExample& example) : mExample(example), mBefore(platform()) {
    platform() = makeDefaultPlatform();
    platform().messages = std::make_shared<ScriptedBoxes>();
    platform().engine = engineFor(mFolder.Path() + "Templates");
    for (const auto& [name, text] : example.files)
        writeFile(mFolder.Path() + "Templates/" + example.name + "/" + name, text);
    const auto file = mFolder.Path() + "garden/garden.qbp";
    fs::copy(kGarden, mFolder.Path() + "garden");
    fs::create_directories(mFolder.Path() + "site");
    mProject = make<QbProject>();
    mProject->Filename->SetPath(file);
    mProject->LoadFromFile(file);
    for (const auto& line : example.settings) set(line);
}

GuideMachine::~GuideMachine() { platform() = mBefore; }

// "CompileType = 2", "Variable Language = de" or "Topic Tools LayoutName = Wide".
void GuideMachine::set(const std::string& line) {
    const auto sign = line.find(" = ");
    if (sign == std::string::npos) throw AutomationError("A setting without a value: " + line);
    const auto words = split(line.substr(0, sign), " ");
    const auto value = line.substr(sign + 3);
    if (words.size() == 1) {
        putMember(*mProject, words[0], value);
    } else if (words.front() == "Variable") {
        const auto variable = make<VariableValue>();
        variable->Name = words.at(1);
        variable->Value = value;
        mProject->VariableValues->Add(variable, variable->Name);
    } else {
        putMember(*mProject->TopicByName(words.at(1)), words.at(2), value);
    }
}

// As the printing of booklets does before it begins.
void GuideMachine::prepareBooklet() const {
    const auto booklet = mProject->Manifests()->Item(1);
    booklet->BuildIncludeFlag = true;
    booklet->AssignEntryNumbers();
}

void GuideMachine::Build() {
    try {
        if (mExample.isBooklet) prepareBooklet();
        mProject->SetTemplateName(mExample.name);
        auto document = platform().engine->NewDocument();
        document->OutputRoot = mFolder.Path() + "site/";
        // Where the template cannot be read, another one would take its place.
        platform().engine->Templates().PageTemplates()->Item(mExample.name)->Pages();
        mProject->Build(document, "", false, false, false);
    } catch (const AutomationError& error) {
        mFailure = shortened(error.Description());
    }
}

std::string GuideMachine::shortened(std::string text) const { return replaceAll(text, mFolder.Path(), ""); }

std::string GuideMachine::Outcome(const GuideBlock& block) const {
    if (block.kind == "failure") return mFailure.empty() ? "(no failure)" : mFailure;
    if (!mFailure.empty()) return "(failed) " + mFailure;
    const auto file = mFolder.Path() + "site/" + (block.kind == "result" ? mExample.page : block.name);
    return withoutLastLineEnd(replaceAll(readFile(file), "\r\n", "\n"));
}

}  // namespace quillbox
