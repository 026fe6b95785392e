#pragma once

#include <chrono>
#include <memory>

#include "platform/WebRequest.h"

namespace quillbox {

struct WebLimits {
    std::chrono::milliseconds connect{10'000};
    std::chrono::milliseconds total{30'000};
    int redirects = 10;
};

// Fetches over http and https only, sends no credentials and keeps nothing of what it gets.
std::shared_ptr<WebRequest> makeCurlWebRequest(const WebLimits& limits = {});

}  // namespace quillbox
