#pragma once

#include <string>

#include "base/ItemCollection.h"
#include "frame/XmlAccess.h"
#include "project/ElementFile.h"
#include "project/ProjectHandle.h"
#include "project/QbProject.h"
#include "sourcecontrol/CheckedElement.h"

namespace quillbox {

// What sets one collection with a file of its own apart from the others.
struct SatelliteFile {
    const char* fileName;
    const char* rootName;
    const char* childName;
    ProjectElementTypeEnum elementType;
};

// A collection of a project that stands in the project file, or in a separate-files project in a file of its
// own in the folder "ProjectData": the contents tree, the glossary, the tasks and the manifests.
template <class T>
class SatelliteCollection : public ItemCollection<T>, public CheckedElement {
  public:
    static constexpr bool kHasOwnFile = true;

    Ref<quillbox::QbProject> QbProject() const { return mQbProject.Get(); }
    void SetQbProject(const Ref<quillbox::QbProject>& project) { mQbProject.Set(project); }

    bool Dirty() const { return mDirty; }
    void SetDirty(bool v) {
        mDirty = v;
        dirtyChanged(v);
    }

    std::string LocalSpec() const override {
        return mQbProject.Need()->ProjectDataPath() + satellite().fileName;
    }
    std::string SSSpec() const override {
        return mQbProject.Need()->ProjectDataSpec() + satellite().fileName;
    }

    // Never clears `Dirty`; the project does that when all is saved. Gives the element that was written.
    Ref<XMLElement> Save(Ref<XMLElement> e) {
        file().Save(
            e, mDirty, [&] { return IsCheckedOut(); },
            [&](const Ref<XMLElement>& root) { WriteContent(root); });
        return e;
    }
    // A failure names the item.
    void WriteContent(const Ref<XMLElement>& e) {
        for (const auto& item : this->Items()) {
            inside([&] { return labelOf(*item); },
                   [&] { item->Save(e->AddChild(satellite().childName, "")); });
        }
    }

    // Adds to what is there, with no event. A missing file adds nothing. Gives the element that was read.
    Ref<XMLElement> Load(Ref<XMLElement> e) {
        file().Load(e, [&](const Ref<XMLElement>& source) {
            forEachChild(source, [&](const Ref<XMLElement>& child) {
                const auto item = make<T>();
                adopt(item);
                item->Load(child);
                this->mCol.Add(item, item->Key);
            });
        });
        SetDirty(false);
        return e;
    }

  protected:
    virtual const SatelliteFile& satellite() const = 0;
    // What an item is called in a failure.
    virtual std::string labelOf(const T& item) const = 0;
    // Gives a new item its way up.
    virtual void adopt(const Ref<T>& item) = 0;

    // Most collections tell the project when they become dirty.
    virtual void dirtyChanged(bool dirty) {
        const auto project = QbProject();
        if (project && dirty) project->FireDirtyStateChanged();
    }

    const ElementTraits& traits() const override {
        static constexpr ElementTraits row{"Checked out by Quillbox", true, true, true, false, false};
        return row;
    }
    Ref<quillbox::QbProject> elementProject() const override { return mQbProject.Need(); }
    std::string checkOutPath() const override { return mQbProject.Need()->ProjectDataPath(); }
    bool isDirty() const override { return mDirty; }
    void saveElement() override { Save({}); }
    void raiseStatusChanged() override {
        mQbProject.Need()->FireProjectElementCheckOutStatusChanged(satellite().elementType);
    }

    ProjectHandle mQbProject;

  private:
    ElementFile file() const {
        const auto project = mQbProject.Need();
        return {*project, project->ProjectDataPath(), satellite().fileName, satellite().rootName};
    }

    bool mDirty = false;
};

}  // namespace quillbox
