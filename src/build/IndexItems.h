#pragma once

#include <string>
#include <vector>

#include "base/Object.h"
#include "platform/engine/Variables.h"
#include "topics/Keyword.h"

namespace quillbox {

class QbProject;
class Topic;

// What the index is made of: an entry, with its levels parted by "|", and the topic that it leads to.
struct IndexEntry {
    std::string text;
    Ref<quillbox::Topic> topic;
};

// The keywords and titles of the topics of the help file, sorted; a topic gives one entry for all spellings
// of a word.
std::vector<IndexEntry> sortedIndexEntries(const QbProject& project);

// The levels of an entry, without the blanks around each. There is always one.
std::vector<std::string> indexLevels(const std::string& entry);

// A term of the index with the topics it leads to and the terms below it. Its `QualifiedName` is the name of
// its topic where there is one only.
class IndexTerm : public Keyword {
  public:
    std::vector<Ref<quillbox::Topic>> topics;
    std::vector<Ref<IndexTerm>> terms;
};

// The terms of the first level that begin with one letter; its value is their number.
class IndexLetter : public VariableValue {
  public:
    std::vector<Ref<IndexTerm>> terms;
};

// The index of a project as a tree.
std::vector<Ref<IndexLetter>> indexOf(const QbProject& project);

// The entries of one topic as terms, each with its levels in one text, parted by blanks.
std::vector<Ref<IndexTerm>> indexTermsOf(const quillbox::Topic& topic);

}  // namespace quillbox
