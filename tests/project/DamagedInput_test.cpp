#include <random>
#include <regex>
#include <set>

#include "support/ProjectTest.h"
#include "support/SampleProject.h"

namespace quillbox {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::Each;
using testing::HasSubstr;
using testing::StartsWith;

class DamagedInput : public ProjectTest {
  protected:
    DamagedInput() {
        fillSample(*project);
        project->SaveToDisk();
        text = bytes(kFile);
    }

    // The failure of loading such a file; nothing on disk may change by it.
    std::string load(const std::string& damaged) {
        outside.files->Put(kFile, damaged);
        outside.files->ForgetCalls();
        const auto other = newProject();
        const auto failure = failureOf([&] { other->LoadFromFile(kFile); });
        EXPECT_THAT(outside.files->Calls(), Each(StartsWith("read ")));
        return failure;
    }
    static std::string replaced(const std::string& in, const std::string& what, const std::string& with) {
        const auto place = in.find(what);
        EXPECT_NE(place, std::string::npos) << what;
        return std::string(in).replace(place, what.size(), with);
    }

    std::string text;
};

TEST_F(DamagedInput, TheSampleItselfLoads) { EXPECT_EQ(load(text), "no failure"); }

TEST_F(DamagedInput, AFileThatIsCutOffFailsAndTellsFileAndLine) {
    const auto whole = text.find_last_of('>');
    for (std::size_t size = 0; size < whole; size += 97) {
        EXPECT_THAT(load(text.substr(0, size)), AllOf(StartsWith(kFile), ContainsRegex("line [0-9]+")))
            << size;
    }
}

// The attributes that a file has to have, by element.
const std::map<std::string, std::set<std::string>> kRequired = {
    {"cat", {"Name", "Key"}},
    {"VariableValue", {"Name"}},
    {"file", {"FileName"}},
    {"Topic", {"Key"}},
    {"k", {"Value"}},
    {"r", {"t", "cat"}},
    {"s", {"k"}},
    {"glossaryitem", {"Key", "Term"}},
    {"manifest", {"k", "n", "t"}},
    {"me", {"k", "t", "tid"}},
    {"bookletproperties",
     {"TemplateName", "PageBreaks", "UnPrintableLeft", "UnPrintableRight", "UnPrintableTop",
      "UnPrintableBottom", "MarginLeft", "MarginRight", "MarginTop", "MarginBottom", "PaperSize",
      "OutputFileName", "CoverpageTopicID"}},
    {"n", {"key", "nt", "ct", "c", "i", "cfn", "tid", "url"}},
    {"Task",
     {"Key", "Priority", "Title", "AssignedTo", "TopicID", "Status", "CreatedOn", "CreatedBy", "ModifiedOn",
      "ModifiedBy"}},
};

TEST_F(DamagedInput, EachAttributeIsNeededOrNotAsTheFormatSays) {
    static const std::regex tag("<([A-Za-z]+)((?: [A-Za-z0-9]+=\"[^\"]*\")+)");
    static const std::regex attribute(" ([A-Za-z0-9]+)=\"[^\"]*\"");
    std::set<std::string> seen;
    for (std::sregex_iterator e(text.begin(), text.end(), tag), end; e != end; ++e) {
        const auto element = (*e)[1].str();
        const auto attributes = (*e)[2].str();
        for (std::sregex_iterator a(attributes.begin(), attributes.end(), attribute); a != end; ++a) {
            const auto name = (*a)[1].str();
            if (!seen.insert(element + "." + name).second) continue;
            SCOPED_TRACE(element + "." + name);
            const auto at = static_cast<std::size_t>(e->position(2) + a->position(0));
            const auto failure = load(std::string(text).erase(at, static_cast<std::size_t>(a->length(0))));
            const auto found = kRequired.find(element);
            if (found == kRequired.end() || !found->second.contains(name)) {
                EXPECT_EQ(failure, "no failure");
            } else {
                EXPECT_THAT(failure, AllOf(StartsWith(std::string(kFile) + ": line "),
                                           HasSubstr("element '" + element + "'")));
                EXPECT_THAT(lower(failure), HasSubstr("'" + lower(name) + "'"));
            }
        }
    }
    for (const auto& [element, names] : kRequired) {
        for (const auto& name : names)
            EXPECT_TRUE(seen.contains(element + "." + name)) << element << "." << name;
    }
}

TEST_F(DamagedInput, ANumberThatIsNoneFailsOrLeavesItsProperty) {
    const auto spoilt = [&](const std::string& element, const std::string& name) {
        const auto from = text.find("<" + element + " ");
        const auto start = text.find(" " + name + "=\"", from) + name.size() + 3;
        return load(std::string(text).replace(start, text.find('"', start) - start, "1x"));
    };
    for (const auto& [element, name] : {std::pair{"n", "nt"}, {"n", "ct"}, {"n", "i"}, {"manifest", "t"}}) {
        EXPECT_THAT(spoilt(element, name),
                    AllOf(StartsWith(std::string(kFile) + ": line "),
                          HasSubstr(std::string("element '") + element + "', attribute '" + name +
                                    "': '1x' is not a number")));
    }
    for (const auto& [element, name] : {std::pair{"QbProject", "ProjectType"},
                                        {"QbProject", "CompileType"},
                                        {"r", "rt"},
                                        {"me", "pbb"},
                                        {"bookletproperties", "EntryNumbering"},
                                        {"bookletproperties", "MarginLeft"},
                                        {"bookletproperties", "PaperSize"}}) {
        EXPECT_EQ(spoilt(element, name), "no failure") << name;
    }
}

TEST_F(DamagedInput, ADateOfATaskThatIsNoneFails) {
    EXPECT_THAT(load(replaced(text, "CreatedOn=\"14-03-2026 15:09:26\"", "CreatedOn=\"yesterday\"")),
                AllOf(StartsWith(std::string(kFile) + ": line "), HasSubstr("element 'Task'"),
                      HasSubstr("'yesterday'")));
}

TEST_F(DamagedInput, AKeyThatStandsTwiceFailsAtTheSecond) {
    static const std::regex keyed(
        "\n *<(cat|file|VariableValue|Topic|glossaryitem|Task|manifest|n) "
        "[^\n]*?(?:[Kk]ey|k|Name|FileName)=\"([^\"]+)\"");
    std::set<std::string> seen;
    for (std::sregex_iterator e(text.begin(), text.end(), keyed), end; e != end; ++e) {
        const auto element = (*e)[1].str();
        if (!seen.insert(element).second) continue;
        // The whole element once more, as text.
        const auto document = platform().xml->NewDocument();
        const auto begin = static_cast<std::size_t>(e->position(0));
        const auto selfClosing = text.find("/>", begin);
        const auto closing = text.find("</" + element + ">", begin);
        const auto firstLineEnd = text.find('>', begin);
        const bool isShort = selfClosing + 1 == firstLineEnd;
        const auto stop = isShort ? selfClosing + 2 : closing + element.size() + 3;
        const auto copy = text.substr(begin, stop - begin);
        const auto failure = load(std::string(text).insert(stop, copy));
        EXPECT_THAT(failure, AllOf(StartsWith(std::string(kFile) + ": line "),
                                   HasSubstr("element '" + element + "'"), HasSubstr("already")))
            << copy;
    }
    EXPECT_EQ(seen.size(), 8u);
}

TEST_F(DamagedInput, AnOtherRootLoadsNothingButTheAttributes) {
    auto other = text;
    for (const auto* tag : {"<QbProject", "</QbProject"})
        other = replaced(other, tag, std::string(tag) + "s");
    EXPECT_EQ(load(other), "no failure");
    outside.files->Put(kFile, other);
    const auto loaded = newProject();
    loaded->LoadFromFile(kFile);
    EXPECT_EQ(loaded->Title(), "Manual & <more>");
    EXPECT_EQ(loaded->Topics->Count() + loaded->Tasks->Count() + loaded->QbNodes()->Count(), 0);
}

TEST_F(DamagedInput, BytesThatAreNoTextFailAndTellTheFile) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 300; ++round) {
        std::string noise(random() % 400, '\0');
        for (auto& c : noise) c = static_cast<char>(random());
        EXPECT_THAT(load(noise), StartsWith(kFile));
    }
    for (const std::string head :
         {"\x89PNG\r\n\x1A\n", "PK\x03\x04", "\x1F\x8B\x08", "%PDF-1.4", "MZ\x90", "\xFF\xFE", "\xFE\xFF"}) {
        EXPECT_THAT(load(head), StartsWith(kFile));
    }
    EXPECT_THAT(load(""), StartsWith(kFile));
}

