#include <set>

#include "bindings/CallFromC.h"
#include "frame/typelib/TypeLibrary.h"
#include "support/TestPlatform.h"

namespace quillbox {
namespace {

class EntryPoints : public testing::Test {
  protected:
    std::string machine(const std::string& key, const std::string& name = "") {
        return mPlatform.settings->Read(Hive::LocalMachine, key, name);
    }
    TestPlatform mPlatform;
};

TEST_F(EntryPoints, give_each_class_an_id_that_never_changes) {
    EXPECT_EQ(c::classId("Quillbox.Topic"), "{68F4CEF0-5223-85CA-ACB6-6D9B7BEA9250}");
    std::set<std::string> ids;
    for (const auto& info : TypeLibrary::Get().Classes())
        ids.insert(c::classId(c::registeredName(info.name)));
    EXPECT_EQ(ids.size(), TypeLibrary::Get().Classes().size());
}

TEST_F(EntryPoints, register_the_creatable_classes_with_id_and_path) {
    EXPECT_EQ(DllRegisterServer(), QB_OK);
    for (const auto& info : TypeLibrary::Get().Classes()) {
        const auto name = "Quillbox." + info.name;
        const auto id = machine("Software\\Classes\\" + name + "\\CLSID");
        EXPECT_EQ(!id.empty(), info.published && info.creatable) << name;
        if (id.empty()) continue;
        EXPECT_EQ(id, c::classId(name));
        EXPECT_EQ(machine("Software\\Classes\\CLSID\\" + id + "\\ProgID"), name);
        EXPECT_NE(machine("Software\\Classes\\CLSID\\" + id + "\\InprocServer32").find("/libquillbox.so"),
                  std::string::npos);
    }
    EXPECT_EQ(DllUnregisterServer(), QB_OK);
    EXPECT_EQ(machine("Software\\Classes\\Quillbox.Topic\\CLSID"), "");
    EXPECT_EQ(DllUnregisterServer(), QB_OK);
}

TEST_F(EntryPoints, write_the_installation_folder_where_none_is_set) {
    const auto* key = TestPlatform::kProductKey;
    EXPECT_EQ(DllRegisterServer(), QB_OK);
    EXPECT_EQ(machine(key, "InstallDir"), "/install/");
    mPlatform.settings->Delete(Hive::LocalMachine, key, "InstallDir");
    mPlatform.settings->dataDirectory = "/data";
    EXPECT_EQ(DllRegisterServer(), QB_OK);
    EXPECT_EQ(machine(key, "InstallDir"), "/data");
}

TEST_F(EntryPoints, hand_out_class_objects_by_id_in_any_case) {
    QbObject* factory = nullptr;
    EXPECT_EQ(DllGetClassObject("{NO-SUCH-ID}", 1, &factory), QB_NO_CLASS);
    EXPECT_EQ(factory, nullptr);
    EXPECT_EQ(DllGetClassObject(c::classId("Quillbox.HeaderId").c_str(), 1, &factory), QB_NO_CLASS);
    const auto id = c::classId("Quillbox.Topic");
    EXPECT_EQ(DllGetClassObject(id.c_str(), 0, &factory), QB_NO_VERSION);
    EXPECT_EQ(DllGetClassObject(id.c_str(), 99, &factory), QB_NO_VERSION);
    EXPECT_EQ(DllGetClassObject(nullptr, 1, &factory), QB_FAILED);
    EXPECT_EQ(DllGetClassObject(id.c_str(), 1, nullptr), QB_FAILED);
    ASSERT_EQ(DllGetClassObject(lower(id).c_str(), 1, &factory), QB_OK);
    CObject object(factory);
    EXPECT_STREQ(object.Description().members[0].name, "CreateInstance");
    EXPECT_STREQ(CObject(object.Call("CreateInstance")).Description().name, "Topic");
}

TEST_F(EntryPoints, say_whether_an_object_is_held) {
    EXPECT_EQ(DllCanUnloadNow(), QB_OK);
    {
        auto project = CObject::Create("QbProject");
        EXPECT_EQ(DllCanUnloadNow(), QB_FALSE);
        auto topic = CObject(project.Call("NewTopic"));
        topic.Call("NewTopicSection", "BodyText", "<p>x</p>");
    }
    EXPECT_EQ(DllCanUnloadNow(), QB_OK);
}

}  // namespace
}  // namespace quillbox
