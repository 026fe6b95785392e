// Puts the library together: which adapter stands behind which port.

#include "adapters/files/DiskFiles.h"
#include "adapters/html/Html.h"
#include "adapters/messages/TerminalMessages.h"
#include "adapters/settings/IniSettings.h"
#include "adapters/system/LocalSystem.h"
#include "adapters/web/CurlWebRequest.h"
#include "adapters/xml/PugiXml.h"
#include "bindings/c/ClassRegistry.h"
#include "engine/Engine.h"
#include "frame/Platform.h"
#include "frame/Version.h"
#include "frame/typelib/TypeLibrary.h"

namespace quillbox {

namespace {

// The installed templates stand beside the configuration.
std::string templatesFolder() {
    auto folder = platform().settings->Read(Hive::LocalMachine, "Software\\Merivane\\Quillbox", "InstallDir");
    if (!folder.empty() && folder.back() != '/' && folder.back() != '\\')
        folder += platform().files->Separator();
    return folder + "Templates";
}

// A published property of an item as text, for conditions of templates.
std::optional<std::string> readProperty(Object& item, const std::string& name) {
    const auto* info = TypeLibrary::Get().FindClass(item.ClassName());
    const auto* member = info ? info->FindMember(name) : nullptr;
    if (!member || member->kind == MemberKind::Method || !member->params.empty()) return {};
    std::optional<std::string> text;
    ignoringFailures([&] { text = toText(getMember(item, name)); });
    return text;
}

}  // namespace

Platform makeDefaultPlatform() {
    Platform platform;
    platform.files = makeDiskFiles();
    platform.xml = makePugiXmlParser();
    platform.settings = makeIniSettings();
    platform.messages = makeTerminalMessages();
    platform.system = makeLocalSystem();
    platform.html = makeHtmlFactory();
    platform.web = makeCurlWebRequest();
    platform.classes = makeClassRegistry();
    platform.engine = makeDocumentEngine({.xml = platform.xml,
                                          .system = platform.system,
                                          .templatesFolder = templatesFolder,
                                          .version = kVersion,
                                          .readProperty = readProperty,
                                          .language = {}});
    return platform;
}

}  // namespace quillbox
