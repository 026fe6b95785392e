#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "build/BookletOutline.h"
#include "platform/engine/Tags.h"

namespace quillbox {

// What a data provider and those made from it know in common while they serve a document.
class ProviderMemory {
  public:
    // The pieces of a template's text, split at its first use.
    std::shared_ptr<const TagPieces> Pieces(const std::string& text);
    // The outline of a booklet, made once for a tag of a page and all that is expanded inside it.
    const BookletOutline& OutlineOf(const Ref<Manifest>& manifest);

    // Lives while a tag is being answered.
    class Answering {
      public:
        explicit Answering(ProviderMemory& memory) : mMemory(memory) { ++mMemory.mAnswering; }
        ~Answering() {
            if (--mMemory.mAnswering == 0) mMemory.mOutline.reset();
        }
        Answering(const Answering&) = delete;
        Answering& operator=(const Answering&) = delete;

      private:
        ProviderMemory& mMemory;
    };

    // Lives while a variable is being expanded. Fails for a variable that contains itself.
    class InVariable {
      public:
        InVariable(ProviderMemory& memory, const std::string& name);
        ~InVariable() { mMemory.mVariables.erase(mKey); }
        InVariable(const InVariable&) = delete;
        InVariable& operator=(const InVariable&) = delete;

      private:
        ProviderMemory& mMemory;
        std::string mKey;
    };

  private:
    std::unordered_map<std::string, std::shared_ptr<const TagPieces>> mPieces;
    std::unordered_set<std::string> mVariables;
    std::unique_ptr<BookletOutline> mOutline;
    int mAnswering = 0;
};

}  // namespace quillbox
