#pragma once

#include <sigc++/sigc++.h>

#include <string>
#include <vector>

#include "base/Collection.h"
#include "base/ItemCollection.h"
#include "base/NameTable.h"
#include "platform/FileSystemObject.h"
#include "platform/XML.h"
#include "project/ProjectHandle.h"
#include "sourcecontrol/CheckedElement.h"

namespace quillbox {

// A file of the project that is no topic: a stylesheet, an image, anything that goes into the help file.
class OtherFile : public Object, public CheckedElement {
  public:
    static constexpr std::string_view kClassName = "OtherFile";
    std::string_view ClassName() const override { return kClassName; }

    OtherFile();

    // Always holds the full name when at rest.
    Ref<FileSystemObject> Filename() const { return mFilename; }
    void SetFilename(const Ref<FileSystemObject>& file);
    Ref<quillbox::QbProject> QbProject() const { return mQbProject.Get(); }
    void SetQbProject(const Ref<quillbox::QbProject>& project) { mQbProject.Set(project); }
    // Added since the project was last saved.
    bool NewFlag = true;

    void Load(const Ref<XMLElement>& e);
    void Save(const Ref<XMLElement>& e);
    void WriteContent(const Ref<XMLElement>& e) const;

    bool IsImage() const;
    bool IsStyleSheet() const;
    // Relative to the project file; the full name where it cannot be made relative.
    std::string RelativeFileName() const;

    std::string LocalSpec() const override { return mFilename->FullPath(); }
    std::string SSSpec() const override;
    bool CheckedOut() const { return IsCheckedOut(); }
    // Fails where the database does.
    bool AddToSourceSafe();

    sigc::signal<void()> CheckoutStatusChanged;

  private:
    const ElementTraits& traits() const override;
    Ref<quillbox::QbProject> elementProject() const override { return mQbProject.Need(); }
    std::string checkOutPath() const override { return mFilename->Directory(); }
    void raiseStatusChanged() override;

    Ref<FileSystemObject> mFilename;
    ProjectHandle mQbProject;
};

class OtherFiles : public ItemCollection<OtherFile> {
  public:
    static constexpr std::string_view kClassName = "OtherFiles";
    std::string_view ClassName() const override { return kClassName; }

    // While True there are no events, and deletions are not recorded.
    bool PauseEvents = false;
    Ref<quillbox::QbProject> QbProject() const { return mQbProject.Get(); }
    void SetQbProject(const Ref<quillbox::QbProject>& project) { mQbProject.Set(project); }
    // By key, position or file name; none for an unknown one.
    Ref<OtherFile> Item(const Value& key) const;
    void Add(const Ref<OtherFile>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {});
    void Remove(const Value& key);
    // Whether a file of that name is in the list, in any case; the disk is not asked.
    bool Exists(const std::string& filename) const { return byName(filename) != nullptr; }

    // The relative names of the stylesheets, in list order.
    const std::vector<std::string>& StyleSheetNames() const;

    // For the save of the project.
    Ref<Collection> DeletedFiles() const { return mDeletedFiles; }
    void ClearDeletedFiles() { mDeletedFiles = make<Collection>(); }

  private:
    Ref<OtherFile> byName(const std::string& filename) const;
    void forgetNames();

    ProjectHandle mQbProject;
    Ref<Collection> mDeletedFiles = make<Collection>();
    mutable NameTable<OtherFile> mNames;
    // The names hold for one project file and one state of all paths.
    struct StyleSheets {
        std::vector<std::string> names;
        Ref<FileSystemObject> base;
        unsigned long state = 0;
    };
    mutable StyleSheets mStyleSheets;
};

}  // namespace quillbox
