#pragma once

#include <string>

namespace quillbox {

// The full name of an installed help compiler: the one in the user's settings, else the one beside the
// program that `registryKey` names, unless the usual place has one. Empty where none is found.
std::string compilerFileName(const std::string& registryKey, bool isHHC);

// The compiler of HTML Help 1.x.
std::string htmlHelpCompiler();

}  // namespace quillbox
