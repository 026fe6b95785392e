#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "adapters/Failure.h"
#include "adapters/TemporaryFolder.h"
#include "engine/Engine.h"
#include "engine/Guide.h"

namespace quillbox {

void writeFile(const std::string& path, const std::string& text);
std::string readFile(const std::string& path);
bool hasFile(const std::string& path);

// A clock that stands still.
class StoppedClock : public System {
  public:
    Date Now() override { return *Date::From({2026, 3, 9, 14, 5, 0, 0}); }
    std::string UserName() override { return "tester"; }
    std::string NewGuid() override { return {}; }
};

// An engine with templates in a folder of its own, a guide, and a document that builds it.
class EngineTest : public testing::Test {
  protected:
    EngineTest();

    // A file of the template "Plain".
    void Put(const std::string& file, const std::string& text);
    // Its template.xml; `pages` is what stands inside the root.
    void PutTemplate(const std::string& pages);
    // One page a guide page, with that text.
    void PutPage(const std::string& text);
    void Prepare(Document& document);
    void Build();
    std::string BuildFailure();
    std::string Output(const std::string& name) const { return readFile(mOutput + name); }
    // Puts the page in place for one guide page and gives what comes out.
    std::string Rendered(const std::string& pageText);

    TemporaryFolder mFolder;
    std::string mTemplates, mOutput;
    std::shared_ptr<DocumentEngine> mEngine;
    Ref<Guide> mGuide = make<Guide>();
    Ref<Document> mDocument;
    std::vector<std::string> mCreated;
};

}  // namespace quillbox
