#include "build/EntryNumbers.h"

#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"

namespace quillbox {

std::string manifestEntryNumber(const Manifest& manifest, const Ref<ManifestEntry>& entry,
                                const std::string& suffix) {
    if (!entry || manifest.BookletProperties->EntryNumbering() == enNone) return {};
    const auto number = entry->RuntimeEntryNumber();
    return number.empty() ? number : number + suffix;
}

}  // namespace quillbox
