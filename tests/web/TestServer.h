#pragma once

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace quillbox {

// A server on 127.0.0.1 that reads one request a connection and sends what the test says.
class TestServer {
  public:
    // Gets the path and a function that sends; the connection is closed when it returns.
    using Send = std::function<bool(const std::string&)>;
    using Answer = std::function<void(const std::string& path, const Send& send)>;

    explicit TestServer(Answer answer)
        : mAnswer(std::move(answer)), mSocket(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        bind(mSocket, reinterpret_cast<sockaddr*>(&address), sizeof address);
        listen(mSocket, 16);
        socklen_t size = sizeof address;
        getsockname(mSocket, reinterpret_cast<sockaddr*>(&address), &size);
        mPort = ntohs(address.sin_port);
        mThread = std::thread([this] { Serve(); });
    }

    ~TestServer() {
        mStopped = true;
        mThread.join();
        close(mSocket);
    }

    int Port() const { return mPort; }
    std::string Url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(mPort) + path;
    }
    bool Stopped() const { return mStopped; }

    // The heads of all requests so far.
    std::vector<std::string> Requests() {
        const std::lock_guard lock(mMutex);
        return mRequests;
    }

  private:
    void Serve() {
        while (!mStopped) {
            pollfd waiting{mSocket, POLLIN, 0};
            if (poll(&waiting, 1, 20) <= 0) continue;
            const int connection = accept(mSocket, nullptr, nullptr);
            const auto request = ReadHead(connection);
            if (!request.empty()) {
                const std::lock_guard lock(mMutex);
                mRequests.push_back(request);
            }
            const auto from = request.find(' ') + 1;
            mAnswer(request.substr(from, request.find(' ', from) - from),
                    [&](const std::string& text) { return SendAll(connection, text); });
            shutdown(connection, SHUT_RDWR);
            close(connection);
        }
    }

    static std::string ReadHead(int connection) {
        std::string head;
        char buffer[4096];
        while (head.find("\r\n\r\n") == std::string::npos) {
            const auto count = recv(connection, buffer, sizeof buffer, 0);
            if (count <= 0) break;
            head.append(buffer, static_cast<std::size_t>(count));
        }
        return head;
    }

    static bool SendAll(int connection, const std::string& text) {
        for (std::size_t sent = 0; sent < text.size();) {
            const auto count = send(connection, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
            if (count <= 0) return false;
            sent += static_cast<std::size_t>(count);
        }
        return true;
    }

    Answer mAnswer;
    int mSocket;
    int mPort = 0;
    std::atomic<bool> mStopped{false};
    std::mutex mMutex;
    std::vector<std::string> mRequests;
    std::thread mThread;
};

}  // namespace quillbox
