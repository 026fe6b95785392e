#pragma once

#include <string>

#include "base/Object.h"

namespace quillbox {

class TopicStatuses;
class TopicSectionDefs;

// The module's state: the two lists that all projects of the process share, and what was found out once.

// Made on first use from "statuscodes.xml"; a missing file leaves the list empty.
Ref<TopicStatuses> topicStatuses();
Ref<TopicSectionDefs> topicSectionDefs();

// Count the `Root`s alive; when the last one goes, the two lists go with it.
void enterRoot();
void leaveRoot();

// The configuration directory, with its trailing separator. Read afresh at every call.
std::string ConfigPath();

// A new key: GUID text of 38 characters; empty where the system cannot make one.
std::string CreateGUID();

// Takes a double quote off the beginning and one off the end, each by itself.
std::string StripQuotes(std::string& text);

// Whether the sibling product is installed; found out once in the process.
bool IsCodemarkInstalled();

// Forgets what was found out, for a host that changed the platform.
void resetModule();

}  // namespace quillbox
