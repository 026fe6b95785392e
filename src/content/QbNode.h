#pragma once

#include <string>

#include "content/QbNodes.h"
#include "platform/engine/Contents.h"

namespace quillbox {

// One entry of the table of contents.
class QbNode : public Object {
  public:
    static constexpr std::string_view kClassName = "QbNode";
    std::string_view ClassName() const override { return kClassName; }

    std::string Key;
    Ref<quillbox::QbNodes> ChildNodes = make<quillbox::QbNodes>();

    std::string CMPFileName() const { return mCMPFileName; }
    void SetCMPFileName(const std::string& v) { store(mCMPFileName, v); }
    std::string StandardURL() const { return mStandardURL; }
    void SetStandardURL(const std::string& v) { store(mStandardURL, v); }
    std::string TopicID() const { return mTopicID; }
    void SetTopicID(const std::string& v) { store(mTopicID, v); }
    std::string SubContentsFileName() const { return mSubContentsFileName; }
    void SetSubContentsFileName(const std::string& v) { store(mSubContentsFileName, v); }
    // -1 is the default icon.
    int Icon() const { return mIcon; }
    void SetIcon(int v) { store(mIcon, v); }
    std::string CaptionText() const { return mCaptionText; }
    void SetCaptionText(const std::string& v) { store(mCaptionText, v); }
    QbProjectCaptionTypeEnum CaptionType() const { return mCaptionType; }
    void SetCaptionType(QbProjectCaptionTypeEnum v);
    QbNodeTypeEnum QbNodeType() const { return mQbNodeType; }
    void SetQbNodeType(QbNodeTypeEnum v);
    // The level that holds this node.
    Ref<quillbox::QbNodes> QbNodes() const { return mQbNodes.Get(); }
    void SetQbNodes(const Ref<quillbox::QbNodes>& nodes) { mQbNodes.Set(nodes); }
    Ref<QbNode> ParentNode() const { return mParentNode.Get(); }
    void SetParentNode(const Ref<QbNode>& node) { mParentNode.Set(node); }

    void Save(const Ref<XMLElement>& e) const;
    // Needs `QbNodes` to be set.
    void Load(const Ref<XMLElement>& e);
    // The topic that the node points to, whatever its type; none where there is no such topic.
    Ref<quillbox::Topic> Topic() const;
    // Adds the nodes of this subtree to the contents that the engine writes.
    Value CreateNodeDef(const Ref<NodeDef>& parent, const Ref<TOCDefinition>& definition) const;

  private:
    template <class T>
    void store(T& field, const T& value) {
        field = value;
        changed();
    }
    void changed();
    Ref<quillbox::QbProject> project() const;
    std::string caption(const Ref<quillbox::Topic>& topic) const;

    QbNodeTypeEnum mQbNodeType = ntStandard;
    QbProjectCaptionTypeEnum mCaptionType = ctSpecific;
    std::string mCaptionText;
    int mIcon = -1;
    std::string mSubContentsFileName, mStandardURL, mTopicID, mCMPFileName;
    ObjectReference<QbNode> mParentNode;
    ObjectReference<quillbox::QbNodes> mQbNodes;
};

}  // namespace quillbox
