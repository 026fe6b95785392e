#include "frame/Enumerations.h"
#include "frame/PublishedClasses.h"
#include "frame/platformtypes/PlatformTypes.h"
#include "frame/typelib/Describe.h"

namespace quillbox {

// The published order.
void describeLibrary(TypeLibrary& library) {
    for (const auto describe : {describeRoot,
                                describeQbNamespaceProvider,
                                describeTopic,
                                describeTopics,
                                describeQbProject,
                                describeQbDataProvider,
                                describeRelatedTopic,
                                describeRelatedTopics,
                                describeQbNode,
                                describeQbNodes,
                                describeTopicCategory,
                                describeTopicCategories,
                                describeOtherFile,
                                describeOtherFiles,
                                describeTopicStatus,
                                describeTopicStatuses,
                                describeLinkInfo,
                                describeLinkInfos,
                                describeTopicSection,
                                describeTopicSections,
                                describeTopicSectionDef,
                                describeTopicSectionDefs,
                                describeDummyWizardHost,
                                describeGlossaryItem,
                                describeGlossaryItems,
                                describeBuildResult,
                                describeManifest,
                                describeManifests,
                                describeManifestEntry,
                                describeManifestEntries,
                                describeBookletProperties,
                                describeEnums,
                                describeTask,
                                describeTasks,
                                describeBookletLinkInfo,
                                describeHeaderIds,
                                describeHeaderId,
                                describeKeyword,
                                describeRelatedTopicCategory}) {
        library.Add(describe());
    }
    describeEnumerations(library);
    describePlatform(library);
}

ClassInfo describeEnums() {
    return Describe<Enums>("Enums", "Carries the enumerations of the library; has no members.")
        .creatable()
        .done();
}

}  // namespace quillbox
