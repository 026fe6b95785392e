#pragma once

#include "base/AutomationError.h"
#include "base/Object.h"

namespace quillbox {

class QbProject;

// The handle of an item or a collection to its project. It may be empty; what cannot do without asks `Need`.
class ProjectHandle : public ObjectReference<QbProject> {
  public:
    Ref<QbProject> Need() const {
        if (auto project = Get()) return project;
        throw AutomationError("This object has no project");
    }
};

}  // namespace quillbox
