// Brings a project under source control.

#include "base/Text.h"
#include "booklets/Manifest.h"
#include "content/GlossaryItems.h"
#include "content/OtherFiles.h"
#include "content/QbNode.h"
#include "content/Tasks.h"
#include "frame/Platform.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox {

namespace {

class Import {
  public:
    explicit Import(QbProject& project) : mProject(project) {}

    // What the steps made of it; a failure that ends them leaves it as it stands. It is meant so.
    bool Run(bool addTopics) {
        ignoringFailures([&] { run(addTopics); });
        return mResult;
    }

  private:
    void run(bool addTopics) {
        auto& p = mProject;
        if (!p.VSSDatabase() || !makeFolder()) return fail();
        const auto file = addProjectFile();
        const auto data = subproject("ProjectData", "Creating Project Data sub-project");
        if (!data) return fail();
        addCollection(*p.GlossaryItems(), data, "Adding Glossary");
        addCollection(*p.QbNodes(), data, "Adding Table of Contents");
        addCollection(*p.Manifests(), data, "Adding Booklets");
        addCollection(*p.Tasks, data, "Adding Tasks");
        if (addTopics) {
            if (file) {
                addAllTopics();
            } else {
                fail();
            }
        }
        addFiles();
    }

    void fail() { mResult = false; }

    bool makeFolder() {
        if (mProject.IsProjectFolderInSourceSafe()) {
            mFolder = mProject.VSSDatabase()->VSSItem(mProject.SSProject(), false);
        } else {
            mProject.SourceSafeProgress("Creating SourceSafe Project");
            mFolder = mProject.CreateSourceSafeProjectFolder(mProject.SSProject());
        }
        return mFolder != nullptr;
    }

    Ref<VSSItem> addProjectFile() {
        if (mProject.IsProjectFileInSourceSafe()) return mProject.VSSItem(mProject.SSSpec());
        mProject.SourceSafeProgress("Adding project file");
        Ref<VSSItem> item;
        ignoringFailures([&] { item = mFolder->Add(mProject.LocalSpec(), kAddComment, VSSFLAG_KEEPYES); });
        return item;
    }

    Ref<VSSItem> subproject(const std::string& name, const std::string& caption) {
        const auto spec = mProject.SSProject() + name;
        if (mProject.DoesSSProjectExist(spec)) return mProject.VSSItem(spec);
        mProject.SourceSafeProgress(caption);
        const auto folder = mProject.VSSItem(mProject.SSProject());
        return folder ? folder->NewSubproject(name, kCreateComment) : nullptr;
    }

    void addCollection(const CheckedElement& element, const Ref<VSSItem>& folder,
                       const std::string& caption) {
        if (mProject.DoesSSItemExist(element.SSSpec())) return;
        mProject.SourceSafeProgress(caption);
        folder->Add(element.LocalSpec(), kAddComment, VSSFLAG_KEEPYES);
    }

    void addAllTopics() {
        if (!subproject("TopicData", "Creating Topic Data sub-project")) return fail();
        for (const auto& topic : mProject.Topics->Items()) {
            if (mProject.DoesSSItemExist(topic->SSSpec())) continue;
            mProject.SourceSafeProgress("Adding Topic '" + topic->Name() + "'");
            topic->AddToSourceSafe();
        }
    }

    void addFiles() {
        for (const auto& file : mProject.OtherFiles->Items()) {
            const auto full = file->LocalSpec();
            if (file->RelativeFileName() == full) {
                platform().messages->Show(
                    "The file '" + full +
                        "' is not in a sub-directory of the project file directory and so cannot be added to "
                        "SourceSafe.  This file will be removed from the project in order to continue adding "
                        "to "
                        "SourceSafe.  Move the file to a sub-directory and then add back to the project.",
                    "SourceSafe", MessageButtons::bsOK, MessageIcon::biExclamation);
                mProject.OtherFiles->Remove(full);
            } else if (!mProject.DoesSSItemExist(file->SSSpec())) {
                mProject.SourceSafeProgress("Adding File '" + file->Filename()->FileName() + "'");
                if (!file->AddToSourceSafe()) return fail();
            }
        }
    }

    QbProject& mProject;
    Ref<VSSItem> mFolder;
    bool mResult = true;
};

}  // namespace

bool QbProject::AddToSourceSafe(bool addTopics) { return Import(*this).Run(addTopics); }

Ref<quillbox::VSSItem> QbProject::CreateSourceSafeProjectFolder(const std::string& projectSpec) {
    Ref<quillbox::VSSItem> result;
    ignoringFailures([&] {
        const auto database = VSSDatabase();
        const auto parts = split(projectSpec, "/");
        if (!database || parts.empty() || parts.front() != "$") return;
        auto current = database->VSSItem("$/", false);
        for (std::size_t i = 1; i < parts.size(); ++i) {
            if (trimBlanks(parts[i]).empty()) continue;
            auto spec = current->Spec();
            if (!spec.ends_with('/')) spec += "/";
            Ref<quillbox::VSSItem> next;
            ignoringFailures([&] { next = database->VSSItem(spec + parts[i], false); });
            current = next ? next : current->NewSubproject(parts[i], "");
        }
        result = current;
    });
    return result;
}

}  // namespace quillbox
