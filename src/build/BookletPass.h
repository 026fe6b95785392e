#pragma once

#include <string>

namespace quillbox {

class QbDataProvider;

// A topic's HTML for print: each hyperlink replaced by the scrap that is for its kind, and headings numbered
// where the booklet asks for it.
std::string prepareForPrint(QbDataProvider& provider, const std::string& html);

}  // namespace quillbox
