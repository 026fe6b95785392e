#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/FoldedMap.h"
#include "build/BookletOutline.h"
#include "platform/engine/Document.h"
#include "platform/engine/Tags.h"

namespace quillbox {

class QbDataProvider;

// A scrap of a template, as often as pages ask for it.
class KnownScrap {
  public:
    KnownScrap(Document& document, const std::string& name);

    // As it stands; of one that is missing, what tells so.
    const std::string& Text() const { return mText; }
    bool IsMissing() const { return mText.starts_with("!MISSING"); }
    bool HasTags() const { return mHasTags; }
    const TagPieces& Pieces() const;
    // What failures inside it are told with.
    const std::string& Place() const { return mPlace; }

  private:
    std::string mText, mPlace;
    bool mHasTags;
    // Split at first use.
    mutable std::optional<TagPieces> mPieces;
};

// The scraps that a list of items is written with.
struct ListScraps {
    std::shared_ptr<const KnownScrap> header, body, separator, footer;
};

// What a data provider and those made from it know in common while they serve a document.
class ProviderMemory {
  public:
    // The pieces of a template's text, split at its first use.
    std::shared_ptr<const TagPieces> Pieces(const std::string& text);

    // The document of the tag that is being answered; none at other times.
    Document* AnsweringFor() const { return mDocument.get(); }

    // A provider for that document that has no list to serve; none where there is none.
    Ref<QbDataProvider> TakeResting();
    void KeepResting(Ref<QbDataProvider> provider);
    void ForgetResting() { mResting.clear(); }

    // The rest is of the template that the document is being generated with.

    std::shared_ptr<const KnownScrap> Scrap(Document& document, const std::string& name);
    // By the beginning of their names.
    std::shared_ptr<const ListScraps> ScrapsOfList(Document& document, const std::string& name);
    // By its text.
    std::shared_ptr<quillbox::Condition> Condition(Document& document, const std::string& text);
    // Fails for a kind of items that the template does not know.
    Ref<NamespaceDef> Definition(Document& document, const std::string& itemType);

    // The outline of a booklet, made once for a tag of a page and all that is expanded inside it.
    const BookletOutline& OutlineOf(const Ref<Manifest>& manifest);

    // Lives while a tag is being answered, and keeps the document alive for as long.
    class Answering {
      public:
        Answering(ProviderMemory& memory, const ObjectReference<Document>& document) : mMemory(memory) {
            if (mMemory.mAnswering++ == 0) mMemory.mDocument = document.Get();
        }
        ~Answering() {
            if (--mMemory.mAnswering > 0) return;
            mMemory.mOutline.reset();
            mMemory.mDocument.reset();
            mMemory.mIsTemplateKnown = false;
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
        ~InVariable() { mMemory.mVariables.erase(mName); }
        InVariable(const InVariable&) = delete;
        InVariable& operator=(const InVariable&) = delete;

      private:
        ProviderMemory& mMemory;
        std::string mName;
    };

  private:
    // What is read of one template.
    struct OfTemplate {
        Ref<PageTemplate> pageTemplate;
        TextMap<std::shared_ptr<const KnownScrap>> scraps;
        TextMap<std::shared_ptr<const ListScraps>> lists;
        TextMap<std::shared_ptr<quillbox::Condition>> conditions;
        TextMap<Ref<NamespaceDef>> definitions;
    };
    OfTemplate& ofTemplate(Document& document);

    TextMap<std::shared_ptr<const TagPieces>> mPieces;
    OfTemplate mOfTemplate;
    FoldedSet mVariables;
    std::unique_ptr<BookletOutline> mOutline;
    std::vector<Ref<QbDataProvider>> mResting;
    int mAnswering = 0;
    // While a tag is being answered: whose it is, and whether the template was looked at.
    Ref<Document> mDocument;
    bool mIsTemplateKnown = false;
};

}  // namespace quillbox
