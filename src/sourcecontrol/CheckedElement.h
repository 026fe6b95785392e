#pragma once

#include <optional>
#include <string>

#include "base/Object.h"
#include "frame/Enumerations.h"
#include "platform/SourceSafe.h"

namespace quillbox {

class QbProject;

// How one kind of element differs from the others under source control.
struct ElementTraits {
    const char* checkOutComment;
    bool savesBeforeCheckIn;
    bool tellsKeptCheckIn;   // the status event also when the element stays checked out
    bool keptAndSameIsDone;  // the result of a check-in that keeps an unchanged element
    bool reloadsAfterUndo;
    bool cachesReadOnly;
};

inline constexpr const char* kCheckInComment = "Checked In by Quillbox";
inline constexpr const char* kAddComment = "Added by Quillbox";
inline constexpr const char* kCreateComment = "Created by Quillbox";

// An element of a project with a file of its own that can be under source control: the project file, a topic,
// an other file, and the four collection files. All answer the same questions and take the same commands.
class CheckedElement {
  public:
    virtual ~CheckedElement() = default;

    // The file on disk, and the item in the database.
    virtual std::string LocalSpec() const = 0;
    virtual std::string SSSpec() const = 0;

    bool CheckOut() { return CheckOut(traits().checkOutComment); }
    bool CheckOut(const std::string& comment);
    bool CheckIn(const std::string& comment = kCheckInComment, bool keepCheckedOut = true);
    bool UndoCheckout();
    bool GetLatestVersion();

    virtual CheckOutStatusEnum CheckOutStatus() const;
    bool IsCheckedOut() const { return CheckOutStatus() == StatusCheckedOutToCurrentUser; }
    bool IsDifferent() const;
    // Whether the element may not be edited now.
    bool ReadOnly() const;
    // Who has the element checked out; empty for nobody.
    std::string CheckedOutToUser() const;

    void ResetReadOnlyCache() { mReadOnlyCache.reset(); }

  protected:
    virtual const ElementTraits& traits() const = 0;
    virtual Ref<QbProject> elementProject() const = 0;
    // The folder that the element is checked out to, with its trailing separator.
    virtual std::string checkOutPath() const = 0;
    // An element that was never saved belongs to its maker.
    virtual bool isNew() const { return false; }
    virtual bool isDirty() const { return false; }
    virtual void saveElement() {}
    virtual void reloadElement() {}
    virtual void raiseStatusChanged() = 0;

    Ref<VSSItem> item() const;

  private:
    void statusChanged();
    bool computeReadOnly() const;

    mutable std::optional<bool> mReadOnlyCache;
};

}  // namespace quillbox
