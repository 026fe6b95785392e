#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/FoldedMap.h"
#include "engine/OutputFolder.h"

namespace quillbox {

// Gathers what pages and style sheets refer to below the output folder: images, styles, files to download.
class LocalFiles {
  public:
    // `name` is the file's own, from which its references count.
    void ScanPage(const std::string& name, std::string_view html);
    void ScanStyles(const std::string& name, std::string_view css);

    // The files that are there and are no pages of the build, with what their styles refer to in turn, in the
    // order of first mention.
    std::vector<std::string> Closure(const OutputFolder& output);

  private:
    void add(const std::string& folder, std::string_view reference);
    void scanTag(const std::string& folder, std::string_view tag);
    void scanStyles(const std::string& folder, std::string_view css);

    // As written, with the folder of the referring file; then by name.
    TextSet mSeen, mKnown;
    std::vector<std::string> mNames;
    // Used again and again for what is looked up.
    std::string mWritten;
};

}  // namespace quillbox
