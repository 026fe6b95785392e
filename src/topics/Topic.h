#pragma once

#include <sigc++/sigc++.h>

#include <string>

#include "base/Collection.h"
#include "base/Date.h"
#include "base/NameTable.h"
#include "platform/HTML.h"
#include "platform/XML.h"
#include "project/ProjectHandle.h"
#include "sourcecontrol/CheckedElement.h"
#include "topics/RelatedTopics.h"
#include "topics/TopicSection.h"

namespace quillbox {

class LinkInfos;
class TopicCategory;

// One help page of a project: what it is called, its named sections, its keywords, stylesheets and see-also
// links.
class Topic : public Object, public CheckedElement {
  public:
    static constexpr std::string_view kClassName = "Topic";
    static constexpr bool kHasOwnFile = true;
    std::string_view ClassName() const override { return kClassName; }

    // True until the topic has been loaded or saved.
    bool NewTopicFlag = true;
    Ref<Collection> Keywords = make<Collection>();
    std::string Key;
    Ref<quillbox::TopicSections> TopicSections = make<quillbox::TopicSections>();
    // Numbers of the booklet that is being built.
    std::string RuntimeEntryNumber;
    int RuntimePageNumberStart = 0;
    int RuntimePageNumberEnd = 0;

    std::string Name() const { return mName; }
    void SetName(const std::string& v);
    std::string Title() const { return mTitle; }
    void SetTitle(const std::string& v) { store(mTitle, v); }
    // The title where no contents title of its own is set.
    std::string ContentsTitle() const { return mContentsTitle.empty() ? mTitle : mContentsTitle; }
    void SetContentsTitle(const std::string& v) { store(mContentsTitle, v); }
    std::string InternalContentsTitle() const { return mContentsTitle; }
    std::string Notes() const { return mNotes; }
    void SetNotes(const std::string& v) { store(mNotes, v); }
    std::string Status() const { return mStatus; }
    void SetStatus(const std::string& v) { store(mStatus, v); }
    std::string LayoutName() const { return mLayoutName; }
    void SetLayoutName(const std::string& v) { store(mLayoutName, v); }
    std::string HelpContextIDs() const { return mHelpContextIDs; }
    void SetHelpContextIDs(const std::string& v) { store(mHelpContextIDs, v); }
    bool IsDefault() const { return mIsDefault; }
    void SetIsDefault(bool v) { store(mIsDefault, v); }
    bool IncludeInHelpFile() const { return mIncludeInHelpFile; }
    void SetIncludeInHelpFile(bool v) { store(mIncludeInHelpFile, v); }
    bool AutoGenerateIndexEntry() const { return mAutoGenerateIndexEntry; }
    void SetAutoGenerateIndexEntry(bool v) { store(mAutoGenerateIndexEntry, v); }
    bool AllStylesheets() const { return mAllStylesheets; }
    void SetAllStylesheets(bool v);
    Ref<Collection> StyleSheets() const { return mStyleSheets; }
    Ref<quillbox::TopicCategory> TopicCategory() const { return mTopicCategory.Get(); }
    void SetTopicCategory(const Ref<quillbox::TopicCategory>& v);
    Date CreatedOn() const { return mCreatedOn; }
    void SetCreatedOn(const Date& v) { mCreatedOn = v; }
    Date ModifiedOn() const { return mModifiedOn; }
    void SetModifiedOn(const Date& v) { mModifiedOn = v; }
    // Holds back what goes to the project; the topic's own events are raised all the same.
    bool PauseEvents() const { return mLoading; }
    void SetPauseEvents(bool v) { mLoading = v; }
    bool Dirty() const { return mDirty; }
    void SetDirty(bool v);
    Ref<quillbox::QbProject> QbProject() const { return mQbProject.Get(); }
    void SetQbProject(const Ref<quillbox::QbProject>& project) { mQbProject.Set(project); }
    Ref<quillbox::RelatedTopics> RelatedTopics();
    std::string QualifiedName() const { return mName; }

    // Text of a section; empty where there is no such section.
    std::string TopicSectionData(const std::string& key) const;
    void SetTopicSectionData(const std::string& key, const std::string& data);
    Ref<TopicSection> NewTopicSection(const std::string& key, const std::string& data);

    void AddKeyword(const std::string& keyword);
    void AddStyleSheet(const std::string& filename);
    void RemoveStyleSheet(const std::string& filename);
    bool IncludeStylesheet(const std::string& relativeFileName) const;

    void FireChanged() { changed(); }
    void FireRelatedTopicChanged(const Ref<RelatedTopic>& related);
    void FireTopicSectionChanged(const Ref<TopicSection>& section);

    // In a separate-files project both work on the topic's own file, and the element keeps the key alone.
    // Both give the element that was used.
    Ref<XMLElement> Load(Ref<XMLElement> e);
    Ref<XMLElement> Save(Ref<XMLElement> e);
    // Writes everything but the key.
    void WriteContent(const Ref<XMLElement>& e);

    // Links of the body that could not be proved good.
    Ref<LinkInfos> GetSuspectLinks(const Ref<LinkInfos>& addToCollection, Ref<HTMLDocument>& dom);

    std::string LocalSpec() const override;
    std::string SSSpec() const override;
    bool CheckedOut() const { return CheckOutStatus() == StatusCheckedOutToCurrentUser || NewTopicFlag; }
    bool AddToSourceSafe();

    sigc::signal<void(const Ref<TopicSection>&)> TopicSectionDataChanged;
    sigc::signal<void(const std::string&)> TopicStyleSheetAdded, TopicStyleSheetRemoved;
    sigc::signal<void()> TopicStyleSheetsChanged;
    sigc::signal<void()> CheckoutStatusChanged;

    static NameState& Names();

  private:
    const ElementTraits& traits() const override;
    Ref<quillbox::QbProject> elementProject() const override { return mQbProject.Need(); }
    std::string checkOutPath() const override;
    bool isNew() const override { return NewTopicFlag; }
    bool isDirty() const override { return mDirty; }
    void saveElement() override { Save({}); }
    void reloadElement() override;
    void raiseStatusChanged() override;

    template <class T>
    void store(T& field, const T& value) {
        field = value;
        changed();
    }
    void changed();
    void hearRelatedTopics(const Ref<quillbox::RelatedTopics>& related);
    void loadAttributes(const Ref<XMLElement>& e);
    void loadChild(const Ref<XMLElement>& child);

    bool mIsDefault = false;
    // The one pause flag of the topic, also set while it loads.
    bool mLoading = false;
    ProjectHandle mQbProject;
    std::string mName, mTitle, mContentsTitle;
    ObjectReference<quillbox::TopicCategory> mTopicCategory;
    bool mDirty = false;
    std::string mStatus;
    Date mCreatedOn, mModifiedOn;
    std::string mNotes, mLayoutName;
    Ref<Collection> mStyleSheets = make<Collection>();
    bool mAllStylesheets = true;
    bool mAutoGenerateIndexEntry = true;
    bool mIncludeInHelpFile = true;
    std::string mHelpContextIDs;
    Ref<quillbox::RelatedTopics> mRelatedTopics;
};

}  // namespace quillbox
