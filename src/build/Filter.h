#pragma once

#include <string>
#include <vector>

#include "platform/engine/Document.h"

namespace quillbox {

// What the filter text of a list or of a template's page asks for.
class Filter {
  public:
    bool ForPageGeneration = false;
    bool CheckAccess = false;
    bool IncludePublic = false;
    bool IncludePrivate = false;
    bool IgnoreNamespaceIncludeFlag = false;
    bool IncludeAll = false;
    // Lower case; what it selects is up to the kind of item.
    std::string TypeID;

    Ref<quillbox::Document> Document() const { return mDocument.Get(); }
    void SetDocument(const Ref<quillbox::Document>& document) { mDocument.Set(document); }

    // Takes clauses such as "access=public+private,type=all"; what makes no sense is passed over.
    void Load(const std::string& source);
    // The names of the clauses, in lower case.
    static std::vector<std::string> ClauseNames();
    // Whether a member of a related project takes part in the generation.
    bool IncludeMember(const Ref<Object>& member) const;

  private:
    ObjectReference<quillbox::Document> mDocument;
};

}  // namespace quillbox
