#include "build/PageBreaks.h"

#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "build/QbDataProvider.h"

namespace quillbox {

namespace {

Ref<ManifestEntry> lastEntryChild(Ref<ManifestEntry> entry) {
    while (const int count = entry->ChildEntries->Count()) entry = entry->ChildEntries->Item(count);
    return entry;
}

// Keeps two breaks from following each other.
bool endsWithBreak(const BookletOutline& outline, const ManifestEntry& entry) {
    const auto before = outline.EntryBefore(entry);
    if (!before) return false;
    const auto last = lastEntryChild(before);
    return last->RuntimePageBreak || !last->Topic();
}

bool isBreakWanted(const Manifest& manifest, const ManifestEntry& entry) {
    if (entry.PageBreakBefore() == epbNever) return false;
    if (entry.PageBreakBefore() == epbAlways) return true;
    const auto breaks = manifest.BookletProperties->PageBreaks();
    return breaks == pbBeforeAllEntries || (breaks == pbBeforeTopLevelEntries && !entry.ParentEntry());
}

}  // namespace

std::string pageBreakBefore(QbDataProvider& provider, const ManifestEntry& entry) {
    const auto manifest = provider.CurrentManifest();
    if (!manifest || !isBreakWanted(*manifest, entry)) return {};
    const auto answering = provider.Answer();
    if (endsWithBreak(provider.Memory().OutlineOf(manifest), entry)) return {};
    return R"(<p style="page-break-after: always">&nbsp;</p>)";
}

}  // namespace quillbox
