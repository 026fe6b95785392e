#include "content/Tasks.h"

#include "frame/Platform.h"

namespace quillbox {

namespace {

constexpr const char* kDateFormat = "dd-mm-yyyy hh:nn:ss";

// By position, whatever stands between the numbers.
Date dateOf(const std::string& text) {
    if (text.size() >= 19) {
        const auto number = [&](std::size_t position, std::size_t length) {
            return integerOf(text.substr(position - 1, length));
        };
        Date::Parts parts;
        parts.year = number(7, 4);
        parts.month = number(4, 2);
        parts.day = number(1, 2);
        parts.hour = number(12, 2);
        parts.minute = number(15, 2);
        parts.second = number(18, 2);
        if (const auto date = Date::From(parts)) return *date;
    }
    throw AutomationError("'" + text + "' is not a date of the form day-month-year hours:minutes:seconds");
}

}  // namespace

Task::Task() : mCreatedOn(platform().system->Now()), mCreatedBy(platform().system->UserName()) {}

void Task::changed() {
    if (mPauseEvents) return;
    if (const auto project = QbProject()) {
        project->FireTaskChanged(self(this));
        project->Tasks->SetDirty(true);
    }
    // Stamped last: who hears of the change still sees the old stamps.
    mModifiedOn = platform().system->Now();
    mModifiedBy = platform().system->UserName();
}

void Task::Load(const Ref<XMLElement>& e) {
    mPauseEvents = true;
    Key = required(e, "Key");
    mPriority = required(e, "Priority");
    mTitle = required(e, "Title");
    mNotes = e->Text();
    mAssignedTo = required(e, "AssignedTo");
    mTopicID = required(e, "TopicID");
    mStatus = required(e, "Status");
    mCreatedOn = dateOf(required(e, "CreatedOn"));
    mCreatedBy = required(e, "CreatedBy");
    mModifiedOn = dateOf(required(e, "ModifiedOn"));
    mModifiedBy = required(e, "ModifiedBy");
    mPauseEvents = false;
}

void Task::Save(const Ref<XMLElement>& e) const {
    e->AddAttribute("Key", Key);
    e->AddAttribute("Priority", mPriority);
    e->AddAttribute("Title", mTitle);
    e->SetText(mNotes);
    e->AddAttribute("AssignedTo", mAssignedTo);
    e->AddAttribute("TopicID", mTopicID);
    e->AddAttribute("Status", mStatus);
    e->AddAttribute("CreatedOn", mCreatedOn.Format(kDateFormat));
    e->AddAttribute("CreatedBy", mCreatedBy);
    e->AddAttribute("ModifiedOn", mModifiedOn.Format(kDateFormat));
    e->AddAttribute("ModifiedBy", mModifiedBy);
}

const SatelliteFile& Tasks::satellite() const {
    static constexpr SatelliteFile row{"Tasks.xml", "Tasks", "Task", ProjectElementTasks};
    return row;
}

void Tasks::Add(const Ref<Task>& item, const Value& key, const Value& before, const Value& after) {
    mCol.Add(item, key, before, after);
    if (const auto project = QbProject()) project->FireTaskAdded(item);
    SetDirty(true);
}

void Tasks::Remove(const Value& key) {
    const auto item = mCol.Remove(key);
    if (const auto project = QbProject()) project->FireTaskRemoved(item);
    SetDirty(true);
}

}  // namespace quillbox
