#pragma once

#include <memory>
#include <string>

#include "adapters/files/MemoryFiles.h"
#include "frame/Module.h"
#include "frame/Platform.h"
#include "sourcecontrol/SourceSafe.h"
#include "support/Doubles.h"

namespace quillbox {

// Puts stand-ins into the platform for the length of a test, and puts back what was there. Files are in
// memory; XML and HTML stay the library's own.
class TestPlatform {
  public:
    static constexpr const char* kProductKey = "Software\\Merivane\\Quillbox";

    TestPlatform() : mBefore(platform()) {
        auto& p = platform();
        p.files = files;
        p.system = system;
        p.messages = messages;
        p.settings = settings;
        p.classes = classes;
        p.web = web;
        p.engine = engine;
        p.sourceSafe = nullptr;
        settings->Write(Hive::LocalMachine, kProductKey, "InstallDir", "/install/");
        forget();
    }
    ~TestPlatform() {
        platform() = mBefore;
        forget();
    }
    TestPlatform(const TestPlatform&) = delete;
    TestPlatform& operator=(const TestPlatform&) = delete;

    std::shared_ptr<MemoryFiles> files = makeMemoryFiles();
    std::shared_ptr<FixedSystem> system = std::make_shared<FixedSystem>();
    std::shared_ptr<ScriptedBoxes> messages = std::make_shared<ScriptedBoxes>();
    std::shared_ptr<MemorySettings> settings = std::make_shared<MemorySettings>();
    std::shared_ptr<TestClasses> classes = std::make_shared<TestClasses>();
    std::shared_ptr<ScriptedWeb> web = std::make_shared<ScriptedWeb>();
    std::shared_ptr<ListingEngine> engine = std::make_shared<ListingEngine>();

  private:
    static void forget() {
        resetModule();
        resetSourceSafe();
    }

    Platform mBefore;
};

}  // namespace quillbox
