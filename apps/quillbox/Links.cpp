#include <unistd.h>

#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>

#include "Commands.h"
#include "OpenProject.h"
#include "links/LinkInfo.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox::cli {

namespace {

const char* statusName(LinkStatusTypeEnum status) {
    return status == lsBroken ? "broken" : status == lsOK ? "ok" : "unverified";
}

struct Report {
    bool json = false;
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    bool broken = false;

    void Add(const LinkInfo& link, int position) {
        broken |= link.LinkStatus == lsBroken;
        const char* kind = link.LinkType == ltImage ? "image" : "hyperlink";
        const auto topic = link.Topic->Name();
        if (json) {
            list.push_back({{"topic", topic},
                            {"kind", kind},
                            {"status", statusName(link.LinkStatus)},
                            {"link", link.LinkText},
                            {"caption", link.LinkCaption},
                            {"position", position}});
        } else {
            std::printf("%s\t%s\t%s\t%s\t%d\n", topic.c_str(), statusName(link.LinkStatus), kind,
                        link.LinkText.c_str(), position);
        }
    }
};

int links(const std::string& path, bool external, bool json) {
    const auto project = openProject(path);
    Report report;
    report.json = json;
    int done = 0;
    for (const auto& topic : project->Topics->Items()) {
        ++done;
        if (isatty(STDERR_FILENO)) std::fprintf(stderr, "\r%d of %d\033[K", done, project->Topics->Count());
        Ref<HTMLDocument> document;
        int position = 0;
        for (const auto& link : topic->GetSuspectLinks(nullptr, document)->Items()) {
            if (external && link->LinkStatus == lsUnverified) link->Verify(true);
            if (link->LinkStatus != lsOK) report.Add(*link, ++position);
        }
    }
    if (isatty(STDERR_FILENO)) std::fprintf(stderr, "\r\033[K");
    if (json) {
        using Json = nlohmann::ordered_json;
        std::printf("%s\n", report.list.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
    }
    return report.broken ? kFoundProblems : kDone;
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
