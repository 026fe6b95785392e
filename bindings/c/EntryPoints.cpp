#include <dlfcn.h>

#include <filesystem>

#include "ClassFactory.h"
#include "ClassIds.h"
#include "Values.h"
#include "frame/Platform.h"
#include "frame/typelib/Held.h"
#include "quillbox/automation.h"

using namespace quillbox;

namespace {

constexpr const char* kSettings = "Software\\Merivane\\Quillbox";

std::string libraryPath() {
    Dl_info info;
    if (!dladdr(reinterpret_cast<void*>(&DllRegisterServer), &info) || !info.dli_fname) {
        throw AutomationError("The path of the library is not known");
    }
    return std::filesystem::absolute(info.dli_fname).string();
}

template <class Step>
void forEachCreatable(Step&& step) {
    for (const auto& info : TypeLibrary::Get().Classes()) {
        if (!info.published || !info.creatable) continue;
        const auto name = c::registeredName(info.name);
        step(name, c::classId(name));
    }
}

}  // namespace

std::int32_t DllGetClassObject(const char* classId, std::uint32_t version, QbObject** classObject) {
    if (!classId || !classObject) return QB_FAILED;
    *classObject = nullptr;
    if (version < 1 || version > QB_AUTOMATION_VERSION) return QB_NO_VERSION;
    return c::guarded(nullptr, [&] {
        *classObject = c::classFactory(classId);
        return *classObject ? QB_OK : QB_NO_CLASS;
    });
}

std::int32_t DllRegisterServer() {
    return c::guarded(nullptr, [] {
        auto& settings = *platform().settings;
        const auto path = libraryPath();
        // First: what serves a machine without settings does so no more as soon as there are some.
        const auto installDir = settings.Read(Hive::LocalMachine, kSettings, "InstallDir");
        settings.Write(Hive::LocalMachine, kSettings, "InstallDir",
                       installDir.empty() ? settings.DataDirectory() : installDir);
        forEachCreatable([&](const std::string& name, const std::string& id) {
            settings.Write(Hive::LocalMachine, c::idKey(name), "", id);
            settings.Write(Hive::LocalMachine, c::nameKey(id), "", name);
            settings.Write(Hive::LocalMachine, c::pathKey(id), "", path);
        });
        return QB_OK;
    });
}

std::int32_t DllUnregisterServer() {
    return c::guarded(nullptr, [] {
        auto& settings = *platform().settings;
        forEachCreatable([&](const std::string& name, const std::string& id) {
            for (const auto& key : {c::idKey(name), c::nameKey(id), c::pathKey(id)}) {
                settings.Delete(Hive::LocalMachine, key, "");
            }
        });
        return QB_OK;
    });
}

std::int32_t DllCanUnloadNow() { return Held::Count() == 0 ? QB_OK : QB_FALSE; }
