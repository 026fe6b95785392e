#include "content/QbNode.h"

#include "base/Text.h"
#include "base/TreeWalk.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox {

Ref<quillbox::QbProject> QbNode::project() const {
    const auto nodes = QbNodes();
    if (nodes) {
        if (auto found = nodes->QbProject()) return found;
    }
    throw AutomationError("This contents node has no project");
}

void QbNode::changed() {
    const auto nodes = QbNodes();
    if (!nodes) return;
    ignoringFailures([&] { project()->FireQbNodeChanged(self(this)); });
    nodes->SetDirty(true);
}

void QbNode::SetCaptionType(QbProjectCaptionTypeEnum v) {
    mCaptionType = v;
    if (v == ctDefault) mCaptionText.clear();
    changed();
}

void QbNode::SetQbNodeType(QbNodeTypeEnum v) {
    // Looks at the type held so far, so that writing the standard type again empties the URL too. It is meant
    // so.
    if (mQbNodeType == ntStandard && sameText(mStandardURL, "glossary.html")) mStandardURL.clear();
    mQbNodeType = v;
    if (v == ntCMContents) {
        mTopicID.clear();
        mCaptionType = ctDefault;
    } else if (v == ntSingleTopic) {
        mStandardURL.clear();
        mCaptionType = ctDefault;
    } else if (v == ntStandard) {
        mTopicID.clear();
        mCaptionType = ctSpecific;
    }
    changed();
}

Ref<quillbox::Topic> QbNode::Topic() const {
    if (mTopicID.empty()) return {};
    return project()->Topics->ByKey(mTopicID);
}

void QbNode::Save(const Ref<XMLElement>& e) const {
    const TreeNesting level;
    e->AddAttribute("key", Key);
    addInteger(e, "nt", mQbNodeType);
    addInteger(e, "ct", mCaptionType);
    e->AddAttribute("c", mCaptionText);
    addInteger(e, "i", mIcon);
    e->AddAttribute("cfn", mSubContentsFileName);
    e->AddAttribute("tid", mTopicID);
    e->AddAttribute("url", mStandardURL);
    ChildNodes->WriteContent(e);
}

void QbNode::Load(const Ref<XMLElement>& e) {
    const TreeNesting level;
    Key = required(e, "Key");
    SetQbNodeType(static_cast<QbNodeTypeEnum>(requiredInteger(e, "nt")));
    SetCaptionType(static_cast<QbProjectCaptionTypeEnum>(requiredInteger(e, "ct")));
    SetCaptionText(required(e, "c"));
    SetIcon(requiredInteger(e, "i"));
    SetSubContentsFileName(required(e, "cfn"));
    SetTopicID(required(e, "tid"));
    SetStandardURL(required(e, "url"));
    if (mTopicID.empty() && mQbNodeType == ntSingleTopic) SetQbNodeType(ntStandard);
    const auto nodes = QbNodes();
    if (!nodes) throw AutomationError("A contents node needs its collection before it is loaded");
    ChildNodes->SetQbProject(nodes->QbProject());
    forEachChild(e, [&](const Ref<XMLElement>& child) {
        const auto node = make<QbNode>();
        node->SetQbNodes(ChildNodes);
        node->Load(child);
        node->SetParentNode(self(this));
        ChildNodes->Add(node, node->Key);
    });
}

std::string QbNode::caption(const Ref<quillbox::Topic>& topic) const {
    if (mCaptionType == ctDefault && topic) return topic->ContentsTitle();
    // Case counts here, unlike where the type is set. It is meant so.
    if (mStandardURL == "Glossary.html" && mCaptionType == ctDefault) return "Glossary";
    return mCaptionText;
}

Value QbNode::CreateNodeDef(const Ref<NodeDef>& parent, const Ref<TOCDefinition>& definition) const {
    if (!definition) throw AutomationError("A contents definition is needed here");
    const TreeNesting level;
    const auto def = make<NodeDef>();
    const auto topic = mCaptionType == ctDefault || mQbNodeType == ntSingleTopic ? Topic() : nullptr;
    def->Caption = caption(topic);
    def->Parent.Set(parent);
    def->TOCDefinition.Set(definition);
    def->HasCustomIcon = mIcon != -1;
    if (def->HasCustomIcon) def->IconNumber = mIcon;
    def->Included = true;
    if (topic && mQbNodeType == ntSingleTopic) {
        def->LinkTarget = topic->Name() + ".html";
    } else if (mQbNodeType == ntStandard) {
        def->LinkTarget = mStandardURL;
    } else if (mQbNodeType == ntCMContents) {
        def->Kind = ntCMContents;
    }
    definition->Nodes->Add(def, def->Key);
    for (const auto& child : ChildNodes->Items()) child->CreateNodeDef(def, definition);
    return Ref<Object>();
}

}  // namespace quillbox
