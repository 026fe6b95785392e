#include "build/CompilerChoice.h"

#include "base/Text.h"
#include "frame/Module.h"
#include "frame/Platform.h"

namespace quillbox {

namespace {

// The compiler in the place of the program that was named.
std::string withBaseName(const Ref<FileSystemObject>& file, bool isHHC) {
    file->SetBaseName(isHHC ? "hhc" : "hcrtf");
    return file->FullPath();
}

std::string fromSettings(bool isHHC) {
    const auto name = platform().settings->Read(Hive::CurrentUser, "Software\\Merivane\\Quillbox",
                                                isHHC ? "HHCPath" : "HCRTFPath");
    if (name.empty()) return {};
    const auto file = newFile(name);
    return file->Exists() ? withBaseName(file, isHHC) : std::string();
}

// What opens project files of the compiler is the workshop; the compiler lies beside it.
std::string fromAssociation(const std::string& registryKey, bool isHHC) {
    auto command = platform().settings->Read(Hive::LocalMachine, registryKey, "");
    if (command.empty()) return {};
    command = command.substr(0, command.find('%'));
    StripQuotes(command);
    command = trimBlanks(command);
    StripQuotes(command);
    const auto name = withBaseName(newFile(command), isHHC);
    return newFile(name)->Exists() ? name : std::string();
}

}  // namespace

std::string compilerFileName(const std::string& registryKey, bool isHHC) {
    auto name = fromSettings(isHHC);
    if (!name.empty()) return name;
    // Wins over the registry, whichever compiler was asked for. It is meant so.
    constexpr const char* kUsualPlace = "c:\\program files\\html help workshop\\hhc.exe";
    if (newFile(kUsualPlace)->Exists()) return kUsualPlace;
    return fromAssociation(registryKey, isHHC);
}

std::string htmlHelpCompiler() {
    return compilerFileName("SOFTWARE\\Classes\\hhp\\shell\\open\\command", true);
}

}  // namespace quillbox