TEST_F(DamagedInput, AByteThatIsSpoiltNeverDoesMoreThanFail) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        auto spoilt = text;
        for (auto count = 1 + random() % 4; count > 0; --count) {
            spoilt[random() % spoilt.size()] = "<>&\"'/= \0x\xFF"[random() % 12];
        }
        const auto failure = load(spoilt);
        EXPECT_THAT(failure, testing::AnyOf("no failure", StartsWith(kFile)));
    }
}

TEST_F(DamagedInput, EntitiesAreNotExpandedWithoutEnd) {
    EXPECT_THAT(
        load("<!DOCTYPE QbProject [<!ENTITY a \"x\"><!ENTITY b \"&a;&a;\">]><QbProject Title=\"&b;\"/>"),
        StartsWith(kFile));
    EXPECT_THAT(
        load("<!DOCTYPE QbProject [<!ENTITY a SYSTEM \"file:///etc/passwd\">]><QbProject Title=\"&a;\"/>"),
        StartsWith(kFile));
}

TEST_F(DamagedInput, TheInstalledBookletDefaultsMayBeDamagedToo) {
    const std::string defaults = "/install/Configuration/bookletproperties.xml";
    for (const auto* damaged :
         {"", "<", "<BookletProperties/>", "<BookletProperties TemplateName='x'/>", "\xFF\xFE\x01"}) {
        outside.files->Put(defaults, damaged);
        EXPECT_THAT(failureOf([&] { project->NewManifest("x"); }), StartsWith(defaults)) << damaged;
    }
}

}  // namespace
}  // namespace quillbox
