#pragma once

#include <string>

namespace quillbox {

class WebRequest {
  public:
    virtual ~WebRequest() = default;
    // Fetches an http or https address. The result is what went wrong, for a person to read; empty after
    // success.
    virtual std::string Fetch(const std::string& url) = 0;
};

}  // namespace quillbox
