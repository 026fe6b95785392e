#pragma once

#include <string>
#include <string_view>

namespace quillbox::files {

inline constexpr char kSeparator = '/';

// What a path says, without a look at the disk. All but the first take paths with local separators.

std::string withLocalSeparators(std::string_view path);
// Also for a path that begins with a drive of another system.
bool isAbsolute(std::string_view path);

// With its trailing separator; empty where there is none.
std::string_view directoryOf(std::string_view path);
std::string_view fileNameOf(std::string_view path);
std::string_view baseNameOf(std::string_view path);
// Without the dot.
std::string_view extensionOf(std::string_view path);

// Without "." and without ".." wherever something stands before it.
std::string normalised(std::string_view path);
// The path below a directory; the path as it is where it does not lie there.
std::string relativeTo(std::string_view directory, const std::string& path);

// "*" stands for any characters and "?" for one; case is ignored.
bool matches(std::string_view name, std::string_view pattern);

}  // namespace quillbox::files
