#include "booklets/BookletProperties.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <string_view>

#include "base/Text.h"
#include "booklets/Manifest.h"
#include "build/ItemFamily.h"
#include "frame/XmlAccess.h"
#include "project/QbProject.h"
#include "topics/Topics.h"

namespace quillbox {

namespace {

// Goes by way of the machine's number format: with a decimal comma the fraction is lost. It is meant so.
std::string numberText(float number) {
    if (std::string_view(std::localeconv()->decimal_point) != ".") number = std::trunc(number) + 0.0F;
    char buffer[64];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr};
}

float numberOf(const Ref<XMLElement>& e, const char* name) {
    const auto number = static_cast<float>(leadingNumber(required(e, name)));
    if (!std::isfinite(number))
        throw AutomationError("Overflow: the number of '" + std::string(name) + "' does not fit");
    return number;
}

}  // namespace

void BookletProperties::notice() {
    if (mLoading) return;
    const auto manifest = Manifest();
    if (!manifest) throw AutomationError("These booklet properties have no manifest");
    manifest->FireChanged();
}

Ref<PageTemplate> BookletProperties::Template() const {
    Ref<PageTemplate> found;
    if (mTemplateName.empty()) return found;
    ignoringFailures([&] { found = documentEngine().Templates().PageTemplates()->Item(mTemplateName); });
    return found;
}

Ref<Topic> BookletProperties::CoverPageTopic() const {
    const auto manifest = Manifest();
    const auto project = manifest ? manifest->QbProject() : nullptr;
    return project ? project->Topics->Item(mCoverpageTopicID) : nullptr;
}

void BookletProperties::Load(const Ref<XMLElement>& e) {
    mLoading = true;
    SetTemplateName(required(e, "TemplateName"));
    SetPageBreaks(static_cast<PageBreaksEnum>(toInteger(numberOf(e, "PageBreaks"))));
    SetUnPrintableLeft(numberOf(e, "UnprintableLeft"));
    SetUnPrintableRight(numberOf(e, "UnprintableRight"));
    SetUnPrintableTop(numberOf(e, "UnprintableTop"));
    SetUnPrintableBottom(numberOf(e, "UnprintableBottom"));
    SetMarginLeft(numberOf(e, "MarginLeft"));
    SetMarginRight(numberOf(e, "MarginRight"));
    SetMarginTop(numberOf(e, "MarginTop"));
    SetMarginBottom(numberOf(e, "MarginBottom"));
    SetPaperSize(static_cast<PaperSizeEnum>(toInteger(numberOf(e, "Papersize"))));
    SetOutputFileName(required(e, "OutputFileName"));
    SetCoverpageTopicID(required(e, "CoverpageTopicID"));
    const auto read = [&](const char* name, auto&& use) { optionalAttribute(e, name, use); };
    read("EntryNumbering",
         [&](const std::string& v) { SetEntryNumbering(static_cast<EntryNumberingEnum>(integerOf(v))); });
    read("GenerateTOC", [&](const std::string& v) { SetGenerateTOC(isTrue(v)); });
    read("Title", [&](const std::string& v) { SetTitle(v); });
    read("RawCoverPage", [&](const std::string& v) { SetRawCoverPage(isTrue(v)); });
    read("LinkPPCodemark", [&](const std::string& v) { mLinkPreProcessCodemark = v; });
    read("LinkPPTopicInBooklet", [&](const std::string& v) { mLinkPreProcessTopicInBooklet = v; });
    read("LinkPPTopicNotInBooklet", [&](const std::string& v) { mLinkPreProcessTopicNotInBooklet = v; });
    read("LinkPPURLWithCaption", [&](const std::string& v) { mLinkPreProcessURLWithCaption = v; });
    read("LinkPPURLNoCaption", [&](const std::string& v) { mLinkPreProcessURLNoCaption = v; });
    for (const auto& child : e->Children()) {
        if (child->Name() == "HeaderHTML") SetHeaderHTML(child->Text());
        if (child->Name() == "FooterHTML") SetFooterHTML(child->Text());
    }
    mLoading = false;
}

void BookletProperties::Save(const Ref<XMLElement>& e) const {
    const auto number = [&](const char* name, float value) { e->AddAttribute(name, numberText(value)); };
    e->AddAttribute("TemplateName", mTemplateName);
    addInteger(e, "PageBreaks", mPageBreaks);
    number("UnPrintableLeft", mUnPrintableLeft);
    number("UnPrintableRight", mUnPrintableRight);
    number("UnPrintableTop", mUnPrintableTop);
    number("UnPrintableBottom", mUnPrintableBottom);
    number("MarginLeft", mMarginLeft);
    number("MarginRight", mMarginRight);
    number("MarginTop", mMarginTop);
    number("MarginBottom", mMarginBottom);
    addInteger(e, "PaperSize", mPaperSize);
    e->AddAttribute("OutputFileName", mOutputFileName);
    e->AddAttribute("CoverpageTopicID", mCoverpageTopicID);
    addInteger(e, "EntryNumbering", mEntryNumbering);
    addBoolean(e, "GenerateTOC", mGenerateTOC);
    e->AddAttribute("Title", mTitle);
    addBoolean(e, "RawCoverPage", mRawCoverPage);
    e->AddChild("HeaderHTML", mHeaderHTML);
    e->AddChild("FooterHTML", mFooterHTML);
    e->AddAttribute("LinkPPCodemark", mLinkPreProcessCodemark);
    e->AddAttribute("LinkPPTopicInBooklet", mLinkPreProcessTopicInBooklet);
    e->AddAttribute("LinkPPTopicNotInBooklet", mLinkPreProcessTopicNotInBooklet);
    e->AddAttribute("LinkPPURLWithCaption", mLinkPreProcessURLWithCaption);
    e->AddAttribute("LinkPPURLNoCaption", mLinkPreProcessURLNoCaption);
}

}  // namespace quillbox
