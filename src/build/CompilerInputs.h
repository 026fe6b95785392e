#pragma once

#include <string>
#include <vector>

#include "platform/engine/Document.h"

namespace quillbox {

class QbDataProvider;
class QbProject;

// Whether a document is built for Help 2.0.
bool isHelp2(const Document& document);

// What the generated content of a compiler input is made from, and where it goes.
struct ContentStream {
    Document& document;
    QbProject& project;
    // The files written so far, relative to the output folder.
    const std::vector<std::string>& writtenFiles;
    QbDataProvider& data;
    const Ref<FileSystemObject>& outputFile;
};

// Writes content by its name, such as "files" or, with a scrap of its own, "index:_MY_SCRAP". A name that is
// not known writes nothing.
void streamContent(const ContentStream& stream, const std::string& contentType);

// The names of the content.
std::vector<std::string> contentNames();

// The index entries of all topics, a line each.
std::string indexEntries(const ContentStream& stream, const std::string& scrapName);

}  // namespace quillbox
