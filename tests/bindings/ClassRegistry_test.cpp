#include "bindings/c/ClassRegistry.h"

#include <dlfcn.h>

#include "bindings/CallFromC.h"
#include "frame/typelib/LateBound.h"
#include "support/TestPlatform.h"
#include "topics/Topic.h"

namespace quillbox {
namespace {

class Registry : public testing::Test {
  protected:
    Registry() { registerClass("Sibling.Counter", "{COUNTER}", QUILLBOX_SIBLING); }

    void registerClass(const std::string& name, const std::string& id, const std::string& path) {
        mPlatform.settings->Write(Hive::LocalMachine, "Software\\Classes\\" + name + "\\CLSID", "", id);
        mPlatform.settings->Write(Hive::LocalMachine, "Software\\Classes\\CLSID\\" + id + "\\InprocServer32",
                                  "", path);
    }
    std::string failure(const std::string& name) {
        try {
            registry->CreateObject(name);
        } catch (const AutomationError& error) {
            return error.Description();
        }
        return "";
    }
    static int alive() {
        void* library = dlopen(QUILLBOX_SIBLING, RTLD_NOW | RTLD_NOLOAD);
        return *static_cast<std::int32_t*>(dlsym(library, "siblingAlive"));
    }

    TestPlatform mPlatform;
    std::shared_ptr<ClassRegistry> registry = makeClassRegistry();
};

TEST_F(Registry, creates_an_object_of_another_library_and_lets_it_go) {
    auto counter = registry->CreateObject("Sibling.Counter");
    EXPECT_EQ(alive(), 1);
    putMember(*counter, "count", 5);
    Arguments two{2};
    EXPECT_EQ(toInteger(callMember(*counter, "Add", two)), 7);
    EXPECT_EQ(toInteger(getMember(*counter, "Count")), 7);
    counter.reset();
    EXPECT_EQ(alive(), 0);
}

TEST_F(Registry, gives_by_reference_arguments_back) {
    auto counter = registry->CreateObject("Sibling.Counter");
    Arguments number{21};
    callMember(*counter, "Double", number);
    EXPECT_EQ(toInteger(number[0]), 42);
}

TEST_F(Registry, tells_the_failures_of_the_other_library) {
    auto counter = registry->CreateObject("Sibling.Counter");
    Arguments none;
    try {
        callMember(*counter, "Fail", none);
        FAIL();
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Number(), 77);
        EXPECT_EQ(error.Description(), "The sibling fails");
    }
    EXPECT_THROW(getMember(*counter, "Nothing"), AutomationError);
    EXPECT_THROW(putMember(*counter, "Count", "many"), AutomationError);
}

TEST_F(Registry, passes_objects_both_ways_as_themselves) {
    auto counter = registry->CreateObject("Sibling.Counter");
    auto other = registry->CreateObject("Sibling.Counter");
    Ref<Object> topic = make<Topic>();
    putMember(*counter, "Friend", topic);
    EXPECT_EQ(toObject(getMember(*counter, "Friend")), topic);
    putMember(*counter, "Friend", other);
    EXPECT_EQ(toObject(getMember(*counter, "Friend")), other);
    for (const auto& none : {Value(Ref<Object>()), Value::None()}) {
        putMember(*counter, "Friend", topic);
        putMember(*counter, "Friend", none);
        EXPECT_EQ(toObject(getMember(*counter, "Friend")), nullptr);
    }
    EXPECT_EQ(topic.use_count(), 1);
}

TEST_F(Registry, knows_the_methods_of_the_other_library) {
    auto counter = std::dynamic_pointer_cast<LateBound>(registry->CreateObject("Sibling.Counter"));
    ASSERT_TRUE(counter);
    EXPECT_TRUE(counter->HasMethod("add"));
    EXPECT_FALSE(counter->HasMethod("Count"));
}

TEST_F(Registry, creates_the_classes_of_this_library_too) {
    ASSERT_EQ(DllRegisterServer(), QB_OK);
    const auto object = registry->CreateObject("Quillbox.Topic");
    EXPECT_TRUE(std::dynamic_pointer_cast<Topic>(object));
}

TEST_F(Registry, says_why_an_object_could_not_be_created) {
    EXPECT_EQ(failure("Codemark.Root"), "No class 'Codemark.Root' is registered on this machine");
    registerClass("Gone.Class", "{GONE}", "/no/such/library.so");
    EXPECT_NE(failure("Gone.Class").find("The library of class 'Gone.Class' does not load"),
              std::string::npos);
    registerClass("Text.Class", "{TEXT}", QUILLBOX_SOURCE_DIR "/LICENSE");
    EXPECT_NE(failure("Text.Class").find("does not load"), std::string::npos);
    registerClass("Sibling.Other", "{OTHER}", QUILLBOX_SIBLING);
    EXPECT_EQ(failure("Sibling.Other"), "The library of class 'Sibling.Other' does not offer it");
    registerClass("Plain.Library", "{PLAIN}", "libm.so.6");
    EXPECT_NE(failure("Plain.Library").find("does not load"), std::string::npos);
}

}  // namespace
}  // namespace quillbox
