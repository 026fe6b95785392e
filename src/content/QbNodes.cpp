#include "content/QbNodes.h"

#include <vector>

#include "base/TreeWalk.h"
#include "content/QbNode.h"
#include "frame/Module.h"
#include "topics/Topic.h"

namespace quillbox {

QbNodes::~QbNodes() {
    auto doomed = Items();
    mCol.Clear();
    dismantleTree(std::move(doomed), [](QbNode& node) {
        std::vector<Ref<QbNode>> below;
        if (node.ChildNodes && node.ChildNodes.use_count() == 1) {
            below = node.ChildNodes->Items();
            node.ChildNodes->mCol.Clear();
        }
        return below;
    });
}

const SatelliteFile& QbNodes::satellite() const {
    // The root is called as the glossary's; readers do not look at it, and files hold it. It is meant so.
    static constexpr SatelliteFile row{"TableOfContents.xml", "Glossary", "n", ProjectElementTableOfContents};
    return row;
}

std::string QbNodes::labelOf(const QbNode& node) const {
    const auto caption = node.CaptionText();
    return "Contents node '" + (caption.empty() ? node.Key : caption) + "'";
}

void QbNodes::adopt(const Ref<QbNode>& node) { node->SetQbNodes(self(this)); }

template <class Visit>
void QbNodes::walk(const Visit& visit) const {
    walkTree(
        Items(), [](const QbNode& node) { return node.ChildNodes->Items(); }, visit);
}

Ref<QbNodes> QbNodes::AllNodes(Ref<QbNodes>& col) {
    if (!col) col = make<QbNodes>();
    walk([&](const Ref<QbNode>& node) {
        col->Add(node, node->Key);
        return false;
    });
    return col;
}

Ref<QbNodes> QbNodes::AllNodes() {
    Ref<QbNodes> col;
    return AllNodes(col);
}

Ref<QbNodes> QbNodes::NodesForTopic(const Ref<Topic>& topic, Ref<QbNodes>& col) {
    if (!topic) throw AutomationError("A topic is needed here");
    if (!col) col = make<QbNodes>();
    walk([&](const Ref<QbNode>& node) {
        if (node->TopicID() == topic->Key) col->Add(node, node->Key);
        return false;
    });
    return col;
}

Ref<QbNode> QbNodes::Item(const Value& key) const {
    auto found = find(key);
    if (found) return found;
    // Deeper than a tree can be saved there is nothing to find.
    ignoringFailures([&] {
        walk([&](const Ref<QbNode>& node) {
            found = node->ChildNodes->find(key);
            return found != nullptr;
        });
    });
    return found;
}

void QbNodes::Remove(const Value& key) {
    const auto node = mCol.Remove(key);
    if (const auto project = QbProject()) project->FireQbNodeRemoved(node);
    SetDirty(true);
}

void QbNodes::Add(const Ref<QbNode>& item, const Value& key, const Value& before, const Value& after) {
    mCol.Add(item, key, before, after);
    SetDirty(true);
}

Ref<QbNode> QbNodes::NewNode(const Ref<QbNode>& parent) {
    const auto node = make<QbNode>();
    adopt(node);
    node->ChildNodes->SetQbProject(QbProject());
    node->SetParentNode(parent);
    node->Key = CreateGUID();
    mCol.Add(node, node->Key);
    return node;
}

}  // namespace quillbox
