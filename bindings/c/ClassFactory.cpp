#include "ClassFactory.h"

#include "ClassIds.h"
#include "Export.h"
#include "base/Text.h"
#include "frame/typelib/Describe.h"

namespace quillbox::c {

namespace {

// Makes the objects of one class.
class ClassFactory : public Object {
  public:
    static constexpr std::string_view kClassName = "ClassFactory";
    std::string_view ClassName() const override { return kClassName; }
    explicit ClassFactory(const ClassInfo& info) : mInfo(info) {}
    Ref<Object> CreateInstance() const { return mInfo.create(); }

  private:
    const ClassInfo& mInfo;
};

// In a library of its own: callers meet the class through DllGetClassObject alone.
const ClassInfo& describeClassFactory() {
    static const TypeLibrary library = [] {
        TypeLibrary made;
        made.Add(Describe<ClassFactory>("ClassFactory", "Makes the objects of one class.")
                     .method("CreateInstance", &ClassFactory::CreateInstance, "A new object.")
                     .done());
        return made;
    }();
    return library.Classes().front();
}

}  // namespace

QbObject* classFactory(std::string_view id) {
    for (const auto& info : TypeLibrary::Get().Classes()) {
        if (!info.published || !info.creatable || !sameText(classId(registeredName(info.name)), id)) continue;
        return exportObject(make<ClassFactory>(info), describeClassFactory());
    }
    return nullptr;
}

}  // namespace quillbox::c
