#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "Commands.h"
#include "OpenProject.h"
#include "Terminal.h"
#include "base/AutomationError.h"
#include "base/Text.h"
#include "frame/Platform.h"
#include "links/BodyLinks.h"
#include "links/LinkInfo.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox::cli {

namespace {

// Where a tag stands in a body: lines and columns from 1, the offset from 0, all in characters.
struct Position {
    std::size_t line = 1;
    std::size_t column = 1;
    std::size_t offset = 0;
};

// Counts through a text, for places that are asked for in their order.
class Counter {
  public:
    explicit Counter(std::string text) : mText(std::move(text)) {}

    Position At(std::size_t place) {
        for (; mDone < std::min(place, mText.size()); ++mDone) {
            const char c = mText[mDone];
            if ((static_cast<unsigned char>(c) & 0xC0) == 0x80) continue;
            ++mPosition.offset;
            const bool endsLine =
                c == '\n' || (c == '\r' && !std::string_view(mText).substr(mDone + 1).starts_with('\n'));
            mPosition.column = endsLine ? 1 : mPosition.column + 1;
            if (endsLine) ++mPosition.line;
        }
        return mPosition;
    }

  private:
    std::string mText;
    std::size_t mDone = 0;
    Position mPosition;
};

struct Suspect {
    std::string topic;
    Ref<LinkInfo> link;
    Position position;
    std::string reason;  // what a fetch told

    bool Broken() const { return link->LinkStatus == lsBroken; }
    std::string Status() const { return Broken() ? "broken" : "unverified"; }
    std::string Kind() const { return link->LinkType == ltImage ? "image" : "hyperlink"; }
    std::string Place() const {
        return std::to_string(position.line) + ":" + std::to_string(position.column);
    }
};

// Asks for pages of other sites, for each of them once.
class OtherSites {
  public:
    static bool Leads(const std::string& text) {
        const auto scheme = lower(text.substr(0, text.find(':')));
        return scheme == "http" || scheme == "https";
    }

    const std::string& Fetch(const std::string& text) {
        const auto page = text.substr(0, text.find('#'));
        const auto known = mReasons.find(page);
        if (known != mReasons.end()) return known->second;
        return mReasons.emplace(page, platform().web->Fetch(text)).first->second;
    }

  private:
    std::map<std::string, std::string> mReasons;
};

class Inspection {
  public:
    explicit Inspection(bool external) : mExternal(external) {}

    const std::vector<Suspect>& Suspects() const { return mSuspects; }

    void Inspect(const Ref<Topic>& topic) {
        const auto first = static_cast<std::ptrdiff_t>(mSuspects.size());
        eachLink(topic, *bodyLinks(*topic), [&](const Ref<LinkInfo>& link) {
            Suspect suspect{topic->Name(), link, {}, {}};
            if (mExternal && OtherSites::Leads(link->LinkText)) {
                suspect.reason = mSites.Fetch(link->LinkText);
                link->LinkStatus = suspect.reason.empty() ? lsOK : lsBroken;
            }
            if (link->LinkStatus != lsOK) mSuspects.push_back(std::move(suspect));
        });
        std::stable_sort(mSuspects.begin() + first, mSuspects.end(), [](const Suspect& a, const Suspect& b) {
            return a.link->PlaceInBody() < b.link->PlaceInBody();
        });
        Counter counter(topic->TopicSectionData("BodyText"));
        for (auto at = mSuspects.begin() + first; at != mSuspects.end(); ++at)
            at->position = counter.At(at->link->PlaceInBody().value_or(0));
    }

  private:
    bool mExternal;
    OtherSites mSites;
    std::vector<Suspect> mSuspects;
};

void printJson(const std::vector<Suspect>& suspects) {
    using Json = nlohmann::ordered_json;
    auto list = Json::array();
    for (const auto& one : suspects) {
        list.push_back({{"topic", one.topic},
                        {"kind", one.Kind()},
                        {"status", one.Status()},
                        {"link", one.link->LinkText},
                        {"caption", one.link->LinkCaption},
                        {"line", one.position.line},
                        {"column", one.position.column},
                        {"offset", one.position.offset}});
        if (!one.reason.empty()) list.back()["reason"] = one.reason;
    }
    std::printf("%s\n", list.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
}

std::string padded(std::string text, std::size_t width) {
    return text.append(width - std::min(width, characters(text)), ' ');
}

void printTable(const std::vector<Suspect>& suspects) {
    constexpr std::size_t kWidestTopic = 40;
    std::size_t topicWidth = 0, placeWidth = 0;
    for (const auto& one : suspects) {
        topicWidth = std::max(topicWidth, std::min(kWidestTopic, characters(printable(one.topic))));
        placeWidth = std::max(placeWidth, one.Place().size());
    }
    for (const auto& one : suspects) {
        const auto reason = one.reason.empty() ? "" : "  (" + printable(one.reason) + ")";
        std::printf("%s  %s  %-10s  %-9s  %s%s\n", padded(printable(one.topic), topicWidth).c_str(),
                    padded(one.Place(), placeWidth).c_str(), one.Status().c_str(), one.Kind().c_str(),
                    printable(one.link->LinkText).c_str(), reason.c_str());
    }
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void printSummary(std::size_t topics, std::size_t broken, std::size_t unverified) {
    auto text =
        counted(topics, "topic") + ": " + (broken == 0 ? "no broken link" : counted(broken, "broken link"));
    if (unverified > 0)
        text += ", " + std::to_string(unverified) + " to other sites not looked up (--external does)";
    std::fprintf(stderr, "%s\n", text.c_str());
}

int links(const std::string& path, bool external, bool json) {
    const auto project = openProject(path);
    const auto topics = project->Topics->Items();
    const int total = static_cast<int>(topics.size());
    Inspection inspection(external);
    for (int done = 0; done < total; ++done) {
        const auto& topic = topics[static_cast<std::size_t>(done)];
        showProgress(topic->Name(), done, total);
        inside([&] { return "Topic '" + topic->Name() + "'"; }, [&] { inspection.Inspect(topic); });
    }
    clearProgress();
    const auto& suspects = inspection.Suspects();
    const auto broken = static_cast<std::size_t>(
        std::count_if(suspects.begin(), suspects.end(), [](const Suspect& one) { return one.Broken(); }));
    json ? printJson(suspects) : printTable(suspects);
    printSummary(topics.size(), broken, suspects.size() - broken);
    return broken > 0 ? kFoundProblems : kDone;
}

}  // namespace

void addLinks(CLI::App& app, Run& run) {
    struct Options {
        std::string project;
        bool external = false, json = false;
    };
    auto options = std::make_shared<Options>();
    auto* command = app.add_subcommand("links", "Lists links that could not be proved good");
    command->add_option("PROJECT", options->project, "The project file (.qbp)")->required();
    command->add_flag("--external", options->external, "Fetch links to other sites");
    command->add_flag("--json", options->json, "For programs");
    command->callback([options, &run] {
        run = [options] { return links(options->project, options->external, options->json); };
    });
}

}  // namespace quillbox::cli
