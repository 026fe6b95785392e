#pragma once

#include <string>

#include "base/Object.h"
#include "frame/Enumerations.h"
#include "platform/XML.h"
#include "platform/engine/Templates.h"

namespace quillbox {

class Manifest;
class Topic;

// How one booklet is printed. Margins and unprintable strips are in millimetres.
class BookletProperties : public Object {
  public:
    static constexpr std::string_view kClassName = "BookletProperties";
    std::string_view ClassName() const override { return kClassName; }

    std::string Title() const { return mTitle; }
    void SetTitle(const std::string& v) { store(mTitle, v); }
    EntryNumberingEnum EntryNumbering() const { return mEntryNumbering; }
    void SetEntryNumbering(EntryNumberingEnum v) { store(mEntryNumbering, v); }
    bool GenerateTOC() const { return mGenerateTOC; }
    void SetGenerateTOC(bool v) { store(mGenerateTOC, v); }
    std::string OutputFileName() const { return mOutputFileName; }
    void SetOutputFileName(const std::string& v) { store(mOutputFileName, v); }
    Ref<quillbox::Manifest> Manifest() const { return mManifest.Get(); }
    void SetManifest(const Ref<quillbox::Manifest>& manifest) { mManifest.Set(manifest); }
    PaperSizeEnum PaperSize() const { return mPaperSize; }
    void SetPaperSize(PaperSizeEnum v) { store(mPaperSize, v); }
    float MarginBottom() const { return mMarginBottom; }
    void SetMarginBottom(float v) { store(mMarginBottom, v); }
    float MarginTop() const { return mMarginTop; }
    void SetMarginTop(float v) { store(mMarginTop, v); }
    float MarginRight() const { return mMarginRight; }
    void SetMarginRight(float v) { store(mMarginRight, v); }
    float MarginLeft() const { return mMarginLeft; }
    void SetMarginLeft(float v) { store(mMarginLeft, v); }
    float UnPrintableBottom() const { return mUnPrintableBottom; }
    void SetUnPrintableBottom(float v) { store(mUnPrintableBottom, v); }
    float UnPrintableTop() const { return mUnPrintableTop; }
    void SetUnPrintableTop(float v) { store(mUnPrintableTop, v); }
    float UnPrintableRight() const { return mUnPrintableRight; }
    void SetUnPrintableRight(float v) { store(mUnPrintableRight, v); }
    float UnPrintableLeft() const { return mUnPrintableLeft; }
    void SetUnPrintableLeft(float v) { store(mUnPrintableLeft, v); }
    std::string FooterHTML() const { return mFooterHTML; }
    void SetFooterHTML(const std::string& v) { store(mFooterHTML, v); }
    std::string HeaderHTML() const { return mHeaderHTML; }
    void SetHeaderHTML(const std::string& v) { store(mHeaderHTML, v); }
    PageBreaksEnum PageBreaks() const { return mPageBreaks; }
    void SetPageBreaks(PageBreaksEnum v) { store(mPageBreaks, v); }
    std::string CoverpageTopicID() const { return mCoverpageTopicID; }
    void SetCoverpageTopicID(const std::string& v) { store(mCoverpageTopicID, v); }
    std::string TemplateName() const { return mTemplateName; }
    void SetTemplateName(const std::string& v) { store(mTemplateName, v); }
    bool RawCoverPage() const { return mRawCoverPage; }
    void SetRawCoverPage(bool v) { store(mRawCoverPage, v); }
    // Scraps that stand in for hyperlinks in print. Empty means the template's own, "{None}" leaves the link.
    std::string LinkPreProcessURLNoCaption() const { return mLinkPreProcessURLNoCaption; }
    void SetLinkPreProcessURLNoCaption(const std::string& v) { store(mLinkPreProcessURLNoCaption, v); }
    std::string LinkPreProcessURLWithCaption() const { return mLinkPreProcessURLWithCaption; }
    void SetLinkPreProcessURLWithCaption(const std::string& v) { store(mLinkPreProcessURLWithCaption, v); }
    std::string LinkPreProcessTopicNotInBooklet() const { return mLinkPreProcessTopicNotInBooklet; }
    void SetLinkPreProcessTopicNotInBooklet(const std::string& v) {
        store(mLinkPreProcessTopicNotInBooklet, v);
    }
    std::string LinkPreProcessTopicInBooklet() const { return mLinkPreProcessTopicInBooklet; }
    void SetLinkPreProcessTopicInBooklet(const std::string& v) { store(mLinkPreProcessTopicInBooklet, v); }
    std::string LinkPreProcessCodemark() const { return mLinkPreProcessCodemark; }
    void SetLinkPreProcessCodemark(const std::string& v) { store(mLinkPreProcessCodemark, v); }

    void Load(const Ref<XMLElement>& e);
    void Save(const Ref<XMLElement>& e) const;

    // The installed template of that name; none where there is no such template.
    Ref<PageTemplate> Template() const;
    // None where there is no such topic.
    Ref<Topic> CoverPageTopic() const;

  private:
    template <class T>
    void store(T& field, const T& value) {
        field = value;
        notice();
    }
    // Fails without a manifest, as the notice has nobody to go to.
    void notice();

    bool mLoading = false;
    ObjectReference<quillbox::Manifest> mManifest;
    std::string mTemplateName, mCoverpageTopicID;
    bool mRawCoverPage = false;
    PageBreaksEnum mPageBreaks = pbBeforeTopLevelEntries;
    std::string mHeaderHTML, mFooterHTML;
    float mUnPrintableLeft = 0, mUnPrintableRight = 0, mUnPrintableTop = 0, mUnPrintableBottom = 0;
    float mMarginLeft = 0, mMarginRight = 0, mMarginTop = 0, mMarginBottom = 0;
    EntryNumberingEnum mEntryNumbering = enNone;
    bool mGenerateTOC = false;
    PaperSizeEnum mPaperSize = psA4;
    std::string mOutputFileName, mTitle;
    std::string mLinkPreProcessCodemark, mLinkPreProcessTopicInBooklet, mLinkPreProcessTopicNotInBooklet;
    std::string mLinkPreProcessURLWithCaption, mLinkPreProcessURLNoCaption;
};

// A hyperlink of a booklet as it is offered to templates.
class BookletLinkInfo : public Object {
  public:
    static constexpr std::string_view kClassName = "BookletLinkInfo";
    std::string_view ClassName() const override { return kClassName; }
    std::string LinkCaption;
    std::string LinkURL;
    Ref<Topic> LinkTopic;
};

}  // namespace quillbox
