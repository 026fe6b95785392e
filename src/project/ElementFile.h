#pragma once

#include <functional>
#include <string>

#include "platform/XML.h"

namespace quillbox {

class QbProject;

// The file that a topic or a collection has to itself in a separate-files project: when it is read, when it
// is left alone and when it is written.
class ElementFile {
  public:
    // A name that is no plain file name fails when the file is to be opened.
    ElementFile(const QbProject& project, const std::string& folder, std::string name, std::string rootName)
        : mProject(project), mPath(folder + name), mName(std::move(name)), mRootName(std::move(rootName)) {}

    using Use = std::function<void(const Ref<XMLElement>&)>;

    // Lets `read` read the content from the element given, or in a separate-files project from the root of
    // the file, which takes the element's place. A missing file gives an empty element.
    void Load(Ref<XMLElement>& e, const Use& read) const;

    // Lets `fill` write the content into the element given, or in a separate-files project into the root of a
    // document that goes to the file, which takes the element's place. The file is left alone while it is
    // there and nothing changed, or while the element is under source control and not checked out. False
    // where nothing was built.
    bool Save(Ref<XMLElement>& e, bool dirty, const std::function<bool()>& isCheckedOut,
              const Use& fill) const;

  private:
    void requirePlainName() const;

    const QbProject& mProject;
    std::string mPath;
    std::string mName;
    std::string mRootName;
};

}  // namespace quillbox
