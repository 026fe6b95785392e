#include "platform/FileSystemObject.h"

#include "frame/Platform.h"
#include "frame/platformtypes/PlatformTypes.h"
#include "frame/typelib/Describe.h"

namespace quillbox {

namespace {

using File = FileSystemObject;

Ref<Collection> listFiles(File& file, const std::string& pattern, int, Ref<Collection>& files) {
    files = make<Collection>();
    for (const auto& found : file.ListFiles(pattern)) files->Add(found);
    return files;
}

}  // namespace

ClassInfo describeFileSystemObject() {
    return Describe<File>("FileSystemObject", "Names one path on disk and does the file work on it.")
        .unpublished()
        .creatable([] { return platform().files->NewFileSystemObject(); })
        .property("Path", &File::FullPath, &File::SetPath, "The full path.")
        .read("FullPath", &File::FullPath, "The full path; empty for a new object.")
        .read("Directory", &File::Directory, "The directory of the path, with its trailing separator.")
        .method("SetDirectory", &File::SetDirectory, {"Path"},
                "Points DirectoryExists, CreateDirectory and ListFiles at a directory.")
        .read("DirectoryExists", &File::DirectoryExists, "Whether the directory is there.")
        .method("CreateDirectory", &File::CreateDirectory, "Makes the directory; one that is there is fine.")
        .method("ListFiles", listFiles, {"Pattern", {"Attributes", 0}, {"Files", Value::None()}},
                "The files of the directory that match a pattern such as \"*.qbp\", sorted by name.")
        .read("FileName", &File::FileName, "File name with its extension.")
        .property("BaseName", &File::BaseName, &File::SetBaseName,
                  "File name without extension. Writing changes the path.")
        .property("Extension", &File::Extension, &File::SetExtension,
                  "Extension without its dot; empty where there is none. Writing changes the path.")
        .read("Exists", &File::Exists, "Whether the path names a file or a folder that is there.")
        .read("IsReadOnly", &File::IsReadOnly, "Whether the file's owner may not write it.")
        .read("ModifiedOn", &File::ModifiedOn,
              "When the file was changed; the zero date for a file that is not there.")
        .method(
            "Open",
            [](File& file, int mode, int access, int lock, int recordLength) {
                file.Open({mode, access, lock, recordLength});
            },
            {"Mode", "Access", "Lock", "RecordLength"},
            "Opens the file: 3, 1, 1, 32767 to read; 4, 2, 1, 32767 or 4, 2, 3, 32767 to write it anew.")
        .method(
            "ReadAll", [](File& file, std::string& text) { return text = file.ReadAll(); }, {{"Text", ""}},
            "The whole file as text; works without Open too.")
        .method(
            "ReadLine", [](File& file, std::string& text) { return text = file.ReadLine(); }, {{"Text", ""}},
            "The next line of an opened file, without its end.")
        .read("EndOfFile", &File::EndOfFile, "True when there is no further line.")
        .method("Write", &File::Write, {"Text"}, "Writes text to the opened file.")
        .method("Close", &File::Close, "Closes the file.")
        .method("Delete", &File::Delete, "Deletes the file.")
        .method("CopyTo", &File::CopyTo, {"Path"}, "Copies the file to another path.")
        .write("RelativeTo", &File::SetRelativeTo,
               "The file from whose directory relative paths count; may be none.")
        .read("RelativePath", &File::RelativePath,
              "The path below the directory of RelativeTo; the full path where it does not lie there.")
        .done();
}

}  // namespace quillbox
