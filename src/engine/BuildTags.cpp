// The general tags that tell of the build, the page in work and the language.

#include <algorithm>

#include "base/Text.h"
#include "engine/CommonTags.h"
#include "engine/Compiler.h"
#include "engine/Disk.h"

namespace quillbox {

namespace {

std::string fileNameOf(const std::string& path) {
    const auto name = disk::withSlashes(path);
    return name.substr(name.rfind('/') + 1);
}

std::string formattedNow(const TagRequest& request, const std::string& usual) {
    const auto format = request.Attribute("format");
    return request.document.Shared().services.system->Now().Format(format.empty() ? usual : format);
}

std::string date(const TagRequest& request) { return formattedNow(request, "yyyy-mm-dd"); }
std::string time(const TagRequest& request) { return formattedNow(request, "hh:nn"); }
std::string version(const TagRequest& request) { return request.document.Shared().services.version; }

std::string projectFile(const TagRequest& request) {
    const auto sources = request.document.Sources();
    if (sources->empty()) return {};
    return fileNameOf(request.document.ReadProperty(sources->front().root, "QualifiedName").value_or(""));
}

std::string pageName(const TagRequest& request) {
    const auto* build = request.document.Building();
    return build ? build->pageName : std::string();
}

std::string pageLayout(const TagRequest& request) {
    const auto* build = request.document.Building();
    return build && build->layout ? build->layout->Name : std::string();
}

std::string templateName(const TagRequest& request) {
    const auto pageTemplate = request.document.Template();
    return pageTemplate ? pageTemplate->Name() : std::string();
}

std::string outputFileName(const TagRequest& request) { return compiledFileName(request.document); }
std::string defaultTopic(const TagRequest& request) { return request.document.DefaultTopic; }
// The page that a reader begins with: the default topic or, where that is no page of the build, the first
// one.
std::string startPage(const TagRequest& request) {
    const auto* build = request.document.Building();
    const auto& wanted = request.document.DefaultTopic;
    return !build || request.document.IsPage(wanted) ? wanted : build->firstPage;
}
std::string compileType(const TagRequest& request) { return request.document.CompileType; }
std::string help2Namespace(const TagRequest& request) { return request.document.Help2Namespace; }
std::string help2FileId(const TagRequest& request) { return request.document.Help2FileID; }

std::string language(const TagRequest& request) { return request.document.Language().tag; }
std::string languageName(const TagRequest& request) { return request.document.Language().name; }
std::string languageId(const TagRequest& request) { return request.document.Language().id; }
std::string languageNumber(const TagRequest& request) { return request.document.Language().number; }
std::string codePage(const TagRequest& request) { return request.document.Language().codePage; }
std::string direction(const TagRequest& request) {
    return request.document.Language().isRightToLeft ? "rtl" : "ltr";
}
std::string charset(const TagRequest& request) { return request.document.Language().charset; }

}  // namespace

std::string rootPathOf(const TagRequest& request) {
    std::string path;
    if (const auto* build = request.document.Building()) {
        const auto& name = build->pageName;
        for (auto depth = std::count(name.begin(), name.end(), '/'); depth > 0; --depth) path += "../";
    }
    return path;
}

void addBuildTags(TagTable& tags) {
    tags.insert({
        {"date", date},
        {"time", time},
        {"version", version},
        {"projectfile", projectFile},
        {"pagename", pageName},
        {"pagelayout", pageLayout},
        {"templatename", templateName},
        {"rootpath", rootPathOf},
        {"outputfilename", outputFileName},
        {"defaulttopic", defaultTopic},
        {"startpage", startPage},
        {"compiletype", compileType},
        {"help2namespace", help2Namespace},
        {"help2fileid", help2FileId},
        {"language", language},
        {"languagename", languageName},
        {"languageid", languageId},
        {"languagenumber", languageNumber},
        {"codepage", codePage},
        {"charset", charset},
        {"direction", direction},
    });
}

}  // namespace quillbox
