#include "build/Filter.h"

#include <unordered_map>

#include "base/Text.h"
#include "frame/typelib/TypeLibrary.h"

namespace quillbox {

namespace {

using Clause = void (*)(Filter&, const std::string& value);

void access(Filter& filter, const std::string& value) {
    filter.CheckAccess = true;
    for (const auto& part : split(lower(value), "+")) {
        if (part == "public") filter.IncludePublic = true;
        if (part == "private") filter.IncludePrivate = true;
    }
}

const std::unordered_map<std::string, Clause>& clauses() {
    static const std::unordered_map<std::string, Clause> table = {
        {"access", access},
        {"scope", access},
        {"forpagegeneration",
         [](Filter& f, const std::string& v) { f.ForPageGeneration = sameText(v, "true"); }},
        {"includeall", [](Filter& f, const std::string&) { f.IncludeAll = true; }},
        // Spelled so in templates. It is meant so.
        {"ingorenamespaceincludeflag",
         [](Filter& f, const std::string&) { f.IgnoreNamespaceIncludeFlag = true; }},
        {"type", [](Filter& f, const std::string& v) { f.TypeID = lower(v); }},
    };
    return table;
}

}  // namespace

void Filter::Load(const std::string& source) {
    for (const auto& piece : split(source, ",")) {
        const auto sign = piece.find('=');
        if (sign == std::string::npos) continue;
        const auto clause = clauses().find(lower(piece.substr(0, sign)));
        if (clause != clauses().end()) clause->second(*this, piece.substr(sign + 1));
    }
}

std::vector<std::string> Filter::ClauseNames() {
    std::vector<std::string> names;
    for (const auto& [name, clause] : clauses()) names.push_back(name);
    return names;
}

bool Filter::IncludeMember(const Ref<Object>& member) const {
    if (IncludeAll) return true;
    if (!member) throw AutomationError("A member is needed here");
    const auto flag = [&](const char* name) { return toBoolean(getMember(*member, name)); };
    // Read and not used. It is meant so.
    ignoringFailures([&] { flag("ExcludeFlag"); });
    if (member->ClassName() == "Component") {
        return flag("IncludeFlag") ||
               (ForPageGeneration && (flag("ContainsPublicUDTs") || flag("ContainsPublicEnumerations")));
    }
    const auto document = Document();
    if (!document) throw AutomationError("The filter has no document");
    return document->IsMemberIncluded(toText(getMember(*member, "Name")));
}

}  // namespace quillbox
