// The contents tree of a document.

#include "base/AutomationError.h"
#include "base/Text.h"
#include "engine/EngineDocument.h"
#include "engine/Expansion.h"
#include "engine/PageFile.h"

namespace quillbox {

namespace {

// Keeps the three settings that a tag of a page leaves behind from showing in other pages.
class TOCSettings {
  public:
    explicit TOCSettings(Document& document)
        : mDocument(document),
          mPrefix(document.TOCBookPrefix),
          mScrap(document.TOCNodeScrap),
          mSuffix(document.TOCBookSuffix) {}
    ~TOCSettings() {
        mDocument.TOCBookPrefix = mPrefix;
        mDocument.TOCNodeScrap = mScrap;
        mDocument.TOCBookSuffix = mSuffix;
    }
    TOCSettings(const TOCSettings&) = delete;
    TOCSettings& operator=(const TOCSettings&) = delete;

  private:
    Document& mDocument;
    std::string mPrefix, mScrap, mSuffix;
};

template <class T>
class Restored {
  public:
    Restored(T& place, T value) : mPlace(place), mOld(place) { place = value; }
    ~Restored() { mPlace = mOld; }
    Restored(const Restored&) = delete;
    Restored& operator=(const Restored&) = delete;

  private:
    T& mPlace;
    T mOld;
};

}  // namespace

std::shared_ptr<const ContentsTree> EngineDocument::treeOf(const std::string& templateName) {
    const auto* found = TOCDefs ? TOCDefs->Find(templateName) : nullptr;
    const auto definition = found ? std::dynamic_pointer_cast<TOCDefinition>(toObject(*found)) : nullptr;
    if (!definition) return nullptr;
    const auto isPage = [&](const std::string& page) { return !mState || mState->pages.contains(page); };
    return std::make_shared<const ContentsTree>(*definition, isPage);
}

std::vector<std::shared_ptr<const ContentsTree>> EngineDocument::otherTrees() {
    std::vector<std::shared_ptr<const ContentsTree>> trees;
    const auto own = Template();
    for (const auto& other : PageTemplates->Items()) {
        if (other == own) continue;
        if (auto tree = treeOf(other->Name())) trees.push_back(std::move(tree));
    }
    return trees;
}

// The provider makes the definition when it meets the tag of a table of contents; what the tag would write is
// not wanted here.
void EngineDocument::makeContents() {
    const auto sources = Sources();
    if (sources->empty()) return;
    const TOCSettings settings(*this);
    const Restored collecting(mCollectingContents, true);
    auto element = make<Element>();
    element->Attributes->Add("tableofcontents", "type");
    sources->front().data->ProvideData(element, make<PageFile>(mState->output.FullName("contents")));
}

std::shared_ptr<const ContentsTree> EngineDocument::Contents() {
    const auto pageTemplate = Template();
    if (!pageTemplate || mCollectingContents) return nullptr;
    if (!mState) return treeOf(pageTemplate->Name());
    if (!mState->contents) {
        if (!TOCDefs->HasKey(pageTemplate->Name())) makeContents();
        mState->contents = treeOf(pageTemplate->Name());
        if (!mState->contents) mState->contents = std::make_shared<ContentsTree>(TOCDefinition(), nullptr);
    }
    return mState->contents;
}

void EngineDocument::StreamTOC(const Ref<FileSystemObject>& file, const Ref<PageTemplate>& pageTemplate) {
    if (mCollectingContents) return;
    if (!file || !pageTemplate) throw AutomationError("A table of contents needs a file and a template");
    const auto name = pageTemplate->Name();
    const auto current = Template();
    const auto tree = mState && current && sameText(current->Name(), name) ? Contents() : treeOf(name);
    if (!tree) return;
    ContentsStyle style{TOCBookPrefix, TOCBookSuffix, writeSitemapNode, nullptr,
                        [this] { return otherTrees(); }};
    if (!TOCNodeScrap.empty()) {
        const auto footer = TOCNodeScrap + "_footer";
        style.writeNode = nodeWriter(TOCNodeScrap, file);
        if (!Scrap(footer).starts_with("!MISSING")) style.writeNodeEnd = nodeWriter(footer, file);
    }
    std::string text;
    writeContents(*tree, style, text);
    file->Write(text);
}

ContentsStyle::WriteNode EngineDocument::nodeWriter(const std::string& scrap,
                                                    const Ref<FileSystemObject>& file) {
    return [this, scrap, file, pieces = splitTags(Scrap(scrap))](const ContentsTree& tree, std::size_t node,
                                                                 std::string& out) {
        writeNode(scrap, pieces, file, tree, node, out);
    };
}

void EngineDocument::writeNode(const std::string& scrap, const TagPieces& pieces,
                               const Ref<FileSystemObject>& file, const ContentsTree& tree, std::size_t node,
                               std::string& out) {
    const auto sources = Sources();
    if (sources->empty()) throw AutomationError("The scrap of a contents node needs a provider of items");
    const Restored place(mCurrentNode, NodePlace{&tree, node});
    const auto& item = tree.Nodes()[node];
    const auto parent = item.parent ? tree.Nodes()[*item.parent].def : nullptr;
    auto& data = *sources->front().data;
    const ItemScope scope(data, nullptr, item.def, "Contents Node", parent);
    expandThrough(data, pieces, "scrap " + scrap, "the contents", file, out);
    out += "\n";
}

}  // namespace quillbox
