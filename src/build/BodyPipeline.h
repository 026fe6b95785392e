#pragma once

#include <string>

#include "platform/FileSystemObject.h"

namespace quillbox {

class QbDataProvider;
class Topic;

// A section of a topic as it goes into a page: its tags, its links to a related project and its glossary
// references resolved; for a print template its hyperlinks and headings too.
std::string topicSection(QbDataProvider& provider, const Topic& topic, const std::string& name,
                         const Ref<FileSystemObject>& file);

}  // namespace quillbox
