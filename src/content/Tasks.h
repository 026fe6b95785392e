#pragma once

#include <string>

#include "content/SatelliteCollection.h"

namespace quillbox {

// Something that an author has to do.
class Task : public Object {
  public:
    static constexpr std::string_view kClassName = "Task";
    std::string_view ClassName() const override { return kClassName; }

    // Stamped with the present time and user.
    Task();

    // While True there are no notices and no stamps.
    bool PauseEvents() const { return mPauseEvents; }
    void SetPauseEvents(bool v) { mPauseEvents = v; }
    Ref<quillbox::QbProject> QbProject() const { return mQbProject.Get(); }
    void SetQbProject(const Ref<quillbox::QbProject>& project) { mQbProject.Set(project); }
    std::string ModifiedBy() const { return mModifiedBy; }
    void SetModifiedBy(const std::string& v) { store(mModifiedBy, v); }
    Date ModifiedOn() const { return mModifiedOn; }
    void SetModifiedOn(const Date& v) { store(mModifiedOn, v); }
    std::string CreatedBy() const { return mCreatedBy; }
    void SetCreatedBy(const std::string& v) { store(mCreatedBy, v); }
    Date CreatedOn() const { return mCreatedOn; }
    void SetCreatedOn(const Date& v) { store(mCreatedOn, v); }
    std::string Status() const { return mStatus; }
    void SetStatus(const std::string& v) { store(mStatus, v); }
    std::string TopicID() const { return mTopicID; }
    void SetTopicID(const std::string& v) { store(mTopicID, v); }
    std::string AssignedTo() const { return mAssignedTo; }
    void SetAssignedTo(const std::string& v) { store(mAssignedTo, v); }
    std::string Notes() const { return mNotes; }
    void SetNotes(const std::string& v) { store(mNotes, v); }
    std::string Title() const { return mTitle; }
    void SetTitle(const std::string& v) { store(mTitle, v); }
    std::string Priority() const { return mPriority; }
    void SetPriority(const std::string& v) { store(mPriority, v); }

    // No notice: a key is given once.
    std::string Key;

    void Load(const Ref<XMLElement>& e);
    void Save(const Ref<XMLElement>& e) const;
    void FireChanged() { changed(); }

  private:
    template <class T>
    void store(T& field, const T& value) {
        field = value;
        changed();
    }
    void changed();

    ProjectHandle mQbProject;
    bool mPauseEvents = false;
    std::string mPriority = "Medium";
    std::string mTitle, mNotes, mAssignedTo, mTopicID;
    std::string mStatus = "Not Started";
    Date mCreatedOn;
    std::string mCreatedBy;
    Date mModifiedOn;
    std::string mModifiedBy;
};

class Tasks : public SatelliteCollection<Task> {
  public:
    static constexpr std::string_view kClassName = "Tasks";
    std::string_view ClassName() const override { return kClassName; }

    bool PauseEvents = false;
    // None for an unknown key.
    Ref<Task> Item(const Value& key) const { return find(key); }
    void Add(const Ref<Task>& item, const Value& key = {}, const Value& before = {}, const Value& after = {});
    void Remove(const Value& key);

  protected:
    const SatelliteFile& satellite() const override;
    std::string labelOf(const Task& item) const override { return "Task '" + item.Title() + "'"; }
    void adopt(const Ref<Task>& item) override { item->SetQbProject(QbProject()); }
    // Tells True and False alike, and needs the project: it is meant so.
    void dirtyChanged(bool) override { mQbProject.Need()->FireDirtyStateChanged(); }
};

}  // namespace quillbox
