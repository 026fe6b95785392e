#include "adapters/files/Descriptor.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "base/AutomationError.h"

namespace quillbox::files {

void failBySystem() { throw AutomationError(std::generic_category().message(errno)); }

Descriptor::~Descriptor() {
    if (mNumber >= 0) ::close(mNumber);
}

Descriptor::Descriptor(Descriptor&& other) noexcept : mNumber(std::exchange(other.mNumber, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(mNumber, other.mNumber);
    return *this;
}

struct stat Descriptor::Look() const {
    struct stat status {};
    if (::fstat(mNumber, &status) != 0) failBySystem();
    return status;
}

std::size_t Descriptor::Read(char* buffer, std::size_t size) const {
    for (;;) {
        const auto count = ::read(mNumber, buffer, size);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR) failBySystem();
    }
}

void Descriptor::Write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const auto count = ::write(mNumber, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) failBySystem();
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void Descriptor::Close() {
    if (::close(std::exchange(mNumber, -1)) != 0 && errno != EINTR) failBySystem();
}

Descriptor openToRead(const std::string& path) {
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file) {
        if (errno == ENOENT || errno == ENOTDIR) return file;
        failBySystem();
    }
    const auto mode = file.Look().st_mode;
    if (S_ISDIR(mode)) throw AutomationError("It is a folder");
    if (!S_ISREG(mode)) throw AutomationError("It is no regular file");
    return file;
}

}  // namespace quillbox::files
