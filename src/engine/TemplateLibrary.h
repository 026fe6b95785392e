#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/FolderTemplate.h"

namespace quillbox {

// The families of items that the engine has been told of.
class Families {
  public:
    void Register(const TemplateService::Family& family);
    // None where no family fits.
    const TemplateService::Family* Named(const std::string& name) const;
    const TemplateService::Family* OfProvider(const std::string& providerName) const;
    const TemplateService::Family* OfClass(const std::string& providerClass) const;
    // A provider that no family has, such as one of a related project, has no definitions here.
    Ref<NamespaceDefs> DefsOf(const std::vector<std::string>& providerNames) const;

  private:
    std::vector<TemplateService::Family> mFamilies;
};

// The installed templates and the families of items, for all documents of the process.
class TemplateLibrary : public TemplateService {
  public:
    TemplateLibrary(std::shared_ptr<XMLParser> xml, std::function<std::string()> installedFolder);

    Ref<quillbox::PageTemplates> PageTemplates() override;
    void AddFolder(const std::string& folder) override;
    Ref<Object> SharedTemplateObject() override { return mShared; }
    Ref<NamespaceDefs> Namespaces(const std::string& family) override;
    void RegisterFamily(const Family& family) override { mFamilies->Register(family); }

    const Families& KnownFamilies() const { return *mFamilies; }

    // While one of these lives, changed files are not looked for: a build is made of one state of its
    // templates.
    class Hold {
      public:
        explicit Hold(TemplateLibrary& library) : mLibrary(library) { ++mLibrary.mHeld; }
        ~Hold() { --mLibrary.mHeld; }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

      private:
        TemplateLibrary& mLibrary;
    };

  private:
    struct Entry {
        std::uint64_t stamp;
        Ref<FolderTemplate> pageTemplate;
    };
    using Entries = std::unordered_map<std::string, Entry>;

    std::vector<std::string> templateFolders() const;
    bool refresh();
    void makeList();

    std::shared_ptr<XMLParser> mXml;
    std::function<std::string()> mInstalledFolder;
    std::vector<std::string> mAddedFolders;
    // Templates ask for definitions for as long as anybody holds them.
    std::shared_ptr<Families> mFamilies = std::make_shared<Families>();
    std::vector<std::string> mFolders;
    Entries mEntries;
    Ref<quillbox::PageTemplates> mList;
    Ref<Object> mShared;
    int mHeld = 0;
};

}  // namespace quillbox
