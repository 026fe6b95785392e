#include <fstream>

#include "Input.h"
#include "adapters/TemporaryFolder.h"
#include "adapters/settings/IniFile.h"
#include "base/AutomationError.h"
#include "base/Text.h"

// A value that is written into any file reads back, and leaves the others as they were.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillbox;
    static const TemporaryFolder folder;
    const auto path = folder.Path() + "settings.ini";
    const auto given = texts(data, size, 6);
    const auto &section = given[0], &name = given[1], &value = given[2], &otherSection = given[3],
               &otherName = given[4];
    std::ofstream(path, std::ios::binary) << given[5];

    IniFile file(path);
    const auto other = file.Read(otherSection, otherName);
    try {
        file.Write(section, name, value);
    } catch (const AutomationError&) {
        return 0;
    }
    file.Save();
    IniFile again(path);
    require(again.Read(section, name) == value);
    const bool isOther = !sameText(section, otherSection) || !sameText(name, otherName);
    if (isOther) require(again.Read(otherSection, otherName) == other);

    again.Delete(section, name);
    again.Save();
    if (isOther) require(IniFile(path).Read(otherSection, otherName) == other);
    return 0;
}
