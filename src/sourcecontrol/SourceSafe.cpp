#include "sourcecontrol/SourceSafe.h"

#include <optional>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "frame/Platform.h"
#include "project/QbProject.h"

namespace quillbox {

namespace {

constexpr const char* kQuillboxKey = "Software\\Merivane\\Quillbox";

std::optional<bool>& available() {
    static std::optional<bool> answer;
    return answer;
}

std::string userSetting(const std::string& name) {
    return platform().settings->Read(Hive::CurrentUser, kQuillboxKey, name);
}

template <class Call>
bool guarded(const Ref<VSSItem>& item, const std::string& what, Call&& call) {
    try {
        call();
        return true;
    } catch (const AutomationError& error) {
        platform().messages->Show("SourceSafe " + what + " of item '" + item->Spec() + "' failed.  Error " +
                                      std::to_string(error.Number()) + " (" + error.Description() + ")",
                                  "", MessageButtons::bsOK, MessageIcon::biNone);
        return false;
    }
}

}  // namespace

bool IsSourceSafeAvailable() {
    if (!available()) {
        available() = false;
        ignoringFailures([] { available() = platform().sourceSafe && platform().sourceSafe->NewDatabase(); });
    }
    return *available();
}

void resetSourceSafe() { available().reset(); }

std::string SSDatabase() {
    auto location = userSetting("SSDatabase");
    if (location.empty()) {
        location = platform().settings->Read(Hive::LocalMachine, "Software\\Microsoft\\SourceSafe",
                                             "Current Database");
    }
    const auto file = newFile(location);
    if (location.empty() || !file->Exists() || lower(file->Extension()) == "ini") return location;
    // Of a folder the folder itself counts, of a file the one it stands in.
    const bool ended = location.back() == '/' || location.back() == '\\';
    const auto inside = ended ? file : newFile(location + platform().files->Separator());
    return newFile((inside->DirectoryExists() ? inside : file)->Directory() + "srcsafe.ini")->FullPath();
}

std::string SSUser() { return userSetting("SSUser"); }
std::string SSPassword() { return userSetting("SSPassword"); }

Ref<VSSDatabase> openVSSDatabase() {
    Ref<VSSDatabase> database;
    ignoringFailures([&] {
        if (!platform().sourceSafe) return;
        auto session = platform().sourceSafe->NewDatabase();
        if (!session) return;
        session->Open(SSDatabase(), SSUser(), SSPassword());
        database = session;
    });
    return database;
}

bool checkOutItem(QbProject& project, const Ref<VSSItem>& item, const std::string& checkOutPath,
                  const std::string& comment) {
    if (!IsSourceSafeAvailable() || !item) return false;
    if (project.GetCheckOutStatus(item->Spec(), checkOutPath) != StatusCheckedIn) return false;
    return guarded(item, "Check Out", [&] { item->Checkout(comment, checkOutPath + item->Name(), 0); });
}

bool checkInItem(const Ref<VSSItem>& item, const std::string& localSpec, const std::string& comment,
                 bool keepCheckedOut) {
    if (!IsSourceSafeAvailable() || !item || item->IsCheckedOut() != VSSFILE_CHECKEDOUT_ME) return false;
    return guarded(item, "Check In", [&] {
        item->Checkin(comment, localSpec, keepCheckedOut ? VSSFLAG_KEEPYES : VSSFLAG_KEEPNO);
    });
}

bool getLatestItem(const Ref<VSSItem>& item, const std::string& localSpec) {
    if (!IsSourceSafeAvailable() || !item) return false;
    bool done = false;
    ignoringFailures([&] {
        if (item->Checkouts()->Count() != 0) return;
        item->Get(localSpec, 0);
        done = true;
    });
    return done;
}

bool undoCheckOutItem(const Ref<VSSItem>& item, const std::string& localSpec) {
    if (!IsSourceSafeAvailable() || !item) return false;
    return guarded(item, "Undo Check Out", [&] { item->UndoCheckout(localSpec, 0); });
}

}  // namespace quillbox
