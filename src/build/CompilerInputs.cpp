#include "build/CompilerInputs.h"

#include <unordered_map>

#include "base/Text.h"
#include "content/OtherFiles.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox {

namespace {

constexpr const char* kLineEnd = "\r\n";

using Content = std::string (*)(const ContentStream& stream, const std::string& scrapName);

std::string xmlText(std::string text) {
    text = replaceAll(text, "&", "&amp;");
    text = replaceAll(text, "<", "&lt;");
    return replaceAll(text, "\"", "&quot;");
}

std::string files(const ContentStream& stream, const std::string&) {
    const bool help2 = isHelp2(stream.document);
    std::string lines;
    const auto add = [&](const std::string& name) {
        lines += help2 ? "<File Url = \"" + xmlText(name) + "\"/>" : name;
        lines += kLineEnd;
    };
    for (const auto& name : stream.writtenFiles) add(name);
    for (const auto& file : stream.project.OtherFiles->Items()) {
        add(replaceAll(file->RelativeFileName(), "\\", "/"));
    }
    return lines;
}

// A line for each context id of each topic in the help file.
template <class Line>
std::string contextIds(const ContentStream& stream, const Line& line) {
    std::string lines;
    if (isHelp2(stream.document)) return lines;
    for (const auto& topic : stream.project.Topics->Items()) {
        const auto ids = topic->HelpContextIDs();
        if (!topic->IncludeInHelpFile() || trimBlanks(ids).empty()) continue;
        for (const auto& id : split(ids, ",")) lines += line(*topic, id) + kLineEnd;
    }
    return lines;
}

std::string map(const ContentStream& stream, const std::string&) {
    return contextIds(stream, [](const Topic& topic, const std::string& id) {
        return "#define IDH_" + topic.Key + "_" + id + " " + id;
    });
}

std::string alias(const ContentStream& stream, const std::string&) {
    return contextIds(stream, [](const Topic& topic, const std::string& id) {
        return "IDH_" + topic.Key + "_" + id + " = " + topic.Name() + ".html";
    });
}

// The contents of related projects; the document writes them itself.
std::string embeddedContents(const ContentStream& stream, const std::string&) {
    const auto own = stream.document.Template();
    for (const auto& other : stream.document.PageTemplates->Items()) {
        if (other != own) stream.document.StreamTOC(stream.outputFile, other);
    }
    return {};
}

const std::unordered_map<std::string, Content>& contents() {
    static const std::unordered_map<std::string, Content> table = {
        {"index", indexEntries},
        {"files", files},
        {"map", map},
        {"alias", alias},
        // Known in this spelling alone. It is meant so.
        {"EmbeddedTOC", embeddedContents},
    };
    return table;
}

Content contentOf(const std::string& name) {
    for (const auto& spelling : {lower(name), name}) {
        const auto found = contents().find(spelling);
        if (found != contents().end()) return found->second;
    }
    return nullptr;
}

}  // namespace

bool isHelp2(const Document& document) {
    return leadingNumber(document.CompileType) == static_cast<double>(CompileHelp2);
}

std::vector<std::string> contentNames() {
    std::vector<std::string> names;
    for (const auto& [name, content] : contents()) names.push_back(name);
    return names;
}

void streamContent(const ContentStream& stream, const std::string& contentType) {
    if (!stream.outputFile) throw AutomationError("There is no file to stream content to");
    const auto colon = contentType.find(':');
    const auto content = contentOf(contentType.substr(0, colon));
    if (!content) return;
    const auto text =
        content(stream, colon == std::string::npos ? std::string() : contentType.substr(colon + 1));
    if (!text.empty()) stream.outputFile->Write(text);
}

}  // namespace quillbox
