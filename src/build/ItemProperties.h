#pragma once

#include <string>
#include <vector>

namespace quillbox {

class QbDataProvider;

// A simple value of the current item, by a name in any case. Names that are not known go to the common
// provider.
std::string itemProperty(QbDataProvider& provider, const std::string& name);

// The names that are known here, in lower case.
std::vector<std::string> itemPropertyNames();

}  // namespace quillbox
