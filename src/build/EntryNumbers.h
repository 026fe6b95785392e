#pragma once

#include <string>

#include "base/Object.h"

namespace quillbox {

class Manifest;
class ManifestEntry;

// The number of an entry with a suffix; empty for none, for one without a number, and where the booklet shows
// none.
std::string manifestEntryNumber(const Manifest& manifest, const Ref<ManifestEntry>& entry,
                                const std::string& suffix);

}  // namespace quillbox
