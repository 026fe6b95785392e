#include "engine/CommonProvider.h"

#include "base/AutomationError.h"
#include "base/Text.h"
#include "engine/CommonTags.h"
#include "engine/Html.h"

namespace quillbox {

namespace {

std::string escaped(std::string value, const std::string& how) {
    if (how.empty() || value.empty()) return value;
    if (sameText(how, "html")) return htmlText(std::move(value));
    if (sameText(how, "link")) return htmlText(nameAsLink(value));
    if (sameText(how, "script")) return scriptText(value);
    if (sameText(how, "anchor")) return anchorName(value);
    return value;
}

// None for a tag that is not known.
TagAnswer answerOf(const std::string& name) {
    const auto known = commonTags().find(name);
    return known == commonTags().end() ? nullptr : known->second;
}

// What a tag says of itself.
struct CommonPlan : TagNotes {
    explicit CommonPlan(const Element& tag)
        : name(attributeText(tag, "name")), escape(attributeText(tag, "escape")) {
        if (!hasAttribute(tag, "type")) throw AutomationError("A tag without a type has no value");
        answer = answerOf(tagType(tag));
    }

    std::string name, escape;
    TagAnswer answer = nullptr;
};

std::string plannedValue(const CommonPlan& plan, const TagRequest& request) {
    if (!plan.answer) return {};
    auto value = escaped(plan.answer(request), plan.escape);
    if (value.empty()) value = "{Discard}";
    return value;
}

}  // namespace

// The document while a tag is answered. An asker sees to it that it stays alive.
class CommonProvider::Attached {
  public:
    explicit Attached(const CommonProvider& provider) : mDocument(provider.mPlace) {
        if (provider.mAsker ? !provider.mDocument : !(mHeld = provider.mDocument.Get()))
            throw AutomationError("The document of these tags has gone");
    }
    EngineDocument& operator*() const { return *mDocument; }
    Ref<EngineDocument> Handle() const { return self(mDocument); }

  private:
    Ref<EngineDocument> mHeld;
    EngineDocument* mDocument;
};

std::string CommonProvider::ProvideData(const Ref<Element>& element, const Ref<FileSystemObject>& file) {
    const Attached document(*this);
    const auto answered = [&](const CommonPlan& plan) {
        return plannedValue(plan, {*document, *this, mAsker, element.get(), plan.name, file});
    };
    const auto* split = asSplitTag(*element);
    if (!split) return answered(CommonPlan(*element));
    if (!split->commonNotes) split->commonNotes = std::make_unique<const CommonPlan>(*split);
    return answered(static_cast<const CommonPlan&>(*split->commonNotes));
}

std::string CommonProvider::GetProperty(const std::string& name) {
    const Attached document(*this);
    const auto answer = answerOf(name);
    if (!answer) return "!UNCRECOGNISED TAG '" + name + "'!";
    return answer({*document, *this, mAsker, nullptr, {}, nullptr});
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
    auto copy = make<CommonProvider>(Attached(*this).Handle(), nullptr);
    copy->SetCurrentItem(mDef, mItem, mItemType, mParentItem);
    copy->SetCurrentRootItem(mRootItem);
    return copy;
}

}  // namespace quillbox
