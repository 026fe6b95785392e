#include "ClassIds.h"

#include <cstdint>
#include <cstdio>

#include "frame/typelib/TypeLibrary.h"

namespace quillbox::c {

namespace {

constexpr std::string_view kClasses = "Software\\Classes\\";

std::uint64_t hash(std::string_view text, std::uint64_t value) {
    for (const unsigned char byte : text) value = (value ^ byte) * 0x100000001b3u;
    return value;
}

}  // namespace

std::string registeredName(const std::string& className) {
    return std::string(TypeLibrary::kName) + "." + className;
}

std::string classId(std::string_view registeredName) {
    auto high = hash(registeredName, 0xcbf29ce484222325u);
    auto low = hash(registeredName, high ^ 0x9e3779b97f4a7c15u);
    high = (high & ~0xf000ull) | 0x8000u;  // version 8: made by a rule of its own
    low = (low & ~(3ull << 62)) | (2ull << 62);
    char text[39];
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%04X-%012llX}", static_cast<unsigned>(high >> 32),
                  static_cast<unsigned>(high >> 16) & 0xffffu, static_cast<unsigned>(high) & 0xffffu,
                  static_cast<unsigned>(low >> 48), static_cast<unsigned long long>(low & 0xffffffffffffu));
    return text;
}

std::string idKey(const std::string& registeredName) {
    return std::string(kClasses) + registeredName + "\\CLSID";
}
std::string nameKey(const std::string& id) { return std::string(kClasses) + "CLSID\\" + id + "\\ProgID"; }
std::string pathKey(const std::string& id) {
    return std::string(kClasses) + "CLSID\\" + id + "\\InprocServer32";
}

}  // namespace quillbox::c
