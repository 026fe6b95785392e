#pragma once

#include <string>

#include "adapters/TemporaryFolder.h"
#include "frame/Platform.h"
#include "guide/Guide.h"
#include "project/QbProject.h"

namespace quillbox {

// A machine with the templates of one example and a copy of the project that all examples are built from.
class GuideMachine {
  public:
    explicit GuideMachine(const GuideExample& example);
    ~GuideMachine();
    GuideMachine(const GuideMachine&) = delete;
    GuideMachine& operator=(const GuideMachine&) = delete;

    // Builds the pages. What kept them from being built is kept.
    void Build();
    const std::string& Failure() const { return mFailure; }
    // The text that a block speaks of: a page, a file, or the failure, with LF line ends.
    std::string Outcome(const GuideBlock& block) const;

  private:
    void set(const std::string& line);
    void prepareBooklet() const;
    std::string shortened(std::string text) const;

    const GuideExample& mExample;
    TemporaryFolder mFolder;
    Platform mBefore;
    Ref<QbProject> mProject;
    std::string mFailure;
};

}  // namespace quillbox
