#pragma once

#include <curl/curl.h>

#include <string>

namespace quillbox {

// What went wrong on the way to a server, for a person to read.
std::string webErrorText(CURLcode error, const std::string& host, int redirects);

// What a server's answer means; empty for an answer that is none of an error.
std::string httpErrorText(long status);

}  // namespace quillbox
