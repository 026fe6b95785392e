#include <string>

#include "Input.h"
#include "adapters/xml/PugiXml.h"
#include "base/AutomationError.h"
#include "base/Encoding.h"

namespace {

using namespace quillbox;

void requireSame(const Ref<XMLElement>& a, const Ref<XMLElement>& b) {
    require(a->Name() == b->Name() && a->Text() == b->Text());
    const auto attributes = a->Attributes()->Items();
    const auto others = b->Attributes()->Items();
    require(attributes.size() == others.size());
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        require(attributes[i]->Name() == others[i]->Name() && attributes[i]->Value() == others[i]->Value());
    }
    const auto children = a->Children();
    const auto otherChildren = b->Children();
    require(children.size() == otherChildren.size());
    for (std::size_t i = 0; i < children.size(); ++i) requireSame(children[i], otherChildren[i]);
}

}  // namespace

// What parses is written, and reads back as the same tree.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto parser = makePugiXmlParser();
    const auto document = parser->NewDocument();
    try {
        document->Parse(decodeText(std::string(reinterpret_cast<const char*>(data), size)));
    } catch (const AutomationError&) {
        return 0;
    }
    require(document->RootElement()->Line() > 0);
    const auto text = document->ToXml();
    const auto again = parser->NewDocument();
    again->Parse(text);
    requireSame(document->RootElement(), again->RootElement());
    require(again->ToXml() == text);
    return 0;
}
