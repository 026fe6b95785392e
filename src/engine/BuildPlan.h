#pragma once

#include <string>
#include <vector>

#include "engine/EngineDocument.h"

namespace quillbox {

// One page that a build offers to write: what of, and under which name.
struct PlannedPage {
    Ref<PageLayout> layout;
    const ItemSource* source = nullptr;
    Ref<NamespaceDef> def;
    Ref<Object> item, parent;
    std::string name;
};

// What a build is going to write, in its order.
struct BuildPlan {
    // Bound to items; after them, those that are written once.
    std::vector<PlannedPage> pages;
    std::vector<PlannedPage> inputs;
    std::vector<std::string> support;
};

// Fails for a page that names an unknown item type and for a file name that cannot be used.
BuildPlan makePlan(EngineDocument& document, const std::vector<ItemSource>& sources);

// Fails where a planned file would take the place of a file that is not the build's own.
void checkKeptFiles(EngineDocument& document, const BuildPlan& plan);

}  // namespace quillbox
