#include "adapters/web/CurlWebRequest.h"

#include <curl/curl.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "adapters/web/WebErrors.h"
#include "base/AutomationError.h"

namespace quillbox {

namespace {

// Enough to know that an answer came. A server that sends on and on is not listened to.
constexpr std::size_t kEnoughBody = std::size_t{64} << 10;
constexpr std::size_t kMostHeaders = std::size_t{256} << 10;

struct FreeHandle {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
    void operator()(CURLU* url) const { curl_url_cleanup(url); }
    void operator()(char* text) const { curl_free(text); }
};

// How much of one answer has come.
struct Received {
    std::size_t headers = 0;
    std::size_t body = 0;
    bool enough = false;
};

std::size_t takeHeader(const char*, std::size_t size, std::size_t count, void* received) {
    auto& headers = static_cast<Received*>(received)->headers;
    headers += size * count;
    return headers > kMostHeaders ? 0 : size * count;
}

std::size_t takeBody(const char*, std::size_t size, std::size_t count, void* received) {
    auto& all = *static_cast<Received*>(received);
    all.body += size * count;
    all.enough = all.body > kEnoughBody;
    return all.enough ? 0 : size * count;
}

using Url = std::unique_ptr<CURLU, FreeHandle>;

std::string partOf(const Url& url, CURLUPart part) {
    char* text = nullptr;
    if (curl_url_get(url.get(), part, &text, 0) != CURLUE_OK) return {};
    const std::unique_ptr<char, FreeHandle> owner(text);
    return text;
}

class CurlWebRequest : public WebRequest {
  public:
    explicit CurlWebRequest(const WebLimits& limits) : mLimits(limits), mHandle(curl_easy_init()) {
        if (!mHandle) throw AutomationError("The web client could not be started");
    }

    std::string Fetch(const std::string& address) override {
        if (std::any_of(address.begin(), address.end(),
                        [](unsigned char c) { return c < 0x20 || c == 0x7F; })) {
            return "The address holds control characters";
        }
        const Url url(curl_url());
        const auto parsed = curl_url_set(url.get(), CURLUPART_URL, address.c_str(),
                                         CURLU_NON_SUPPORT_SCHEME | CURLU_URLENCODE);
        if (parsed != CURLUE_OK) return "'" + address + "' is no web address";
        const auto scheme = partOf(url, CURLUPART_SCHEME);
        if (scheme != "http" && scheme != "https") return "Only http and https addresses can be fetched";
        // A name and a password in a link are not ours to send.
        curl_url_set(url.get(), CURLUPART_USER, nullptr, 0);
        curl_url_set(url.get(), CURLUPART_PASSWORD, nullptr, 0);
        return Fetch(url);
    }

  private:
    std::string Fetch(const Url& url) {
        Received received;
        SetUp(url, received);
        const auto result = curl_easy_perform(mHandle.get());
        long status = 0;
        curl_easy_getinfo(mHandle.get(), CURLINFO_RESPONSE_CODE, &status);
        // The library says the same of an answer that is no HTTP.
        const bool noHttp = result == CURLE_UNSUPPORTED_PROTOCOL && status == 0;
        if (noHttp) return webErrorText(CURLE_WEIRD_SERVER_REPLY, Host(url), mLimits.redirects);
        if (result != CURLE_OK && !received.enough) return webErrorText(result, Host(url), mLimits.redirects);
        return httpErrorText(status);
    }

    // The connections stay open for the next link to the same server.
    void SetUp(const Url& url, Received& received) {
        auto* const handle = mHandle.get();
        curl_easy_reset(handle);
        curl_easy_setopt(handle, CURLOPT_CURLU, url.get());
        curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
        curl_easy_setopt(handle, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
        curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L);
        curl_easy_setopt(handle, CURLOPT_MAXREDIRS, static_cast<long>(mLimits.redirects));
        curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(mLimits.connect.count()));
        curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(mLimits.total.count()));
        curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(handle, CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
        curl_easy_setopt(handle, CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_NONE));
        curl_easy_setopt(handle, CURLOPT_USERAGENT, "Quillbox/1.0 (link check)");
        curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, takeHeader);
        curl_easy_setopt(handle, CURLOPT_HEADERDATA, &received);
        curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, takeBody);
        curl_easy_setopt(handle, CURLOPT_WRITEDATA, &received);
    }

    // The server that failed: after redirects, the last one.
    std::string Host(const Url& first) const {
        const char* last = nullptr;
        curl_easy_getinfo(mHandle.get(), CURLINFO_EFFECTIVE_URL, &last);
        const Url url(curl_url());
        const auto set = last ? curl_url_set(url.get(), CURLUPART_URL, last, CURLU_NON_SUPPORT_SCHEME)
                              : CURLUE_BAD_PARTPOINTER;
        return partOf(set == CURLUE_OK ? url : first, CURLUPART_HOST);
    }

    WebLimits mLimits;
    std::unique_ptr<CURL, FreeHandle> mHandle;
};

}  // namespace

std::shared_ptr<WebRequest> makeCurlWebRequest(const WebLimits& limits) {
    static const auto started = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (started != CURLE_OK) throw AutomationError("The web client could not be started");
    return std::make_shared<CurlWebRequest>(limits);
}

}  // namespace quillbox
