#pragma once

#include <string>

namespace quillbox {

class QbDataProvider;

// Replaces each "$$term$$" by the template's reference to that glossary item; of a term that the glossary
// does not have, the marks go and the term stays.
std::string resolveGlossaryReferences(QbDataProvider& provider, std::string text);

}  // namespace quillbox
