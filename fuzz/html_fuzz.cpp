#include <string>
#include <vector>

#include "Input.h"
#include "adapters/html/CleanText.h"
#include "adapters/html/Html.h"
#include "base/AutomationError.h"

namespace {

using namespace quillbox;

const std::string kNewAddress = "new \"<address>&";

std::string whole(const Ref<HTMLDocument>& document) { return document->documentElement()->outerHTML(); }

// What is not touched is written back to the byte.
void checkRoundTrip(DOMFactory& factory, const std::string& html) {
    const auto clean = html::cleanText(html);
    require(whole(factory.NewDocument(html)) == clean);
    const auto document = factory.NewDocument("<body>");
    document->body()->setInnerHTML(html);
    require(document->body()->innerHTML() == clean);
    require(whole(document) == "<body>" + clean);
}

// New addresses stand in the text, and nothing else in it moved.
void checkAddresses(DOMFactory& factory, const std::string& html) {
    const auto document = factory.NewDocument(html);
    const auto links = document->all()->tags("a")->Items();
    for (const auto& link : links) link->setAttribute("title", kNewAddress);
    const auto again = factory.NewDocument(whole(document))->all()->tags("a")->Items();
    require(again.size() == links.size());
    for (std::size_t i = 0; i < links.size(); ++i) {
        require(again[i]->getAttribute("title") == kNewAddress);
        require(again[i]->outerText() == links[i]->outerText());
    }
}

// Any order of changes leaves a document that can be read and written.
void changeAll(DOMFactory& factory, const std::string& html) {
    const auto document = factory.NewDocument(html);
    std::vector<Ref<IHTMLElement>> held;
    unsigned step = 0;
    for (const auto& element : document->all()->Items()) {
        held.push_back(element);
        ignoringFailures([&] {
            switch (++step % 5) {
                case 0:
                    element->setOuterHTML("");
                    break;
                case 1:
                    element->setInnerHTML("<b>" + element->innerHTML());
                    break;
                case 2:
                    element->setOuterHTML("x" + element->outerHTML() + "<i>y");
                    break;
                case 3:
                    element->setAttribute("Class", "n");
                    break;
                default:
                    element->setInnerHTML(html.substr(0, html.size() / 2));
                    break;
            }
        });
        if (step > 40) break;
    }
    for (const auto& element : held) require(element->outerHTML().size() + element->outerText().size() > 0);
    const auto text = whole(document);
    ignoringFailures([&] { require(whole(factory.NewDocument(text)) == text); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto factory = makeHtmlFactory();
    const std::string html(reinterpret_cast<const char*>(data), size);
    try {
        factory->NewDocument(html);
    } catch (const AutomationError&) {
        return 0;
    }
    checkRoundTrip(*factory, html);
    checkAddresses(*factory, html);
    changeAll(*factory, html);
    return 0;
}
