#pragma once

#include <string>

#include "platform/XML.h"

namespace quillbox {

class QbProject;

// Fills a project from its root element, older forms included.
class ProjectReader {
  public:
    explicit ProjectReader(QbProject& project) : mProject(project) {}
    void Read(const Ref<XMLElement>& root);

  private:
    void readSettings(const Ref<XMLElement>& root);
    void replaceCollections();
    // First the categories and topics, which the rest refers to.
    void readTopics(const Ref<XMLElement>& child);
    void readRest(const Ref<XMLElement>& child);
    void readVariable(const Ref<XMLElement>& child);

    QbProject& mProject;
    bool mHasOldKeys = false;
};

// Gives every element of an older project a key of today's kind.
void migrateOldKeys(QbProject& project);

}  // namespace quillbox
