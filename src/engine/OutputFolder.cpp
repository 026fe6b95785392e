#include "engine/OutputFolder.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "engine/Disk.h"

namespace quillbox {

namespace {

[[noreturn]] void refuse(const std::string& name, const std::string& reason) {
    throw AutomationError("'" + name + "' cannot be the name of an output file: " + reason);
}

// What some systems take for a device whatever the extension and the folder.
bool isDevice(std::string_view piece) {
    auto base = std::string(trimBlanks(piece.substr(0, piece.find('.'))));
    base = upper(base);
    static constexpr std::array<std::string_view, 6> kPlain = {"CON", "PRN",    "AUX",
                                                               "NUL", "CONIN$", "CONOUT$"};
    if (std::find(kPlain.begin(), kPlain.end(), base) != kPlain.end()) return true;
    if (!base.starts_with("COM") && !base.starts_with("LPT")) return false;
    const auto number = base.substr(3);
    return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') || number == "\u00B9" ||
           number == "\u00B2" || number == "\u00B3";
}

bool isDriveLetter(std::string_view name) {
    const auto letter = name.empty() ? '\0' : static_cast<char>(name[0] | 0x20);
    return name.size() > 1 && name[1] == ':' && letter >= 'a' && letter <= 'z';
}

// The folder with all links followed, as far as it is there.
std::string realFolder(const std::string& folder) {
    std::error_code error;
    const auto real = std::filesystem::weakly_canonical(folder, error);
    if (error) throw AutomationError(folder + ": cannot find the folder: " + error.message());
    return disk::asFolder(real.string());
}

std::string folderOf(const std::string& name) { return name.substr(0, name.rfind('/') + 1); }

void checkPiece(const std::string& name, const std::string& piece) {
    if (piece == "..") refuse(name, "it leaves the output folder");
    if (isDevice(piece)) refuse(name, "'" + piece + "' names a device");
}

}  // namespace

std::string checkedOutputName(const std::string& name) {
    if (trimBlanks(name).empty()) refuse(name, "it is empty");
    if (std::any_of(name.begin(), name.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; })) {
        refuse(name, "it holds a control character");
    }
    if (!isValidUtf8(name)) refuse(name, "it is not valid UTF-8");
    const auto slashed = disk::withSlashes(name);
    if (slashed.starts_with('/') || isDriveLetter(slashed)) refuse(name, "it is an absolute path");
    std::vector<std::string> pieces;
    for (auto& piece : split(slashed, "/")) {
        checkPiece(name, piece);
        if (!piece.empty() && piece != ".") pieces.push_back(std::move(piece));
    }
    if (pieces.empty() || slashed.ends_with('/')) refuse(name, "it names a folder");
    return join(pieces, "/");
}

OutputFolder::OutputFolder(const std::string& path, const std::string& root)
    : mPath(disk::asFolder(path)), mDisk(root.empty() ? mPath : disk::asFolder(root)) {
    if (mPath.empty()) throw AutomationError("The document has no output path");
}

std::string OutputFolder::OnDisk(const std::string& fullName) const {
    const auto name = disk::withSlashes(fullName);
    return name.starts_with(mPath) ? mDisk + name.substr(mPath.size()) : name;
}

void OutputFolder::Claim(const std::string& name, const std::string& by) {
    const auto [other, isNew] = mClaimed.emplace(name, by);
    if (isNew) return;
    throw AutomationError("Two files of the build would have one name: '" + name + "' from " + by + " and '" +
                          other->first + "' from " + other->second);
}

bool OutputFolder::IsClaimed(const std::string& name) const { return mClaimed.contains(name); }

bool OutputFolder::IsClaimedFile(const std::string& name) const {
    const auto found = mClaimed.find(name);
    return found != mClaimed.end() &&
           (found->first == name || disk::isSame(mDisk + name, mDisk + found->first));
}

// A link in the way may not lead what is written out of the folder.
void OutputFolder::PrepareFolderOf(const std::string& name) {
    const auto slash = name.rfind('/');
    const auto below = slash == std::string::npos ? std::string() : name.substr(0, slash);
    if (!mPrepared.insert(below).second) return;
    disk::createFolder(mDisk);
    const auto root = realFolder(mDisk);
    if (!realFolder(mDisk + below).starts_with(root))
        refuse(name, "its folder lies outside the output folder");
    disk::createFolder(mDisk + below);
}

void OutputFolder::Write(const std::string& name, std::string_view text) {
    PrepareFolderOf(name);
    Note(Put(name, text));
}

WrittenFile OutputFolder::Put(const std::string& name, std::string_view text) const {
    disk::writeIfChanged(mDisk + name, text);
    return {name, contentSum(text)};
}

void OutputFolder::RemoveIfSame(const WrittenFile& file) const {
    std::string checked;
    if (!ignoringFailures([&] { checked = checkedOutputName(file.name); }) || checked != file.name) return;
    const auto path = mDisk + file.name;
    if (!disk::isPlainFile(path) || !realFolder(folderOf(path)).starts_with(realFolder(mDisk))) return;
    if (contentSum(disk::read(path)) != file.sum) return;
    disk::remove(path);
    for (auto below = folderOf(file.name); !below.empty();
         below = folderOf(below.substr(0, below.size() - 1)))
        if (!disk::removeEmptyFolder(mDisk + below)) return;
}

}  // namespace quillbox
