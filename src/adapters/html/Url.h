#pragma once

#include <string>
#include <string_view>

namespace quillbox::html {

// What relative addresses in a document are resolved against.
class BaseAddress {
  public:
    BaseAddress() = default;
    // From the `href` of a base element: an address, or the path of a folder, which becomes "file:///" and
    // the path without its leading "/". Anything else is no base.
    explicit BaseAddress(std::string_view href);

    // Without a base, a relative address comes back behind "about:blank". An address with a scheme, one that
    // is a fragment alone and an empty one come back as written.
    std::string Resolve(std::string_view address) const;

  private:
    std::string FromFolder(std::string_view path) const;
    std::string FromAddress(std::string_view path) const;

    std::string mPrefix;  // up to the path: "http://host", "file:///"
    std::string mPath;
    bool mIsFolder = false;
};

}  // namespace quillbox::html
