#pragma once

#include <memory>
#include <string>

#include "platform/engine/Document.h"

namespace quillbox {

class DummyWizardHost;

// The related project that is built along with a help project. The sibling product loads it into the
// document; its parts are reached by the names of their members.
class RelatedProject {
  public:
    // None where the loader of the sibling product is not to be had.
    static std::unique_ptr<RelatedProject> Find(const Ref<Document>& document);
    ~RelatedProject();
    RelatedProject(const RelatedProject&) = delete;
    RelatedProject& operator=(const RelatedProject&) = delete;

    void Load(const std::string& file);
    void Unload();

  private:
    RelatedProject(Ref<Object> loader, const Ref<Document>& document);

    Ref<Object> listOf(const char* key) const;
    void exclude(Object& plugIn);

    Ref<Object> mLoader;
    Ref<Document> mDocument;
    Ref<DummyWizardHost> mHost;
};

}  // namespace quillbox
