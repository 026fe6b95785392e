#include "topics/TopicSection.h"

#include "base/AutomationError.h"
#include "base/Text.h"
#include "frame/Module.h"
#include "topics/Topic.h"
#include "topics/TopicSectionDefs.h"

namespace quillbox {

void TopicSection::SetData(const std::string& data) {
    mData = data;
    mLinks = nullptr;
    const auto topic = Topic();
    if (topic && !topic->PauseEvents()) topic->FireTopicSectionChanged(self(this));
}

Ref<quillbox::TopicSectionDef> TopicSection::TopicSectionDef() const {
    return topicSectionDefs()->Item(mTopicSectionDefKey);
}

void TopicSection::SetTopicSectionDef(const Ref<quillbox::TopicSectionDef>& def) {
    if (!def) throw AutomationError("A topic section needs a definition");
    mTopicSectionDefKey = def->Key;
}

Value TopicSections::TopicSectionByCaption(const std::string& caption) const {
    for (const auto& section : Items()) {
        const auto def = section->TopicSectionDef();
        if (def && sameText(def->Caption, caption)) return section;
    }
    return Value::None();
}

}  // namespace quillbox
