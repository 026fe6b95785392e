#pragma once

namespace quillbox {

// Major, minor and revision of the library, as project files tell it.
inline constexpr const char* kVersion = QUILLBOX_VERSION;

}  // namespace quillbox
