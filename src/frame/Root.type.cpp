#include "frame/Root.h"
#include "frame/PublishedClasses.h"
#include "frame/typelib/Describe.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/TopicSectionDefs.h"
#include "topics/TopicStatuses.h"

namespace quillbox {

ClassInfo describeRoot() {
    return Describe<Root>("Root", "Where a caller starts. The shared lists live as long as a Root does.")
        .creatable()
        .read("TopicStatuses", &Root::TopicStatuses, "Returns the collection of Topic Statuses.")
        .read("TopicSectionDefs", &Root::TopicSectionDefs,
              "Returns the collection of TopicSectionDefs (Topic Section Definition objects).")
        .method("ahConfigPath", &Root::ahConfigPath,
                "Returns the full path to the Quillbox configuration directory.")
        .method("QuillboxPageTemplates", &Root::QuillboxPageTemplates, {{"SupportsFlag", Value("")}},
                "Returns a collection of PageTemplate objects containing only those PageTemplates that are "
                "specifically "
                "related to Quillbox (not Codemark templates).")
        .read("SSDatabase", &Root::SSDatabase, "The source control database of this machine; empty for none.")
        .read("SSUser", &Root::SSUser, "The user that logs in to source control; empty for none.")
        .read("SSPassword", &Root::SSPassword, "The password that goes with the user.")
        .read("VSSDatabase", &Root::VSSDatabase,
              "A new session with source control; none where the login fails.")
        .method("IsSourceSafeAvailable", &Root::IsSourceSafeAvailable,
                "True where the source control client is installed on this machine.")
        .method("BeforeDeleteTopic", &Root::BeforeDeleteTopic, {"T", "Cancel", "NoPrompt"},
                "Calling this routine does some pre-delete checks on the Topic being deleted.  The user is "
                "prompted to "
                "delete related Table of Contents Nodes and any links from other Topics to this Topic are "
                "deleted.")
        .method("IsCodemarkInstalled", &Root::IsCodemarkInstalled,
                "True where the sibling product Codemark is installed on this machine.")
        .method(
            "NewProjectDialog", &Root::NewProjectDialog,
            "Displays the New Project dialog.  Returns a new QbProject if the user did not cancel the New "
            "Project Dialog.")
        .done();
}

}  // namespace quillbox
