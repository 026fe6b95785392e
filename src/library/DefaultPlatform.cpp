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
#include "library/PublishedProperty.h"

namespace quillbox {

namespace {

// The installed templates stand beside the configuration.
std::string templatesFolder() {
    auto folder = platform().settings->Read(Hive::LocalMachine, "Software\\Merivane\\Quillbox", "InstallDir");
    if (!folder.empty() && folder.back() != '/' && folder.back() != '\\')
        folder += platform().files->Separator();
    return folder + "Templates";
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
                                          .readProperty = readPublishedProperty,
                                          .language = {}});
    return platform;
}

}  // namespace quillbox
