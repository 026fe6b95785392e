#pragma once

#include <string>

namespace quillbox {

// A project of the HTML Help compiler with one context id for each page.
struct OneIdAPage {
    std::string project;
    // A line for each id that was left out, for the log.
    std::string notes;
};

// chmcmd fails for a project with several context ids for one page: this keeps the first.
OneIdAPage withOneIdAPage(const std::string& project);

}  // namespace quillbox
