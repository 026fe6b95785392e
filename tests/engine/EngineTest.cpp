#include "engine/EngineTest.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "adapters/xml/PugiXml.h"

namespace quillbox {

void writeFile(const std::string& path, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return file ? text.str() : "no file " + path;
}

bool hasFile(const std::string& path) { return std::filesystem::exists(path); }

EngineTest::EngineTest() : mTemplates(mFolder.Path() + "Templates/"), mOutput(mFolder.Path() + "out/") {
    EngineServices services;
    services.xml = makePugiXmlParser();
    services.system = std::make_shared<StoppedClock>();
    services.templatesFolder = [this] { return mTemplates; };
    services.version = "1.2.3";
    services.readProperty = readGuideProperty;
    services.language = "en-US";
    mEngine = makeDocumentEngine(services);
    mEngine->Templates().RegisterFamily(guideFamily());
    std::filesystem::create_directories(mTemplates);
    std::filesystem::create_directories(mOutput);
    mDocument = mEngine->NewDocument();
    mDocument->ContentCreated.connect([this](const std::string& name) { mCreated.push_back(name); });
}

void EngineTest::Put(const std::string& file, const std::string& text) {
    writeFile(mTemplates + "Plain/" + file, text);
}

void EngineTest::PutTemplate(const std::string& pages) {
    Put("template.xml",
        "<PageTemplate Name=\"Plain\">\n<Namespace Name=\"Test.Guide\"/>\n" + pages + "\n</PageTemplate>\n");
}

void EngineTest::PutPage(const std::string& text) {
    PutTemplate("<Page File=\"page.html\" ItemType=\"test.guide:page\"/>");
    Put("page.html", text);
}

void EngineTest::Prepare(Document& document) {
    document.Objects = make<Collection>();
    document.Objects->Add(Value(mGuide), "Test.Guide");
    document.PageTemplates = make<PageTemplates>();
    for (const auto& one : mEngine->Templates().PageTemplates()->Items())
        document.PageTemplates->Add(one, one->Name());
    document.TemplateName = "Plain";
    document.OutputPath = mOutput;
    if (document.Title.empty()) document.Title = "Guide";
}

void EngineTest::Build() {
    Prepare(*mDocument);
    mDocument->Build();
}

std::string EngineTest::BuildFailure() {
    return failureOf([&] { Build(); });
}

std::string EngineTest::Rendered(const std::string& pageText) {
    PutPage(pageText);
    if (mGuide->children.empty()) mGuide->AddPage("intro", "Intro");
    Build();
    return Output("intro.html");
}

}  // namespace quillbox
