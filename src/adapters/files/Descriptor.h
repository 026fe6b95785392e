#pragma once

#include <string>
#include <string_view>

#include <sys/stat.h>

namespace quillbox::files {

// Fails with what the system says about `errno`.
[[noreturn]] void failBySystem();

// An open file, closed when it goes.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : mNumber(number) {}
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;

    explicit operator bool() const { return mNumber >= 0; }
    int Number() const { return mNumber; }

    struct stat Look() const;
    // Reads up to that many bytes; none at the end.
    std::size_t Read(char* buffer, std::size_t size) const;
    void Write(std::string_view bytes) const;
    // Closing may be when a full disk is found.
    void Close();

  private:
    int mNumber = -1;
};

// Opens a file for reading. Fails for what is no regular file; that would wait or never end. None for a file
// that is not there.
Descriptor openToRead(const std::string& path);

}  // namespace quillbox::files
