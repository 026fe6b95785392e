#include "sourcecontrol/CheckedElement.h"

#include "base/AutomationError.h"
#include "frame/Platform.h"
#include "project/QbProject.h"
#include "sourcecontrol/SourceSafe.h"

namespace quillbox {

Ref<VSSItem> CheckedElement::item() const { return elementProject()->VSSItem(SSSpec()); }

void CheckedElement::statusChanged() {
    ResetReadOnlyCache();
    raiseStatusChanged();
}

bool CheckedElement::CheckOut(const std::string& comment) {
    if (!checkOutItem(*elementProject(), item(), checkOutPath(), comment)) return false;
    statusChanged();
    return true;
}

bool CheckedElement::CheckIn(const std::string& comment, bool keepCheckedOut) {
    if (traits().savesBeforeCheckIn && isDirty()) saveElement();
    if (IsDifferent()) {
        if (!checkInItem(item(), LocalSpec(), comment, keepCheckedOut)) return false;
        if (!keepCheckedOut || traits().tellsKeptCheckIn) statusChanged();
        return true;
    }
    if (keepCheckedOut) return traits().keptAndSameIsDone;
    // An unchanged file is not stored as a new version.
    if (!undoCheckOutItem(item(), LocalSpec())) return false;
    statusChanged();
    return true;
}

bool CheckedElement::UndoCheckout() {
    if (!undoCheckOutItem(item(), LocalSpec())) return false;
    if (traits().reloadsAfterUndo) reloadElement();
    statusChanged();
    return true;
}

bool CheckedElement::GetLatestVersion() { return getLatestItem(item(), LocalSpec()); }

CheckOutStatusEnum CheckedElement::CheckOutStatus() const {
    if (isNew()) return StatusCheckedOutToCurrentUser;
    return elementProject()->GetCheckOutStatus(SSSpec(), checkOutPath());
}

bool CheckedElement::IsDifferent() const {
    bool different = false;
    ignoringFailures([&] {
        if (const auto found = item()) different = found->IsDifferent(LocalSpec());
    });
    return different;
}

bool CheckedElement::ReadOnly() const {
    if (isNew()) return false;
    if (!traits().cachesReadOnly) return computeReadOnly();
    if (!mReadOnlyCache) mReadOnlyCache = computeReadOnly();
    return *mReadOnlyCache;
}

bool CheckedElement::computeReadOnly() const {
    const auto project = elementProject();
    if (project->ProjectType() == ProjectTypeSingleFile) return false;
    if (project->SSActivated()) return CheckOutStatus() != StatusCheckedOutToCurrentUser;
    return newFile(LocalSpec())->IsReadOnly();
}

std::string CheckedElement::CheckedOutToUser() const {
    const auto found = item();
    if (!found) return {};
    const auto checkouts = found->Checkouts();
    return checkouts->Count() >= 1 ? checkouts->Item(1)->Username() : std::string();
}

}  // namespace quillbox
