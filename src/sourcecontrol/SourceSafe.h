#pragma once

#include <string>

#include "platform/SourceSafe.h"

namespace quillbox {

class QbProject;

// The source control client of this machine: whether it is there, how to log in, and the guarded calls.

// Found out once in the process; no login takes place.
bool IsSourceSafeAvailable();
// Forgets the answer, for a host that changed the platform.
void resetSourceSafe();

std::string SSDatabase();
std::string SSUser();
std::string SSPassword();

// A new session that is logged in; none where that fails.
Ref<VSSDatabase> openVSSDatabase();

// The four commands on an item, which may be none. Each gives True only if the call ran. A refused guard is
// silent; a failed call shows a message, but for the get.
bool checkOutItem(QbProject& project, const Ref<VSSItem>& item, const std::string& checkOutPath,
                  const std::string& comment);
bool checkInItem(const Ref<VSSItem>& item, const std::string& localSpec, const std::string& comment,
                 bool keepCheckedOut);
bool getLatestItem(const Ref<VSSItem>& item, const std::string& localSpec);
bool undoCheckOutItem(const Ref<VSSItem>& item, const std::string& localSpec);

}  // namespace quillbox
