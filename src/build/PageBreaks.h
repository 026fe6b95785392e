#pragma once

#include <string>

namespace quillbox {

class ManifestEntry;
class QbDataProvider;

// The HTML of a page break before an entry of a booklet; empty where none is wanted.
std::string pageBreakBefore(QbDataProvider& provider, const ManifestEntry& entry);

}  // namespace quillbox
