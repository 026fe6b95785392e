#include "engine/CommonProvider.h"

#include "base/AutomationError.h"
#include "base/Text.h"
#include "engine/CommonTags.h"
#include "engine/Html.h"

namespace quillbox {

namespace {

std::string escaped(std::string value, const std::string& how) {
    if (how.empty()) return value;
    if (sameText(how, "html")) return htmlText(value);
    if (sameText(how, "link")) return htmlText(nameAsLink(value));
    if (sameText(how, "script")) return scriptText(value);
    if (sameText(how, "anchor")) return anchorName(value);
    return value;
}

// Nothing for a tag that is not known.
std::optional<std::string> answer(const std::string& name, const TagRequest& request) {
    const auto known = commonTags().find(name);
    if (known == commonTags().end()) return {};
    return escaped(known->second(request), request.Attribute("escape"));
}

Ref<EngineDocument> attached(const ObjectReference<EngineDocument>& document) {
    if (auto found = document.Get()) return found;
    throw AutomationError("The document of these tags has gone");
}

}  // namespace

std::string CommonProvider::ProvideData(const Ref<Element>& element, const Ref<FileSystemObject>& file) {
    const auto document = attached(mDocument);
    if (!hasAttribute(*element, "type")) throw AutomationError("A tag without a type has no value");
    const auto name = tagType(*element);
    const auto value = answer(name, {*document, *this, element.get(), file});
    if (!value) return {};
    return value->empty() ? "{Discard}" : *value;
}

std::string CommonProvider::GetProperty(const std::string& name) {
    const auto document = attached(mDocument);
    const auto value = answer(lower(name), {*document, *this, nullptr, nullptr});
    return value ? *value : "!UNCRECOGNISED TAG '" + name + "'!";
}

void CommonProvider::SetCurrentItem(const Ref<quillbox::NamespaceDef>& def, const Ref<Object>& item,
                                    const std::string& itemType, const Ref<Object>& parentItem) {
    mDef = def;
    mItem = item;
    mItemType = itemType;
    mParentItem = parentItem;
}

std::string CommonProvider::ParseForProperties(const std::string& text) {
    std::string out;
    expandTags(
        splitTags(text),
        [&](const TagPiece& tag) {
            const auto value = ProvideData(tag.element, nullptr);
            if (value.empty()) return tag.text;
            return value == "{Discard}" ? std::string() : value;
        },
        out);
    return out;
}

Ref<Object> CommonProvider::Clone() {
    auto copy = make<CommonProvider>(attached(mDocument));
    copy->SetCurrentItem(mDef, mItem, mItemType, mParentItem);
    copy->SetCurrentRootItem(mRootItem);
    return copy;
}

}  // namespace quillbox
