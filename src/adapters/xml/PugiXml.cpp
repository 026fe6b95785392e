#include "adapters/xml/PugiXml.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

#include "adapters/xml/Element.h"
#include "adapters/xml/Rules.h"
#include "adapters/xml/Tree.h"
#include "base/AutomationError.h"
#include "base/Encoding.h"

namespace quillbox {

namespace {

class Document : public XMLDocument {
  public:
    Ref<XMLElement> RootElement() override { return mTree->Wrap(mTree->Root()); }
    void Parse(const std::string& text) override { mTree = xml::Tree::Parse(text); }
    void LoadFile(const std::string& path) override;
    std::string ToXml() const override { return mTree->ToXml(); }

  private:
    std::shared_ptr<xml::Tree> mTree = xml::Tree::New();
};

std::string readFile(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file) throw AutomationError(std::strerror(errno));
    const auto size = static_cast<std::streamoff>(file.tellg());
    if (size < 0 || static_cast<std::size_t>(size) > xml::kMaxSize)
        throw AutomationError("The file is larger than 1 GiB");
    std::string bytes(static_cast<std::size_t>(size), '\0');
    file.seekg(0);
    if (!file.read(bytes.data(), size)) throw AutomationError("The file cannot be read");
    return bytes;
}

void Document::LoadFile(const std::string& path) {
    at(path, [&] { Parse(decodeText(readFile(path))); });
}

class PugiXml : public XMLParser {
  public:
    Ref<XMLDocument> NewDocument() override { return make<Document>(); }
};

}  // namespace

std::shared_ptr<XMLParser> makePugiXmlParser() { return std::make_shared<PugiXml>(); }

}  // namespace quillbox
