#pragma once

#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "content/GlossaryItems.h"
#include "content/OtherFiles.h"
#include "content/QbNode.h"
#include "content/Tasks.h"
#include "platform/engine/Variables.h"
#include "project/QbProject.h"
#include "topics/RelatedTopics.h"
#include "topics/Topic.h"
#include "topics/TopicCategories.h"
#include "topics/Topics.h"

namespace quillbox {

namespace sample {

inline void fillSettings(QbProject& p) {
    p.SetTitle("Manual & <more>");
    p.SetCMPFileName("C:\\Related\\Api.cmp");
    p.SetTemplateName("Web Help");
    p.SetSpellLastCheckDateTime(*Date::From({2025, 2, 3, 4, 5, 6, 0}));
    p.SetOutputFileName("/out/manual.chm");
    p.SetCompileType(CompileHelp2);
    p.SetHelp2Namespace("MS.Manual.1");
    p.SetHelp2FileID("manual");
    p.SetSSProject("$/help/manual");
    p.SetHelpContextIDHeaderFile("ids.h");
    p.SpellAddIgnoreAllWord("Quillbox");
    p.SpellAddIgnoreAllWord("caf\u00E9");
    for (const auto& [name, value] :
         {std::pair{"Company", "Pen & Ink"}, {"", "not written"}, {"Year", "2026"}}) {
        const auto variable = make<VariableValue>();
        variable->Name = name;
        variable->Value = value;
        p.VariableValues->Add(variable, variable->Name);
    }
    const auto category = p.NewTopicCategory();
    category->SetName("How to");
    p.TopicCategories->Add(category, category->Key);
    for (const auto* path : {"css/site.css", "/elsewhere/logo.png"}) {
        const auto file = p.NewOtherFile(*path == '/' ? path : p.Filename->Directory() + path);
        p.OtherFiles->Add(file, file->LocalSpec());
    }
}

inline void fillTopics(QbProject& p) {
    const auto intro = p.NewTopic();
    intro->SetName("Intro");
    intro->SetTitle("Introduction");
    intro->SetContentsTitle("Start here");
    intro->SetIsDefault(true);
    intro->SetStatus("Draft");
    intro->SetNotes("Ask \"Ann\".");
    intro->SetLayoutName("wide.html");
    intro->SetHelpContextIDs("100, 101");
    intro->SetTopicCategory(p.TopicCategories->Item(1));
    intro->AddKeyword("begin");
    intro->AddKeyword("start <here>");
    intro->SetTopicSectionData("BodyText", "<p>Hello ]]> &amp; <a href=\"Usage.html\">go</a></p>\r\n\t<p/>");
    p.Topics->Add(intro, intro->Key);

    const auto usage = p.NewTopic();
    usage->SetName("Usage");
    usage->SetTitle("Usage");
    usage->SetStatus("In Progress");
    usage->SetAllStylesheets(false);
    usage->AddStyleSheet("css/site.css");
    usage->SetAutoGenerateIndexEntry(false);
    usage->SetIncludeInHelpFile(false);
    const auto related = make<RelatedTopic>();
    related->ChildTopicKey = intro->Key;
    related->SetCategory("See also");
    related->SetParentTopic(usage);
    usage->RelatedTopics()->Add(related);
    const auto url = make<RelatedTopic>();
    url->SetRelatedTopicType(rttURL);
    url->SetURL("https://example.org/?a=1&b=2");
    url->SetTitle("Example");
    url->SetCategory("Links");
    url->SetParentTopic(usage);
    usage->RelatedTopics()->Add(url);
    p.Topics->Add(usage, usage->Key);
}

inline void fillContents(QbProject& p) {
    const auto book = p.QbNodes()->NewNode(nullptr);
    book->SetCaptionText("Book \"one\"");
    book->SetIcon(3);
    const auto page = book->ChildNodes->NewNode(book);
    page->SetQbNodeType(ntSingleTopic);
    page->SetTopicID(p.Topics->Item(1)->Key);
    const auto link = p.QbNodes()->NewNode(nullptr);
    link->SetCaptionText("Web");
    link->SetStandardURL("https://example.org/");
    const auto merged = p.QbNodes()->NewNode(nullptr);
    merged->SetQbNodeType(ntSubContents);
    merged->SetSubContentsFileName("more.hhc");
}

inline void fillLists(QbProject& p) {
    const auto term = p.NewGlossaryItem("API", "An <b>interface</b>");
    p.GlossaryItems()->Add(term, term->Key);

    const auto task = p.NewTask();
    task->SetTitle("Review");
    task->SetNotes("First line\r\nsecond");
    task->SetAssignedTo("Ann");
    task->SetTopicID(p.Topics->Item(1)->Key);
    p.Tasks->Add(task, task->Key);

    const auto booklet = p.NewManifest("Printed");
    booklet->SetNotes("For the fair");
    booklet->SetIncludeFlag(true);
    const auto chapter = booklet->NewManifestEntry(p.Topics->Item(1), "");
    booklet->Entries()->Add(chapter, chapter->Key);
    const auto section = booklet->NewManifestEntry(nullptr, "Own title");
    section->SetParentEntry(chapter);
    section->SetPageBreakBefore(epbAlways);
    chapter->ChildEntries->Add(section, section->Key);
    auto& print = *booklet->BookletProperties;
    print.SetTemplateName("Booklet");
    print.SetMarginLeft(20.5f);
    print.SetTitle("The printed manual");
    print.SetGenerateTOC(true);
    print.SetEntryNumbering(enTopicTitles);
    print.SetHeaderHTML("<i>%%BookletTitle%%</i>");
    print.SetLinkPreProcessURLNoCaption("{None}");
    p.Manifests()->Add(booklet, booklet->Key);

    const auto tour = p.NewManifest("Tour", mtBrowseSequence);
    p.Manifests()->Add(tour, tour->Key);
}

}  // namespace sample

// Puts one of everything into a project that has a place.
inline void fillSample(QbProject& project) {
    sample::fillSettings(project);
    sample::fillTopics(project);
    sample::fillContents(project);
    sample::fillLists(project);
}

}  // namespace quillbox
