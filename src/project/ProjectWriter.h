#pragma once

#include "platform/XML.h"

namespace quillbox {

class QbProject;
class Topic;

// Writes a project into its root element.
class ProjectWriter {
  public:
    explicit ProjectWriter(QbProject& project) : mProject(project) {}

    // As the file is saved: in a separate-files project topics and collections write their own files on the
    // way.
    void Write(const Ref<XMLElement>& root);
    // Goes over everything that a save would write and fails at the first text that XML cannot hold, naming
    // the item. Changes nothing.
    void Check();

  private:
    void writeSettings(const Ref<XMLElement>& root);
    void writeVariables(const Ref<XMLElement>& root);
    void checkTopic(const Ref<XMLElement>& root, Topic& topic);

    QbProject& mProject;
};

}  // namespace quillbox
