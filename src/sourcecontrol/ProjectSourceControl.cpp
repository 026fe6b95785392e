// The project's session with the source control client, and the project file as an element of it.

#include "booklets/Manifest.h"
#include "content/GlossaryItems.h"
#include "content/QbNode.h"
#include "frame/Platform.h"
#include "project/QbProject.h"
#include "sourcecontrol/SourceSafe.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox {

std::string QbProject::SSProject() const {
    return mSSProject.empty() || mSSProject.ends_with('/') ? mSSProject : mSSProject + "/";
}

bool QbProject::SSActivated() const { return mSSActivated && IsSourceSafeAvailable(); }

void QbProject::SetSSActivated(bool v) {
    if (!v) mVSSDatabase.reset();
    store(mSSActivated, v);
}

Ref<quillbox::VSSDatabase> QbProject::VSSDatabase() const {
    if (!IsSourceSafeAvailable()) return {};
    if (!mVSSDatabase) mVSSDatabase = openVSSDatabase();
    return mVSSDatabase;
}

std::string QbProject::dataPath(const std::string& folder) const {
    return Filename->Directory() + folder + platform().files->Separator();
}

Ref<quillbox::VSSItem> QbProject::VSSItem(const std::string& spec) const {
    Ref<quillbox::VSSItem> item;
    ignoringFailures([&] {
        if (const auto database = VSSDatabase()) item = database->VSSItem(spec, false);
    });
    return item;
}

bool QbProject::hasSSType(const std::string& spec, int type) const {
    bool has = false;
    ignoringFailures([&] {
        const auto item = VSSItem(spec);
        has = item && item->Type() == type;
    });
    return has;
}

bool QbProject::IsGlossaryInSourceSafe() { return DoesSSItemExist(GlossaryItems()->SSSpec()); }
bool QbProject::IsTOCInSourceSafe() const { return DoesSSItemExist(mQbNodes->SSSpec()); }
bool QbProject::IsManifestsInSourceSafe() const { return DoesSSItemExist(mManifests->SSSpec()); }

CheckOutStatusEnum QbProject::GetCheckOutStatus(const std::string& spec,
                                                const std::string& checkOutPath) const {
    const auto item = VSSItem(spec);
    if (!item) return StatusCheckedIn;
    const int status = item->IsCheckedOut();
    if (status == VSSFILE_NOTCHECKEDOUT) return StatusCheckedIn;
    if (status != VSSFILE_CHECKEDOUT_ME) return StatusCheckedOutToOtherUser;
    const auto folder = replaceAll(item->Checkouts()->Item(1)->LocalSpec() + "/", "\\", "/");
    return sameText(folder, replaceAll(checkOutPath, "\\", "/")) ? StatusCheckedOutToCurrentUser
                                                                 : StatusCheckedOutWrongDirectory;
}

const ElementTraits& QbProject::traits() const {
    static constexpr ElementTraits row{"Checked out by Quillbox", false, false, false, false, false};
    return row;
}

Ref<QbProject> QbProject::elementProject() const {
    return std::const_pointer_cast<QbProject>(std::static_pointer_cast<const QbProject>(shared_from_this()));
}

bool QbProject::CheckOut(bool recurse, const std::string& comment) {
    const bool done = CheckedElement::CheckOut(comment);
    if (recurse) {
        GlossaryItems()->CheckOut(comment);
        mQbNodes->CheckOut(comment);
        mManifests->CheckOut(comment);
        for (const auto& topic : Topics->Items()) topic->CheckOut();
    }
    return done;
}

bool QbProject::CheckIn(bool recurse, const std::string& comment, bool keepCheckedOut) {
    const bool done = CheckedElement::CheckIn(comment, keepCheckedOut);
    if (recurse) {
        GlossaryItems()->CheckIn(comment, keepCheckedOut);
        mQbNodes->CheckIn(comment, keepCheckedOut);
        mManifests->CheckIn(comment, keepCheckedOut);
        for (const auto& topic : Topics->Items()) topic->CheckIn(comment, keepCheckedOut);
    }
    return done;
}

bool QbProject::UndoCheckout(bool recurse) {
    const bool done = CheckedElement::UndoCheckout();
    if (recurse) {
        for (const auto& topic : Topics->Items()) topic->UndoCheckout();
    }
    return done;
}

bool QbProject::GetLatestSSVersion(bool recurse) {
    const bool done = GetLatestVersion();
    if (recurse) {
        for (const auto& topic : Topics->Items()) topic->GetLatestVersion();
    }
    return done;
}

}  // namespace quillbox
