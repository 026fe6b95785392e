#pragma once

#include <myhtml/api.h>

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "adapters/html/Token.h"
#include "adapters/html/Tree.h"

namespace quillbox::html {

// One run of the parser library over a source: its tokens and, in the library's own tree, what it made of
// them. Input that would take time or memory beyond its size ends the run and fails.
class Reading {
  public:
    // Fills the markup's text and the tokens; the source must be there.
    Reading(myhtml_tree_t& tree, Markup& markup, std::vector<Token>& tokens)
        : mTree(tree), mMarkup(markup), mTokens(tokens) {}

    // Where something that never ends, such as a comment, swallows the end tags of the body and the document,
    // these count all the same: what stands in the body is then what its author wrote.
    void Document();
    void Fragment(std::string_view name, Space space);

    std::vector<Token>& Tokens() { return mTokens; }
    // The tree has this many nodes at most, with the texts that were joined to others.
    std::size_t MostNodes() const { return mInserted + mJoinedCount; }
    // The token of which a node was made; null for an element that the source only implies.
    Token* TokenOf(myhtml_tree_node_t& node);
    // The texts that the library joins to the text of this node.
    const std::vector<std::size_t>* JoinedTo(myhtml_tree_node_t& text) const;

  private:
    template <class Parse>
    void Run(std::size_t size, Parse&& parse);
    bool SwallowsEndTags() const;
    void StartAgain();
    void AddEndTags(std::size_t begin);
    void Take(myhtml_token_node_t& token);
    void TakeText(myhtml_token_node_t& token, Token& text);
    void Inserted(myhtml_tree_node_t& node);
    void SettleText();
    myhtml_tree_node_t* PlaceOfText() const;
    void Stop(const char* failure);

    myhtml_tree_t& mTree;
    Markup& mMarkup;
    std::size_t mOffset = 0;
    std::vector<Token>& mTokens;
    std::size_t mCursor = 0;  // nodes are mostly asked for in the order of their tokens
    std::unordered_map<myhtml_tree_node_t*, std::vector<std::size_t>> mJoined;
    std::size_t mJoinedCount = 0;
    myhtml_token_node_t* mOpenText = nullptr;     // the last token, where it is a text without a node so far
    myhtml_token_node_t* mSettledText = nullptr;  // the one before, which a table may still give a node
    myhtml_tree_node_t* mSettledPlace = nullptr;
    myhtml_tree_node_t* mLastInserted = nullptr;
    bool mAfterPre = false;
    std::size_t mInserted = 0;
    std::size_t mRootAttributes = 0;
    const char* mFailure = nullptr;
};

}  // namespace quillbox::html
