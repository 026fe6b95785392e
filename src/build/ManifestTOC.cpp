#include "build/ManifestTOC.h"

#include "base/TreeWalk.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"

namespace quillbox {

namespace {

void addRow(const ManifestEntry& entry, int indent, std::string& html) {
    html += "<table border=0 cellpadding=3 cellspacing=2 width=100% class=TableOfContents><tr>";
    for (int cell = 0; cell < indent; ++cell) html += "<td width=10></td>";
    html += "<td align=left width=30>" + entry.RuntimeEntryNumber() + ".</td><td align=left>" +
            entry.RuntimeTitle() + "</td><td align=right><span class=PageNumber>" + entry.Key +
            "</span></td></tr></table>";
}

void addEntry(const ManifestEntry& entry, int indent, std::string& html) {
    const TreeNesting level;
    addRow(entry, indent, html);
    if (entry.ChildEntries->Count() == 0) return;
    html += "\r\n";
    for (const auto& child : entry.ChildEntries->Items()) addEntry(*child, indent + 1, html);
}

}  // namespace

std::string manifestTOC(Manifest& manifest) {
    std::string html;
    for (const auto& entry : manifest.Entries()->Items()) addEntry(*entry, 0, html);
    return html;
}

}  // namespace quillbox
