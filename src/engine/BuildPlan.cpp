#include "engine/BuildPlan.h"

#include "base/AutomationError.h"
#include "base/Text.h"
#include "engine/Disk.h"
#include "engine/Expansion.h"
#include "engine/SupportFiles.h"

namespace quillbox {

namespace {

class Planner {
  public:
    Planner(EngineDocument& document, const std::vector<ItemSource>& sources)
        : mDocument(document), mTemplate(*document.Building()->pageTemplate), mSources(sources) {}

    BuildPlan Run() {
        mPlan.support = supportFiles(mTemplate);
        for (const auto& layout : mTemplate.Layouts()) {
            if (layout->IsBound()) planBound(layout);
        }
        noteTakenNames();
        for (const auto& layout : mTemplate.Layouts()) {
            if (!layout->IsBound() && layout->compileType == 0) planOnce(layout, mPlan.pages);
        }
        const int compileType = toInteger(leadingNumber(mDocument.CompileType));
        for (const auto& layout : mTemplate.Layouts()) {
            if (layout->compileType != 0 && layout->compileType == compileType)
                planOnce(layout, mPlan.inputs);
        }
        return std::move(mPlan);
    }

  private:
    void noteTakenNames() {
        for (const auto& page : mPlan.pages) mTaken.insert(page.name);
        for (const auto& name : mDocument.KeptFiles->Texts()) mTaken.insert(disk::withSlashes(name));
    }

    // A kind of item and the source that has it.
    struct ItemType {
        const ItemSource* source;
        Ref<NamespaceDef> def;
    };

    ItemType itemType(const PageLayout& layout, const std::string& name) const {
        std::string known;
        for (const auto& source : mSources) {
            if (const auto defs = source.defs->ByName(name); defs->Count() > 0)
                return {&source, defs->Item(1)};
            for (const auto& def : source.defs->Items()) known += (known.empty() ? "" : ", ") + def->Name;
        }
        throw AutomationError(place(layout) + ": expected a known item type, found '" + name +
                              "'; known are: " + known);
    }

    // Each item with the one that it hangs under.
    struct Member {
        Ref<Object> item, parent;
    };

    std::vector<Member> membersOf(const ItemType& type, const std::string& filter) {
        std::vector<Member> members;
        for (const auto& parent : itemsAbove(*type.source, *type.def, 0)) {
            for (auto& item : type.source->provider->GetItems(type.def, parent, filter)) {
                members.push_back({std::move(item), parent});
            }
        }
        return members;
    }

    void planBound(const Ref<PageLayout>& layout) {
        const auto type = itemType(*layout, layout->NamespaceItemType);
        if (isLeftOut(*layout)) return;
        for (const auto& [item, parent] : membersOf(type, layout->filter)) {
            auto name = nameOf(*layout, *type.source, type.def, item, parent);
            mPlan.pages.push_back({layout, type.source, type.def, item, parent, std::move(name)});
        }
    }

    bool isLeftOut(const PageLayout& layout) {
        return !layout.onlyWith.empty() && membersOf(itemType(layout, layout.onlyWith), "").empty();
    }

    // The items that hold those of a definition. The first definition of a family stands for the root object.
    std::vector<Ref<Object>> itemsAbove(const ItemSource& source, const NamespaceDef& def, int depth) {
        if (def.ParentName.empty()) return {nullptr};
        const auto above = source.defs->ByName(def.ParentName);
        if (above->Count() == 0 || depth > source.defs->Count()) {
            throw AutomationError("The items '" + def.Name + "' hang under '" + def.ParentName +
                                  "', which leads nowhere");
        }
        const auto parentDef = above->Item(1);
        if (parentDef == source.defs->Item(1)) return {source.root};
        std::vector<Ref<Object>> items;
        for (const auto& parent : itemsAbove(source, *parentDef, depth + 1)) {
            for (auto& item : source.provider->GetItems(parentDef, parent, ""))
                items.push_back(std::move(item));
        }
        return items;
    }

    void planOnce(const Ref<PageLayout>& layout, std::vector<PlannedPage>& to) {
        if (isLeftOut(*layout)) return;
        const auto& source = mSources.front();
        const auto def = source.defs->Count() > 0 ? source.defs->Item(1) : nullptr;
        const auto name = nameOf(*layout, source, def, source.root, nullptr);
        if (layout->onlyIfFree && mTaken.contains(name)) return;
        to.push_back({layout, &source, def, source.root, nullptr, name});
        if (layout->compileType != 0 && to.back().name.find('/') != std::string::npos) {
            throw AutomationError("'" + to.back().name +
                                  "' cannot be the name of a compiler input: it names a folder too");
        }
    }

    std::string nameOf(const PageLayout& layout, const ItemSource& source, const Ref<NamespaceDef>& def,
                       const Ref<Object>& item, const Ref<Object>& parent) {
        auto name = layout.Name;
        if (!layout.output.empty()) {
            name.clear();
            source.data->SetCurrentItem(def, item, def ? def->Name : "", parent);
            expandThrough(*source.data, layout.output, mTemplate.Path() + "template.xml",
                          "the name of an output file", nullptr, name);
        } else if (layout.IsBound()) {
            const auto own = mDocument.ReadProperty(item, "Name");
            if (!own)
                throw AutomationError(place(layout) + ": expected an Output, as its items have no names");
            if (trimBlanks(*own).empty()) fail(layout, item, "it has no name");
            name = *own + layout.Name.substr(std::min(layout.Name.rfind('.'), layout.Name.size()));
        }
        try {
            return checkedOutputName(name);
        } catch (const AutomationError& error) {
            fail(layout, item, error.Description());
        }
    }

    [[noreturn]] void fail(const PageLayout& layout, const Ref<Object>& item, const std::string& reason) {
        auto title = mDocument.ReadProperty(item, "Title").value_or("");
        throw AutomationError("The page " + layout.Name + " of the template '" + mTemplate.Name() +
                              "' cannot be made for the " + std::string(item->ClassName()) +
                              (title.empty() ? "" : " '" + title + "'") + ": " + reason);
    }

    std::string place(const PageLayout& layout) const {
        return mTemplate.Path() + "template.xml, line " + std::to_string(layout.line);
    }

    EngineDocument& mDocument;
    FolderTemplate& mTemplate;
    const std::vector<ItemSource>& mSources;
    BuildPlan mPlan;
    // By pages of items and by files of the project.
    FoldedSet mTaken;
};

}  // namespace

BuildPlan makePlan(EngineDocument& document, const std::vector<ItemSource>& sources) {
    return Planner(document, sources).Run();
}

void checkKeptFiles(EngineDocument& document, const BuildPlan& plan) {
    FoldedMap<std::string> kept;
    for (const auto& name : document.KeptFiles->Texts()) kept.emplace(disk::withSlashes(name), name);
    if (kept.empty()) return;
    const auto check = [&](const std::string& name, const std::string& what) {
        const auto found = kept.find(name);
        if (found == kept.end()) return;
        throw AutomationError(what + " would replace the project's own file '" + found->second + "' by '" +
                              name + "'");
    };
    auto& build = *document.Building();
    for (const auto& name : plan.support) {
        if (replacesFile(*build.pageTemplate, name, build.output))
            check(name, "A support file of the template");
    }
    for (const auto* pages : {&plan.pages, &plan.inputs}) {
        for (const auto& page : *pages) check(page.name, "The page " + page.layout->Name);
    }
}

}  // namespace quillbox
