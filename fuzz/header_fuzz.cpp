#include "Input.h"
#include "adapters/files/MemoryFiles.h"
#include "base/AutomationError.h"
#include "base/Text.h"
#include "frame/Platform.h"
#include "headerids/HeaderIds.h"

// Whatever a header holds, the identifiers that were read can be walked and found.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillbox;
    const auto files = makeMemoryFiles();
    files->Put("/ids.h", std::string(reinterpret_cast<const char*>(data), size));
    platform().files = files;
    const auto ids = make<HeaderIds>();
    ignoringFailures([&] { ids->Load("/ids.h"); });
    for (int position = 1; position <= ids->Count(); ++position) {
        const auto id = ids->Item(position);
        require(id && !id->Name.empty());
        // What begins with a digit counts as a position.
        if (leadingNumber(id->Name) != 0) continue;
        const auto found = ids->ItemIndex(id->Name);
        require(found >= 1 && found <= position);
    }
    return 0;
}
