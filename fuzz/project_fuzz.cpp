#include "Input.h"
#include "adapters/files/MemoryFiles.h"
#include "base/AutomationError.h"
#include "frame/Platform.h"
#include "project/QbProject.h"
#include "support/Doubles.h"

namespace {

using namespace quillbox;

std::string savedAgain(const std::string& text) {
    auto project = make<QbProject>();
    project->Filename->SetPath("/work/Manual.qbp");
    project->Load(text);
    return project->Save();
}

}  // namespace

// A project that loads is saved, or tells why not; what was saved loads, and from then on nothing changes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto files = makeMemoryFiles();
    files->Put("/work/readme.txt", "so that the folder is there");
    platform().files = files;
    platform().system = std::make_shared<FixedSystem>();
    std::string saved;
    try {
        saved = savedAgain(std::string(reinterpret_cast<const char*>(data), size));
    } catch (const AutomationError&) {
        return 0;
    }
    const auto second = savedAgain(saved);
    require(savedAgain(second) == second);
    return 0;
}
