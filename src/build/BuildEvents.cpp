// What a project does about the events of the document that is being built.

#include "build/BuildEvents.h"

#include "base/Text.h"
#include "build/ItemAs.h"
#include "project/QbProject.h"
#include "topics/Topic.h"

namespace quillbox {

bool isIntermediate(const std::string& filename) {
    if (endsWithText(filename, ".html")) return true;
    const auto kind = lower(filename.substr(filename.size() - std::min<std::size_t>(filename.size(), 3)));
    if (kind == "hhc" || kind == "hhk" || kind == "hhp") return true;
    return (kind == "hxc" || kind == "hxt" || kind == "hxk") && !filename.starts_with("COL_");
}

bool isInLayout(const TemplatePage& layout, const Ref<Object>& item, const std::string& defaultLayout) {
    const auto topic = itemAs<Topic>(item);
    if (!topic) return true;
    const auto own = topic->LayoutName();
    return sameText(layout.Name, own.empty() ? defaultLayout : own + ".html");
}

void QbProject::hearDocument(const Ref<Document>& document) {
    for (auto& connection : mDocumentConnections) connection.disconnect();
    if (!document) return;
    ObjectReference<QbProject> project;
    project.Set(self(this));
    mDocumentConnections[0] = document->ContentMade.connect([project](const std::string& filename) {
        const auto me = project.Get();
        if (me && isIntermediate(filename)) me->mGeneratedFiles.push_back(filename);
    });
    mDocumentConnections[1] = document->BeforeOutputNamespacePage.connect(
        [project](const Ref<TemplatePage>& layout, const Ref<NamespaceDef>&, const Ref<Object>& item,
                  bool& dontGenerate) {
            const auto me = project.Get();
            if (me && layout && !isInLayout(*layout, item, me->mDefaultTopicLayout)) dontGenerate = true;
        });
}

}  // namespace quillbox
