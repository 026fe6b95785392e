#pragma once

#include <sigc++/sigc++.h>

#include <string>

#include "content/SatelliteCollection.h"

namespace quillbox {

class QbNode;
class RelatedTopic;
class Topic;

// A level of the contents tree. The project's top level also owns the file of the tree; every node owns the
// level below it. Walks give their nodes in one too.
class QbNodes : public SatelliteCollection<QbNode> {
  public:
    static constexpr std::string_view kClassName = "QbNodes";
    std::string_view ClassName() const override { return kClassName; }
    ~QbNodes() override;

    // On the top level: no node events from the project while True.
    bool PauseEvents = false;
    // Never raised by the collection itself.
    sigc::signal<void(const Ref<RelatedTopic>&)> ItemAdded, ItemRemoved;

    // The nodes of this level and all below, parents before their children, added to `col`.
    Ref<QbNodes> AllNodes(Ref<QbNodes>& col);
    Ref<QbNodes> AllNodes();
    // The same walk for the nodes that point to a topic.
    Ref<QbNodes> NodesForTopic(const Ref<Topic>& topic, Ref<QbNodes>& col);

    // Searches this level, then the levels below; none where nothing is found.
    Ref<QbNode> Item(const Value& key) const;
    // Of this level only; fails for an unknown key.
    void Remove(const Value& key);
    // Links nothing: the caller sets the node's `QbNodes` and `ParentNode`.
    void Add(const Ref<QbNode>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {});
    // A new node at the end of this level, whatever the parent.
    Ref<QbNode> NewNode(const Ref<QbNode>& parent);

  protected:
    const SatelliteFile& satellite() const override;
    std::string labelOf(const QbNode& node) const override;
    void adopt(const Ref<QbNode>& node) override;

  private:
    template <class Visit>
    void walk(const Visit& visit) const;
};

}  // namespace quillbox
