#pragma once

#include <string>
#include <string_view>

namespace quillbox::c {

// "Quillbox.Topic", the name under which a class is registered.
std::string registeredName(const std::string& className);

// The id of a class, made of its registered name: the same on every machine and in every version.
std::string classId(std::string_view registeredName);

// Where the settings of the machine hold registered classes: a key's default value each.
std::string idKey(const std::string& registeredName);
std::string nameKey(const std::string& id);
std::string pathKey(const std::string& id);

}  // namespace quillbox::c
