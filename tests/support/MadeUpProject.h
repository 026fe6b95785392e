#pragma once

#include <array>
#include <random>
#include <string>

#include "support/SampleProject.h"

namespace quillbox {

// Fills projects by chance: the same number gives the same project.
class MadeUpProject {
  public:
    explicit MadeUpProject(unsigned seed) : mRandom(seed) {}

    void Fill(QbProject& project) {
        fillSettings(project);
        times(4, [&] { addTopic(project); });
        for (const auto& topic : project.Topics->Items()) relate(project, *topic);
        times(3, [&] { grow(project, project.QbNodes(), nullptr, 5); });
        times(4, [&] {
            const auto item = project.NewGlossaryItem(Text(), Text());
            project.GlossaryItems()->Add(item, item->Key);
        });
        times(3, [&] { addTask(project); });
        times(3, [&] { addManifest(project); });
    }

    // Any text that a file can hold: markup, line ends, blanks at the ends, characters of all planes.
    std::string Text() {
        static const std::array<std::string, 24> pieces = {
            " ",      "\r",      "\n",     "\r\n",   "\t",     "]]>",   "<p class=\"x\">", "</p>", "&amp;",
            "&",      "<",       ">",      "\"",     "'",      "word",  "<!--x-->",        "%",    "|",
            "\u00E4", "e\u0301", "\u4E2D", "\u200F", "\uFEFF", "\u2028"};
        std::string text;
        for (auto count = below(4) == 0 ? 0 : below(12); count > 0; --count) {
            if (below(4) == 0) {
                append(text, scalar());
            } else {
                text += pieces[below(pieces.size())];
            }
        }
        return text;
    }

  private:
    std::size_t below(std::size_t limit) { return mRandom() % limit; }
    bool chance() { return below(2) == 0; }
    template <class Step>
    void times(std::size_t atMost, Step&& step) {
        for (auto count = below(atMost + 1); count > 0; --count) step();
    }
    std::string unique(const std::string& beginning) { return beginning + std::to_string(++mCount); }
    template <class Items>
    auto anyOf(const Items& items) -> typename Items::value_type {
        return items.empty() ? nullptr : items[below(items.size())];
    }

