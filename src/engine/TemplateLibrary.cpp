#include "engine/TemplateLibrary.h"

#include <algorithm>
#include <tuple>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "engine/Disk.h"

namespace quillbox {

namespace {

// What hosts of plug-ins are given to know that they share one template service.
class SharedTemplates : public Object {
  public:
    std::string_view ClassName() const override { return "SharedTemplates"; }
};

std::uint64_t stampOf(const std::string& folder) {
    std::uint64_t mixed = 0;
    for (const auto* sub : {"", "scraps/"}) {
        for (const auto& file : disk::files(folder + sub)) {
            mixed = mixed * 31 + std::hash<std::string>()(file);
            mixed = mixed * 31 + disk::stamp(folder + sub + file);
        }
    }
    return mixed;
}

std::string parentOf(const std::string& folder) {
    return folder.substr(0, folder.rfind('/', folder.size() - 2) + 1);
}

// Broken ones last, so that whoever walks the list meets the good ones first.
bool comesBefore(const Ref<FolderTemplate>& a, const Ref<FolderTemplate>& b) {
    const auto place = [](const FolderTemplate& one) {
        return std::tuple(one.IsBroken(), one.Order(), sortKey(one.Name()), one.Name());
    };
    return place(*a) < place(*b);
}

}  // namespace

void Families::Register(const TemplateService::Family& family) {
    std::erase_if(mFamilies, [&](const auto& one) { return sameText(one.name, family.name); });
    mFamilies.push_back(family);
}

const TemplateService::Family* Families::Named(const std::string& name) const {
    for (const auto& family : mFamilies) {
        if (sameText(family.name, name)) return &family;
    }
    return nullptr;
}

const TemplateService::Family* Families::OfProvider(const std::string& providerName) const {
    for (const auto& family : mFamilies) {
        if (sameText(family.providerName, providerName)) return &family;
    }
    return nullptr;
}

const TemplateService::Family* Families::OfClass(const std::string& providerClass) const {
    for (const auto& family : mFamilies) {
        if (sameText(family.providerClass, providerClass)) return &family;
    }
    return nullptr;
}

Ref<NamespaceDefs> Families::DefsOf(const std::vector<std::string>& providerNames) const {
    auto defs = make<NamespaceDefs>();
    for (const auto& name : providerNames) {
        const auto* family = OfProvider(name);
        if (!family || !family->defs) continue;
        if (providerNames.size() == 1) return family->defs;
        for (const auto& def : family->defs->Items()) defs->Add(def);
    }
    return defs;
}

TemplateLibrary::TemplateLibrary(std::shared_ptr<XMLParser> xml, std::function<std::string()> installedFolder)
    : mXml(std::move(xml)), mInstalledFolder(std::move(installedFolder)), mShared(make<SharedTemplates>()) {}

// A folder that was named later comes later, and its templates take the place of like-named ones.
std::vector<std::string> TemplateLibrary::templateFolders() const {
    std::vector<std::string> folders;
    auto roots = mAddedFolders;
    if (const auto installed = mInstalledFolder ? mInstalledFolder() : std::string(); !installed.empty()) {
        roots.insert(roots.begin(), disk::asFolder(installed));
    }
    for (const auto& root : roots) {
        for (const auto& name : disk::subfolders(root)) {
            const auto folder = root + name + "/";
            if (disk::isFile(folder + "template.xml")) folders.push_back(folder);
        }
    }
    return folders;
}

// Tells whether anything is not as it was. A template whose files are as they were stays the same object.
bool TemplateLibrary::refresh() {
    const auto folders = templateFolders();
    bool changed = folders != mFolders;
    Entries entries;
    for (const auto& folder : folders) {
        const auto stamp = stampOf(folder);
        const auto old = mEntries.find(folder);
        if (old != mEntries.end() && old->second.stamp == stamp && !old->second.pageTemplate->IsBroken()) {
            entries.emplace(folder, old->second);
            continue;
        }
        changed = true;
        auto read = make<FolderTemplate>(
            folder, *mXml, [families = mFamilies](const auto& names) { return families->DefsOf(names); });
        entries.emplace(folder, Entry{stamp, read});
    }
    mFolders = folders;
    mEntries = std::move(entries);
    return changed;
}

// Of two with one name the later counts, unless both lie in one folder.
void TemplateLibrary::makeList() {
    FoldedMap<Ref<FolderTemplate>> byName;
    for (const auto& folder : mFolders) {
        const auto found = mEntries.at(folder).pageTemplate;
        const auto other = byName.find(found->Name());
        if (other != byName.end() && parentOf(other->second->Path()) == parentOf(folder)) {
            found->Break(folder + "template.xml: expected a Name of its own, found '" + found->Name() +
                         "', which " + other->second->Path() + " has too");
        }
        byName[found->Name()] = found;
    }
    std::vector<Ref<FolderTemplate>> sorted;
    for (const auto& [name, found] : byName) sorted.push_back(found);
    std::sort(sorted.begin(), sorted.end(), comesBefore);
    mList = make<quillbox::PageTemplates>();
    for (const auto& found : sorted) mList->Add(found, found->Name());
}

Ref<PageTemplates> TemplateLibrary::PageTemplates() {
    if (mList && mHeld > 0) return mList;
    if (refresh() || !mList) makeList();
    return mList;
}

void TemplateLibrary::AddFolder(const std::string& folder) {
    const auto asked = disk::asFolder(folder);
    if (std::find(mAddedFolders.begin(), mAddedFolders.end(), asked) == mAddedFolders.end())
        mAddedFolders.push_back(asked);
}

Ref<NamespaceDefs> TemplateLibrary::Namespaces(const std::string& family) {
    const auto* found = mFamilies->Named(family);
    if (!found) throw AutomationError("There is no family of items '" + family + "'");
    return found->defs;
}

}  // namespace quillbox
