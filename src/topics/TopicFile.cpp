// How a topic reads and writes itself.

#include <charconv>

#include "frame/Module.h"
#include "frame/Platform.h"
#include "frame/XmlAccess.h"
#include "project/ElementFile.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/TopicCategories.h"

namespace quillbox {

namespace {

constexpr const char* kDateFormat = "dd-mm-yyyy hh:nn";
constexpr const char* kDefaultStatus = "In Progress";

// By position: day, month and year. The time of day is dropped; it is meant so.
Date dayOf(const std::string& text) {
    Date date;
    ignoringFailures([&] {
        if (text.size() < 10) return;
        Date::Parts parts;
        parts.day = integerOf(text.substr(0, 2));
        parts.month = integerOf(text.substr(3, 2));
        parts.year = integerOf(text.substr(6, 4));
        date = Date::From(parts).value_or(Date());
    });
    return date;
}

ElementFile fileOf(const Topic& topic, const QbProject& project) {
    return {project, project.TopicDataPath(), topic.Key + ".xml", "Topic"};
}

}  // namespace

Ref<XMLElement> Topic::Load(Ref<XMLElement> e) {
    mLoading = true;
    NewTopicFlag = false;
    if (e) Key = required(e, "Key");
    fileOf(*this, *mQbProject.Need()).Load(e, [&](const Ref<XMLElement>& source) {
        loadAttributes(source);
        if (Key.empty()) Key = CreateGUID();
        Keywords = make<Collection>();
        hearRelatedTopics(make<quillbox::RelatedTopics>());
        TopicSections = make<quillbox::TopicSections>();
        mStyleSheets = make<Collection>();
        forEachChild(source, [&](const Ref<XMLElement>& child) { loadChild(child); });
    });
    mLoading = false;
    return e;
}

void Topic::loadAttributes(const Ref<XMLElement>& e) {
    const auto read = [&](const char* name, auto&& use) { optionalAttribute(e, name, use); };
    const auto now = platform().system->Now();
    read("Name", [&](const std::string& v) { SetName(v); });
    read("Title", [&](const std::string& v) { SetTitle(v); });
    read("ContentsTitle", [&](const std::string& v) { mContentsTitle = v; });
    if (mContentsTitle == mTitle) mContentsTitle.clear();
    read("IsDefault", [&](const std::string& v) { SetIsDefault(isTrue(v)); });
    read("Category",
         [&](const std::string& v) { SetTopicCategory(mQbProject.Need()->TopicCategories->Item(v)); });
    read("Status", [&](const std::string& v) { SetStatus(v); });
    read("CreatedOn", [&](const std::string& v) { SetCreatedOn(dayOf(v)); });
    read("ModifiedOn", [&](const std::string& v) { SetModifiedOn(dayOf(v)); });
    if (mCreatedOn.IsZero()) mCreatedOn = now;
    if (mModifiedOn.IsZero()) mModifiedOn = now;
    if (mStatus.empty()) SetStatus(kDefaultStatus);
    read("LayoutName", [&](const std::string& v) { SetLayoutName(v); });
    SetAllStylesheets(true);
    read("AllStylesheets", [&](const std::string& v) { SetAllStylesheets(isTrue(v)); });
    read("AutoGenerateIndexEntry", [&](const std::string& v) { SetAutoGenerateIndexEntry(isTrue(v)); });
    read("IncludeInHelpFile", [&](const std::string& v) { SetIncludeInHelpFile(isTrue(v)); });
    read("HelpContextIDs", [&](const std::string& v) { SetHelpContextIDs(v); });
}

void Topic::loadChild(const Ref<XMLElement>& child) {
    const auto name = lower(child->Name());
    if (name == "k") {
        Keywords->Add(required(child, "value"));
    } else if (name == "r") {
        const auto related = make<RelatedTopic>();
        related->SetParentTopic(self(this));
        related->Load(child);
        RelatedTopics()->Add(related);
    } else if (name == "c") {
        NewTopicSection("BodyText", child->Text());  // the older form of the body
    } else if (name == "s") {
        NewTopicSection(required(child, "k"), child->Text());
    } else if (name == "notes") {
        mNotes = std::string(trimBlanks(child->Text()));
        if (mNotes == "\r\n") SetNotes("");
    } else if (name == "st" && !mAllStylesheets) {
        for (const auto& file : child->Children()) mStyleSheets->Add(file->Text(), file->Text());
    }
}

Ref<XMLElement> Topic::Save(Ref<XMLElement> e) {
    const auto project = mQbProject.Need();
    if (e) e->AddAttribute("Key", Key);
    const auto file = fileOf(*this, *project);
    const bool built = file.Save(
        e, mDirty, [&] { return IsCheckedOut(); }, [&](const Ref<XMLElement>& root) { WriteContent(root); });
    if (!built) return e;
    NewTopicFlag = false;
    SetDirty(false);
    return e;
}

void Topic::WriteContent(const Ref<XMLElement>& e) {
    e->AddAttribute("Name", mName);
    e->AddAttribute("Title", mTitle);
    e->AddAttribute("ContentsTitle", ContentsTitle());
    addBoolean(e, "IsDefault", mIsDefault);
    e->AddAttribute("Status", mStatus);
    e->AddAttribute("CreatedOn", mCreatedOn.Format(kDateFormat));
    e->AddAttribute("ModifiedOn", mModifiedOn.Format(kDateFormat));
    e->AddAttribute("LayoutName", mLayoutName);
    addBoolean(e, "AllStyleSheets", mAllStylesheets);
    addBoolean(e, "AutoGenerateIndexEntry", mAutoGenerateIndexEntry);
    addBoolean(e, "IncludeInHelpFile", mIncludeInHelpFile);
    e->AddAttribute("HelpContextIDs", mHelpContextIDs);
    if (!mAllStylesheets) {
        const auto list = e->AddChild("st", "");
        for (const auto& name : mStyleSheets->Texts()) list->AddChild("f", name);
    }
    e->AddChild("Notes", mNotes);
    const auto category = TopicCategory();
    e->AddAttribute("Category", category ? category->Key : "");
    for (const auto& keyword : Keywords->Texts()) e->AddChild("k", "")->AddAttribute("Value", keyword);
    for (const auto& related : RelatedTopics()->Items()) related->Save(e->AddChild("r", ""));
    for (const auto& section : TopicSections->Items()) {
        e->AddChild("s", section->Text())->AddAttribute("k", section->DefKey());
    }
}

}  // namespace quillbox
