#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The engine's own work on the disk. Paths have "/"; each failure is an AutomationError that names the path.
namespace quillbox::disk {

// Fails for what is no plain file, and for more than 1 GiB.
std::string read(const std::string& path);

// A page or scrap of a template: UTF-8 without its mark. Fails with the line of bytes that are no UTF-8.
std::string readUtf8(const std::string& path);

// Makes the file hold the text. One that is equal is left alone; an old one is overwritten in its place;
// where the text cannot be written whole, no half of it stays. Tells whether anything was written.
bool writeIfChanged(const std::string& path, std::string_view text);

bool isFile(const std::string& path);
// No link to one either.
bool isPlainFile(const std::string& path);
// Whether two paths lead to one file.
bool isSame(const std::string& path, const std::string& other);
bool isFolder(const std::string& path);
bool isEqual(const std::string& path, std::string_view text);
void createFolder(const std::string& path);
// A file that is not there is fine.
void remove(const std::string& path);
// Tells whether it is gone; a folder with anything in it stays.
bool removeEmptyFolder(const std::string& path);

// What tells one state of a file from the next; 0 for a file that is not there.
std::uint64_t stamp(const std::string& path);

// Names in a folder, sorted; none where there is no such folder. What begins with "." is passed over.
std::vector<std::string> subfolders(const std::string& folder);
std::vector<std::string> files(const std::string& folder);
// The files of a folder and of all folders below, by their names relative to it.
std::vector<std::string> filesBelow(const std::string& folder);

// With "/" only, and one at the end.
std::string asFolder(std::string path);
std::string withSlashes(std::string path);

}  // namespace quillbox::disk
