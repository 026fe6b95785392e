#include "ClassRegistry.h"

#include <dlfcn.h>

#include "ClassIds.h"
#include "Values.h"
#include "frame/Platform.h"

namespace quillbox {

namespace {

using GetClassObject = decltype(&DllGetClassObject);

std::string machineValue(const std::string& key) {
    return platform().settings->Read(Hive::LocalMachine, key, "");
}

GetClassObject entryPointOf(const std::string& className, const std::string& path) {
    const auto fail = [&] {
        const char* reason = dlerror();
        throw AutomationError("The library of class '" + className +
                              "' does not load: " + (reason ? reason : path));
    };
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) fail();
    void* entryPoint = dlsym(library, "DllGetClassObject");
    if (!entryPoint) fail();
    return reinterpret_cast<GetClassObject>(entryPoint);
}

class RegisteredClasses : public ClassRegistry {
  public:
    Ref<Object> CreateObject(const std::string& className) override {
        const auto id = machineValue(c::idKey(className));
        const auto path = id.empty() ? id : machineValue(c::pathKey(id));
        if (path.empty()) throw AutomationError("No class '" + className + "' is registered on this machine");
        QbObject* factory = nullptr;
        const auto result = entryPointOf(className, path)(id.c_str(), QB_AUTOMATION_VERSION, &factory);
        if (result != QB_OK || !factory) {
            throw AutomationError("The library of class '" + className + "' does not offer it");
        }
        QbValue instance{QB_EMPTY, {}};
        QbError error{0, nullptr};
        const auto status =
            factory->table->invokeByName(factory, "CreateInstance", QB_CALL, nullptr, 0, &instance, &error);
        factory->table->release(factory);
        if (status < 0) c::throwFailure(error);
        const auto made = c::taken(instance);
        if (auto object = toObject(made)) return object;
        throw AutomationError("The library of class '" + className + "' made no object");
    }
};

}  // namespace

std::shared_ptr<ClassRegistry> makeClassRegistry() { return std::make_shared<RegisteredClasses>(); }

}  // namespace quillbox
