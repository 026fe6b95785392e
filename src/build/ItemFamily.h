#pragma once

#include "platform/engine/Document.h"

namespace quillbox {

class QbProject;

// The name that templates know this library's items by; also the key of the project in a document's
// `Objects`.
inline constexpr const char* kProviderName = "CM.Quillbox";
inline const std::string kProviderClass = "Quillbox.QbNamespaceProvider";
inline constexpr const char* kItemFamily = "cm.quillbox";

inline constexpr const char* kTopicItems = "cm.quillbox:topic";
inline constexpr const char* kGlossaryItems = "cm.quillbox:glossaryitem";
inline constexpr const char* kManifestEntryItems = "cm.quillbox:manifestentry";

// The project that a document is about; none where it holds no project.
Ref<QbProject> projectOf(const Document& document);

// The document engine of the platform, told of the items of this library. Fails where there is none.
DocumentEngine& documentEngine();

}  // namespace quillbox
