#pragma once

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/AutomationError.h"
#include "base/FoldedMap.h"
#include "engine/TemplateReader.h"

namespace quillbox {

// A template in a folder. A broken one stays in the list, so that the others can be used; its members fail
// with what is wrong. Pages and scraps are read and split once, at first use.
class FolderTemplate : public PageTemplate {
  public:
    using DefsOf = std::function<Ref<quillbox::NamespaceDefs>(const std::vector<std::string>& providerNames)>;

    FolderTemplate(const std::string& folder, XMLParser& xml, DefsOf defsOf);

    std::string Name() const override { return mDescription.name; }
    std::string Path() const override { return mFolder; }
    std::string Supports() const override { return description().supports; }
    Ref<Collection> Pages() override;
    Ref<quillbox::NamespaceDefs> NamespaceDefs() override { return mDefsOf(description().namespaces); }
    Ref<Collection> Namespaces() override;

    void Break(const std::string& reason);
    bool IsBroken() const { return mFailure.has_value(); }
    int Order() const { return mDescription.order; }
    const std::vector<Ref<PageLayout>>& Layouts() const { return description().pages; }
    const std::optional<SearchLayout>& Search() const { return description().search; }
    // A page file of the folder, listed or not, split at its tags.
    const TagPieces& PageText(const std::string& file);
    // None where there is no such scrap.
    const std::string* Scrap(const std::string& name);
    // Reads all pages and scraps now.
    void ReadAll();

  private:
    const TemplateDescription& description() const;
    void readScraps();

    std::string mFolder;
    DefsOf mDefsOf;
    TemplateDescription mDescription;
    std::optional<AutomationError> mFailure;
    std::unordered_map<std::string, TagPieces> mPageTexts;
    std::optional<FoldedMap<std::string>> mScraps;
};

// The page split at its tags as pages are: tags in quotes count from the start.
TagPieces readPage(const std::string& path);

}  // namespace quillbox
