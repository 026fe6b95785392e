#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Automation.h"
#include "platform/FileSystemObject.h"
#include "platform/HTML.h"
#include "platform/MessageBoxes.h"
#include "platform/SettingsStore.h"
#include "platform/SourceSafe.h"
#include "platform/System.h"
#include "platform/WebRequest.h"
#include "platform/XML.h"
#include "platform/engine/Document.h"

namespace quillbox {

class QbProject;

// Everything the object model needs from outside. A host or a test puts other adapters in.
struct Platform {
    std::shared_ptr<FileSystem> files;
    std::shared_ptr<XMLParser> xml;
    std::shared_ptr<SettingsStore> settings;
    std::shared_ptr<MessageBoxes> messages;
    std::shared_ptr<System> system;
    std::shared_ptr<ClassRegistry> classes;
    std::shared_ptr<DOMFactory> html;
    std::shared_ptr<WebRequest> web;
    std::shared_ptr<SourceSafeClient> sourceSafe;
    std::shared_ptr<DocumentEngine> engine;
    // Lets the user make a new project; none where the user gave up. Not set in a host without a form.
    std::function<Ref<QbProject>()> newProjectForm;
};

// The adapters in use.
Platform& platform();

// The adapters that the library comes with. Supplied by the program that puts the library together.
Platform makeDefaultPlatform();

// A file object on a path.
Ref<FileSystemObject> newFile(const std::string& path);

// The document that stands in a file. Fails for a file that is missing or not well-formed, and names it.
Ref<XMLDocument> parseFile(const std::string& path);

}  // namespace quillbox
