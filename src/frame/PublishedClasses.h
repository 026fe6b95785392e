#pragma once

#include "frame/typelib/TypeLibrary.h"

namespace quillbox {

// The descriptions of the published classes, each beside its class.
ClassInfo describeRoot();
ClassInfo describeQbNamespaceProvider();
ClassInfo describeTopic();
ClassInfo describeTopics();
ClassInfo describeQbProject();
ClassInfo describeQbDataProvider();
ClassInfo describeRelatedTopic();
ClassInfo describeRelatedTopics();
ClassInfo describeQbNode();
ClassInfo describeQbNodes();
ClassInfo describeTopicCategory();
ClassInfo describeTopicCategories();
ClassInfo describeOtherFile();
ClassInfo describeOtherFiles();
ClassInfo describeTopicStatus();
ClassInfo describeTopicStatuses();
ClassInfo describeLinkInfo();
ClassInfo describeLinkInfos();
ClassInfo describeTopicSection();
ClassInfo describeTopicSections();
ClassInfo describeTopicSectionDef();
ClassInfo describeTopicSectionDefs();
ClassInfo describeDummyWizardHost();
ClassInfo describeGlossaryItem();
ClassInfo describeGlossaryItems();
ClassInfo describeBuildResult();
ClassInfo describeManifest();
ClassInfo describeManifests();
ClassInfo describeManifestEntry();
ClassInfo describeManifestEntries();
ClassInfo describeBookletProperties();
ClassInfo describeEnums();
ClassInfo describeTask();
ClassInfo describeTasks();
ClassInfo describeBookletLinkInfo();
ClassInfo describeHeaderIds();
ClassInfo describeHeaderId();

// Internal to the library, but handed to templates and plug-ins, which ask for members by name.
ClassInfo describeKeyword();
ClassInfo describeRelatedTopicCategory();

}  // namespace quillbox
