#include "guide/Guide.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "base/Text.h"

namespace quillbox {

namespace {

constexpr std::string_view kFence = "```";

std::string readWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("no file " + path);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

// The words behind the fence: the kind, options at the end, and what lies between is the name.
GuideBlock blockOf(const std::string& info, std::size_t line) {
    GuideBlock block;
    block.line = line;
    auto words = split(info, " ");
    if (words.empty()) return block;
    block.kind = words.front();
    words.erase(words.begin());
    while (!words.empty() && words.back().find('=') != std::string::npos) {
        const auto sign = words.back().find('=');
        block.options[words.back().substr(0, sign)] = words.back().substr(sign + 1);
        words.pop_back();
    }
    block.name = join(words, " ");
    return block;
}

std::string templateXml(const std::string& page, const std::string& supports) {
    return "<PageTemplate Name=\"Example\" Supports=\"" + supports +
           "\">\n  <Namespace Name=\"CM.Quillbox\"/>\n  " + page + "\n</PageTemplate>\n";
}

// The page of an example: "on" names the kind of item, "once" a page of its own, "input" a compiler input.
std::string pageXml(const std::string& on) {
    if (on == "once") return "<Page File=\"page.html\"/>";
    if (on == "input") return "<Page File=\"page.html\" CompileType=\"1\"/>";
    if (on == "input2") return "<Page File=\"page.html\" CompileType=\"2\"/>";
    const auto kind = on.empty() ? "topic" : on;
    const bool named = kind == "topic" || kind == "qbproject";
    return "<Page File=\"page.html\" ItemType=\"cm.quillbox:" + kind + "\"" +
           (named ? "/>" : " Output=\"%%incrementingvalue:Name=page%%.html\"/>");
}

std::string option(const GuideBlock& block, const std::string& name, const std::string& otherwise = "") {
    const auto found = block.options.find(name);
    return found == block.options.end() ? otherwise : found->second;
}

bool isOutcome(const std::string& kind) { return kind == "result" || kind == "output" || kind == "failure"; }

}  // namespace

Guide::Guide(std::string file) : mFile(std::move(file)), mText(readWhole(mFile)) {
    std::istringstream lines(mText);
    std::size_t number = 0;
    GuideBlock open;
    bool inside = false;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (!line.starts_with(kFence)) {
            if (inside) open.text += line + "\n";
        } else if (inside) {
            add(open);
            inside = false;
        } else {
            open = blockOf(line.substr(kFence.size()), number);
            inside = true;
        }
    }
}

void Guide::begin(const GuideBlock& block) {
    GuideExample example;
    example.line = block.line;
    if (block.kind == "template") {
        const auto on = option(block, "on");
        const bool isBooklet = on == "manifest" || on == "manifestentry";
        example.name = "Example";
        example.files["template.xml"] = templateXml(pageXml(on), isBooklet ? "p" : "");
        example.files["page.html"] = withoutLastLineEnd(block.text);
        const bool named = on.empty() || on == "topic";
        const bool single = on == "once" || on.starts_with("input");
        example.page = option(block, "of", named ? "Soil" : single ? "page" : "1") + ".html";
    } else {
        example.name = block.name.substr(0, block.name.find('/'));
    }
    mExamples.push_back(std::move(example));
}

void Guide::add(const GuideBlock& block) {
    const auto slash = block.name.find('/');
    const auto folder = block.name.substr(0, slash);
    const bool another = mExamples.empty() || mExamples.back().name != folder;
    if (block.kind == "template" || (block.kind == "file" && another)) begin(block);
    if (mExamples.empty()) return;
    auto& example = mExamples.back();
    if (block.kind == "file") example.files[block.name.substr(slash + 1)] = block.text;
    const auto& description = example.files["template.xml"];
    example.isBooklet = description.find("Supports=\"p\"") != std::string::npos;
    if (block.kind == "scrap") example.files["scraps/" + block.name + ".html"] = block.text;
    if (block.kind == "project") {
        for (const auto& line : split(withoutLastLineEnd(block.text), "\n")) example.settings.push_back(line);
    }
    if (isOutcome(block.kind)) example.outcomes.push_back(block);
}

std::string Guide::WrittenText() const {
    std::string text;
    for (const auto& example : mExamples) {
        for (const auto& [name, content] : example.files) text += content + "\n";
    }
    return text;
}

void Guide::Rewrite(const std::map<std::size_t, std::string>& texts) const {
    std::istringstream lines(mText);
    std::ofstream file(mFile, std::ios::binary);
    std::size_t number = 0;
    bool leaving = false;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (leaving && !line.starts_with(kFence)) continue;
        leaving = false;
        file << line << "\n";
        if (const auto found = texts.find(number); found != texts.end()) {
            file << found->second << (found->second.empty() ? "" : "\n");
            leaving = true;
        }
    }
}

std::string withoutLastLineEnd(std::string text) {
    while (text.ends_with('\n')) text.pop_back();
    return text;
}

}  // namespace quillbox
