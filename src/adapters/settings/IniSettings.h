#pragma once

#include <memory>

#include "platform/SettingsStore.h"

namespace quillbox {

// The settings of the user and of the machine in one small text file each, found anew at every access: in the
// folder that QUILLBOX_REGISTRY names, else in the user's configuration directory and the machine's.
std::shared_ptr<SettingsStore> makeIniSettings();

}  // namespace quillbox