    std::uint32_t scalar() {
        for (;;) {
            const auto c = static_cast<std::uint32_t>(below(chance() ? 0x3000 : 0x110000));
            if (c >= 0x20 && (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF) return c;
        }
    }
    static void append(std::string& text, std::uint32_t c) {
        const auto add = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
        if (c < 0x80) return add(c);
        if (c < 0x800) return add(0xC0 | c >> 6), add(0x80 | (c & 63));
        if (c < 0x10000) return add(0xE0 | c >> 12), add(0x80 | (c >> 6 & 63)), add(0x80 | (c & 63));
        add(0xF0 | c >> 18), add(0x80 | (c >> 12 & 63)), add(0x80 | (c >> 6 & 63)), add(0x80 | (c & 63));
    }

    void fillSettings(QbProject& p) {
        p.SetTitle(Text());
        p.SetTemplateName(Text());
        p.SetOutputFileName(Text());
        p.SetCMPFileName(Text());
        p.SetHelp2Namespace(Text());
        p.SetHelp2FileID(Text());
        p.SetHelpContextIDHeaderFile(Text());
        p.SetSSProject(Text());
        p.SetCompileType(static_cast<CompileTypeEnum>(below(3)));
        p.SetSpellLastCheckDateTime(date());
        times(4, [&] { p.SpellIgnoreAllWordList->Add(Text()); });
        times(3, [&] {
            const auto variable = make<VariableValue>();
            variable->Name = unique(Text());
            variable->Value = Text();
            p.VariableValues->Add(variable, variable->Name);
        });
        times(3, [&] {
            const auto category = p.NewTopicCategory();
            category->SetName(Text());
            p.TopicCategories->Add(category, category->Key);
        });
        times(3, [&] {
            const auto file = p.NewOtherFile((chance() ? p.Filename->Directory() : "/elsewhere/") +
                                             unique("f\u00E4 & ") + ".png");
            p.OtherFiles->Add(file, file->LocalSpec());
        });
    }

    Date date() {
        return Date::From({static_cast<int>(1 + below(9999)), static_cast<int>(1 + below(12)),
                           static_cast<int>(1 + below(28)), static_cast<int>(below(24)),
                           static_cast<int>(below(60)), static_cast<int>(below(60)), 0})
            .value_or(Date());
    }

    void addTopic(QbProject& p) {
        const auto topic = p.NewTopic();
        topic->SetName(Text());
        topic->SetTitle(Text());
        topic->SetContentsTitle(Text());
        topic->SetNotes(Text());
        topic->SetStatus(Text());
        topic->SetLayoutName(Text());
        topic->SetHelpContextIDs(Text());
        topic->SetIsDefault(chance());
        topic->SetIncludeInHelpFile(chance());
        topic->SetAutoGenerateIndexEntry(chance());
        if (chance()) topic->SetTopicCategory(anyOf(p.TopicCategories->Items()));
        times(3, [&] { topic->AddKeyword(Text()); });
        if (chance()) {
            topic->SetAllStylesheets(false);
            times(3, [&] { topic->AddStyleSheet(unique(Text())); });
        }
        if (chance()) topic->SetTopicSectionData("BodyText", Text() + Text() + Text());
        topic->SetCreatedOn(date());
        topic->SetModifiedOn(date());
        p.Topics->Add(topic, topic->Key);
    }

    void relate(QbProject& p, Topic& topic) {
        times(3, [&] {
            const auto related = make<RelatedTopic>();
            related->ChildTopicKey = chance() ? anyOf(p.Topics->Items())->Key : Text();
            related->SetRelatedTopicType(static_cast<RelatedTopicTypeEnum>(below(2)));
            related->SetTitle(Text());
            related->SetCategory(Text());
            related->SetURL(Text());
            topic.RelatedTopics()->Add(related);
        });
    }

    void grow(QbProject& p, const Ref<QbNodes>& level, const Ref<QbNode>& parent, int deepest) {
        const auto node = level->NewNode(parent);
        node->SetQbNodeType(static_cast<QbNodeTypeEnum>(below(4)));
        node->SetCaptionType(chance() ? ctDefault : ctSpecific);
        node->SetCaptionText(Text());
        node->SetIcon(static_cast<int>(below(50)) - 1);
        node->SetSubContentsFileName(Text());
        node->SetStandardURL(chance() ? "Glossary.html" : Text());
        const auto topic = anyOf(p.Topics->Items());
        node->SetTopicID(topic && chance() ? topic->Key : Text());
        if (deepest > 0) {
            times(2, [&] { grow(p, node->ChildNodes, node, deepest - 1); });
        }
    }

    void addTask(QbProject& p) {
        const auto task = p.NewTask();
        task->SetTitle(Text());
        task->SetNotes(Text());
        task->SetPriority(Text());
        task->SetStatus(Text());
        task->SetAssignedTo(Text());
        task->SetTopicID(Text());
        task->SetCreatedBy(Text());
        task->SetCreatedOn(date());
        p.Tasks->Add(task, task->Key);
    }

    void addManifest(QbProject& p) {
        const auto manifest = p.NewManifest(Text(), chance() ? mtBooklet : mtBrowseSequence);
        manifest->SetNotes(Text());
        manifest->SetIncludeFlag(chance());
        times(3, [&] { grow(p, *manifest, manifest->Entries(), nullptr, 4); });
        auto& print = *manifest->BookletProperties;
        print.SetTitle(Text());
        print.SetTemplateName(Text());
        print.SetHeaderHTML(Text());
        print.SetFooterHTML(Text());
        print.SetLinkPreProcessURLWithCaption(Text());
        print.SetMarginLeft(static_cast<float>(below(100'000)) / 1000);
        print.SetUnPrintableTop(static_cast<float>(below(1000)) / 7);
        print.SetGenerateTOC(chance());
        print.SetPaperSize(chance() ? psA4 : psLetter);
        p.Manifests()->Add(manifest, manifest->Key);
    }

    void grow(QbProject& p, Manifest& manifest, const Ref<ManifestEntries>& level,
              const Ref<ManifestEntry>& parent, int deepest) {
        const auto entry = manifest.NewManifestEntry(chance() ? anyOf(p.Topics->Items()) : nullptr, Text());
        if (parent) entry->SetParentEntry(parent);
        entry->SetPageBreakBefore(static_cast<EntryPageBreakEnum>(below(3)));
        level->Add(entry, entry->Key);
        if (deepest > 0) {
            times(2, [&] { grow(p, manifest, entry->ChildEntries, entry, deepest - 1); });
        }
    }

    std::mt19937 mRandom;
    int mCount = 0;
};

}  // namespace quillbox
