#include "adapters/web/WebErrors.h"

#include <algorithm>
#include <iterator>

namespace quillbox {

namespace {

struct Meaning {
    long status;
    const char* text;
};

constexpr Meaning kMeanings[] = {
    {400, "bad request"},       {401, "a password is required"},
    {402, "payment required"},  {403, "access is forbidden"},
    {404, "not found"},         {405, "method not allowed"},
    {406, "not acceptable"},    {408, "request timed out"},
    {410, "gone for good"},     {421, "wrong server"},
    {429, "too many requests"}, {451, "not available for legal reasons"},
    {500, "internal error"},    {501, "not implemented"},
    {502, "bad gateway"},       {503, "not available now"},
    {504, "gateway timed out"},
};

std::string quoted(const std::string& host) { return "'" + host + "'"; }

}  // namespace

std::string webErrorText(CURLcode error, const std::string& host, int redirects) {
    switch (error) {
        case CURLE_COULDNT_RESOLVE_HOST:
            return "The server " + quoted(host) + " was not found";
        case CURLE_COULDNT_RESOLVE_PROXY:
            return "The proxy server was not found";
        case CURLE_COULDNT_CONNECT:
            return "No connection to the server " + quoted(host);
        case CURLE_OPERATION_TIMEDOUT:
            return "The server " + quoted(host) + " did not answer in time";
        case CURLE_TOO_MANY_REDIRECTS:
            return "The address was redirected more than " + std::to_string(redirects) + " times";
        case CURLE_UNSUPPORTED_PROTOCOL:
            return "The address was redirected to one that is neither http nor https";
        case CURLE_SSL_CONNECT_ERROR:
            return "No secure connection to the server " + quoted(host);
        case CURLE_PEER_FAILED_VERIFICATION:
            return "The certificate of the server " + quoted(host) + " is not trusted";
        case CURLE_GOT_NOTHING:
            return "The server " + quoted(host) + " sent no answer";
        case CURLE_WRITE_ERROR:
        case CURLE_WEIRD_SERVER_REPLY:
        case CURLE_HTTP2:
            return "The server " + quoted(host) + " sent an answer that is not understood";
        case CURLE_SEND_ERROR:
        case CURLE_RECV_ERROR:
        case CURLE_PARTIAL_FILE:
            return "The connection to the server " + quoted(host) + " broke off";
        default:
            return "The server " + quoted(host) + " could not be read (" + curl_easy_strerror(error) + ")";
    }
}

std::string httpErrorText(long status) {
    if (status < 400) return {};
    const auto found = std::find_if(std::begin(kMeanings), std::end(kMeanings),
                                    [&](const Meaning& one) { return one.status == status; });
    const auto number = std::to_string(status);
    if (found == std::end(kMeanings)) return "The server answered with the error " + number;
    return "The server answered with the error " + number + ": " + found->text;
}

}  // namespace quillbox
