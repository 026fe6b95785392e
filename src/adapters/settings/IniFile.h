#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillbox {

// A text file of sections and values that people edit by hand: comments, order and blank lines stay as they
// are.
//
//     ; a comment
//     [Software\Merivane\Quillbox]
//     InstallDir=/usr/share/quillbox
//
// Names ignore case. The default value of a section has the empty name. A value is taken to the letter,
// without the blanks around it; one that cannot stand so, as it has line ends or blanks at an end, is written
// behind "escaped:".
class IniFile {
  public:
    // A file that is not there, or cannot be read, reads as empty.
    explicit IniFile(std::string path);

    bool Exists() const { return mExists; }
    std::string Read(const std::string& section, const std::string& name) const;
    void Write(const std::string& section, const std::string& name, const std::string& value);
    void Delete(const std::string& section, const std::string& name);
    // Atomic, and readable by the owner alone. Fails where the old file could not be read.
    void Save() const;

  private:
    struct Place {
        std::size_t sectionEnd;  // where a new value of the section goes; npos for no such section
        std::size_t line;        // npos for no such value
    };
    Place find(const std::string& section, const std::string& name) const;

    std::string mPath;
    bool mExists = false;
    bool mIsRead = false;
    std::vector<std::string> mLines;
};

}  // namespace quillbox
