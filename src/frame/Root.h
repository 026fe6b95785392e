#pragma once

#include <string>

#include "base/Object.h"
#include "platform/SourceSafe.h"
#include "platform/engine/Templates.h"

namespace quillbox {

class QbProject;
class Topic;
class TopicSectionDefs;
class TopicStatuses;

// Where a caller starts. The shared lists live as long as a `Root` does.
class Root : public Object {
  public:
    static constexpr std::string_view kClassName = "Root";
    std::string_view ClassName() const override { return kClassName; }

    Root();
    ~Root() override;

    Ref<quillbox::TopicStatuses> TopicStatuses() const;
    Ref<quillbox::TopicSectionDefs> TopicSectionDefs() const;
    std::string ahConfigPath() const;
    // The installed templates made for this product, those whose flags hold `supportsFlag` only.
    Ref<PageTemplates> QuillboxPageTemplates(const std::string& supportsFlag = {}) const;
    std::string SSDatabase() const;
    std::string SSUser() const;
    std::string SSPassword() const;
    Ref<quillbox::VSSDatabase> VSSDatabase() const;
    bool IsSourceSafeAvailable() const;
    // Asks what becomes of contents nodes that point to the topic, and takes the see-also links to it away.
    // Removes nothing itself. `noPrompt` only comes back.
    void BeforeDeleteTopic(const Ref<Topic>& topic, bool& cancel, bool& noPrompt) const;
    bool IsCodemarkInstalled() const;
    // The project that the user made; none where the user gave up, or the host has no form to show.
    Ref<QbProject> NewProjectDialog() const;
};

}  // namespace quillbox
