// A library of somebody else that brings a related project to a build: the classes "Codemark.Root" and
// "Codemark.Loader", reached through nothing but the entry points and the automation header.
//
// The project file says in lines what the loader does with it, and beside it, in a file with ".log" behind
// its name, stands what was called:
//
//     template NAME   puts the template of that name into the document
//     exclude NAME    puts the name on the list of exclusions
//     member NAME     lets the plug-in know a member of that name; one that begins with "Fixed" has no
//     IncludeFlag fail            fails

#include <dlfcn.h>
#include <strings.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "quillbox/automation.h"

namespace {

QbValue emptyValue() { return QbValue{QB_EMPTY, {}}; }

QbValue textValue(const std::string& text) {
    auto value = emptyValue();
    value.kind = QB_TEXT;
    value.as.text = {static_cast<char*>(std::malloc(text.size() + 1)), text.size()};
    std::memcpy(value.as.text.bytes, text.c_str(), text.size() + 1);
    return value;
}

QbValue integerValue(int number) {
    auto value = emptyValue();
    value.kind = QB_INTEGER;
    value.as.integer = number;
    return value;
}

QbValue objectValue(QbObject* object) {
    auto value = emptyValue();
    if (!object) return value;
    object->table->retain(object);
    value.kind = QB_OBJECT;
    value.as.object = object;
    return value;
}

std::string textOf(const QbValue& value) {
    return value.kind == QB_TEXT ? std::string(value.as.text.bytes, value.as.text.size) : std::string();
}

using Arguments = std::vector<QbValue>;

// An object whose members are functions by name.
class Thing : public QbObject {
  public:
    using Member = std::function<QbValue(const Arguments&, std::int32_t access)>;

    explicit Thing(std::string className);
    virtual ~Thing() = default;

    std::map<std::string, Member> members;

    void Retain() { ++mReferences; }
    void Release() {
        if (--mReferences == 0) delete this;
    }
    const QbClass* Describe();
    std::int32_t Invoke(const char* name, std::int32_t access, QbValue* arguments, std::size_t count,
                        QbValue* value, QbError* error);

  private:
    std::string mClassName;
    std::vector<QbMember> mDescribed;
    QbClass mClass{};
    long mReferences = 1;
};

Thing& thing(QbObject* self) { return *static_cast<Thing*>(self); }

const QbObjectTable kTable = {
    QB_AUTOMATION_VERSION,
    [](QbObject* self) { thing(self).Retain(); },
    [](QbObject* self) { thing(self).Release(); },
    [](QbObject* self) { return thing(self).Describe(); },
    [](QbObject* self, std::int32_t slot, std::int32_t access, QbValue* arguments, std::size_t count,
       QbValue* value, QbError* error) {
        const auto* described = thing(self).Describe();
        const char* name = slot >= 0 && static_cast<std::size_t>(slot) < described->memberCount
                               ? described->members[slot].name
                               : "";
        return thing(self).Invoke(name, access, arguments, count, value, error);
    },
    [](QbObject* self, const char* name, std::int32_t access, QbValue* arguments, std::size_t count,
       QbValue* value,
       QbError* error) { return thing(self).Invoke(name, access, arguments, count, value, error); },
    [](QbObject*, std::int32_t, QbObject*, std::int32_t*, QbError*) -> std::int32_t { return QB_FAILED; },
    [](QbObject*, std::int32_t) -> std::int32_t { return QB_FALSE; }};

Thing::Thing(std::string className) : QbObject{&kTable}, mClassName(std::move(className)) {}

const QbClass* Thing::Describe() {
    mDescribed.clear();
    for (const auto& [name, member] : members) {
        mDescribed.push_back({name.c_str(), QB_METHOD, "Variant", "", 0, nullptr});
    }
    mClass = {mClassName.c_str(), "", 1, -1, mDescribed.size(), mDescribed.data(), 0, nullptr};
    return &mClass;
}

std::int32_t Thing::Invoke(const char* name, std::int32_t access, QbValue* arguments, std::size_t count,
                           QbValue* value, QbError* error) {
    try {
        for (const auto& [known, member] : members) {
            if (strcasecmp(known.c_str(), name) != 0) continue;
            Arguments given(arguments, arguments + count);
            if (access == QB_WRITE || access == QB_WRITE_OBJECT) given.push_back(*value);
            auto result = member(given, access);
            if (value && (access == QB_READ || access == QB_CALL)) {
                *value = result;
            } else {
                qbClear(&result);
            }
            return QB_OK;
        }
        throw std::runtime_error("no member " + std::string(name));
    } catch (const std::exception& failure) {
        if (error) *error = {1000, strdup(failure.what())};
        return QB_FAILED;
    }
}

// What another library's object answers; fails as it does.
QbValue ask(QbObject* object, const char* name, std::int32_t access, std::vector<QbValue> arguments = {}) {
    auto value = emptyValue();
    QbError error{0, nullptr};
    const auto status =
        object->table->invokeByName(object, name, access, arguments.data(), arguments.size(), &value, &error);
    for (auto& argument : arguments) qbClear(&argument);
    if (status >= 0) return value;
    std::string text = error.description ? error.description : "";
    std::free(error.description);
    throw std::runtime_error(text);
}

// A list of texts or objects, with the members that lists have.
class List : public Thing {
  public:
    List() : Thing("List") {
        members["Count"] = [this](const Arguments&, std::int32_t) {
            return integerValue(static_cast<int>(texts.size() + objects.size()));
        };
        members["Item"] = [this](const Arguments& arguments, std::int32_t) {
            const auto index = static_cast<std::size_t>(arguments.at(0).as.integer - 1);
            return objects.empty() ? textValue(texts.at(index)) : objectValue(objects.at(index));
        };
        members["Remove"] = [this](const Arguments& arguments, std::int32_t) {
            texts.erase(texts.begin() + (arguments.at(0).as.integer - 1));
            return emptyValue();
        };
    }
    ~List() override {
        for (auto* object : objects) object->Release();
    }
    std::vector<std::string> texts;
    std::vector<Thing*> objects;
};

// Something of the related project that can be left out.
class Member : public Thing {
  public:
    explicit Member(std::string memberName) : Thing("Component"), name(std::move(memberName)) {
        if (!name.starts_with("Fixed")) flag("IncludeFlag", included);
        flag("ExcludeFlag", excluded);
    }
    std::string name;
    bool included = true, excluded = false;

  private:
    void flag(const char* flagName, bool& place) {
        members[flagName] = [&place](const Arguments& arguments, std::int32_t access) {
            if (access == QB_WRITE) place = arguments.back().as.boolean != 0;
            auto value = emptyValue();
            value.kind = QB_BOOLEAN;
            value.as.boolean = place ? 1 : 0;
            return value;
        };
    }
};

// One related project, from Load to Unload.
class Session {
  public:
    explicit Session(const std::string& file) : mLog(file + ".log", std::ios::app) {}
    ~Session() {
        for (auto* member : known) member->Release();
        if (exclusions) exclusions->Release();
    }
    void Note(const std::string& line) { mLog << line << std::endl; }

    std::vector<Member*> known;
    List* exclusions = new List();

  private:
    std::ofstream mLog;
};
std::unique_ptr<Session> session;

std::string classOf(QbObject* object) {
    const auto* described = object->table->describe(object);
    return described ? described->name : "?";
}

Thing* newPlugIn() {
    auto* plugIn = new Thing("PlugIn");
    plugIn->members["AttachHost"] = [](const Arguments& arguments, std::int32_t) {
        auto* host = arguments.at(0).as.object;
        auto document = ask(host, "Document", QB_READ);
        session->Note("AttachHost " + classOf(host) + " of a " +
                      (document.kind == QB_OBJECT ? classOf(document.as.object) : "nothing"));
        qbClear(&document);
        return emptyValue();
    };
    plugIn->members["Prepare"] = [](const Arguments&, std::int32_t) {
        session->Note("Prepare");
        return emptyValue();
    };
    plugIn->members["FindExcluded"] = [](const Arguments& arguments, std::int32_t) {
        const auto name = textOf(arguments.at(0));
        session->Note("FindExcluded " + name);
        for (auto* member : session->known) {
            if (member->name == name) return objectValue(member);
        }
        return emptyValue();
    };
    return plugIn;
}

// The class id that the machine's settings have for a class of the library that asks.
std::string registeredId(const std::string& className) {
    std::ifstream settings(std::string(std::getenv("QUILLBOX_REGISTRY")) + "/local_machine.ini");
    bool inSection = false;
    for (std::string line; std::getline(settings, line);) {
        if (line.starts_with('[')) inSection = line == "[Software\\Classes\\" + className + "\\CLSID]";
        if (inSection && line.starts_with('=')) return line.substr(1);
    }
    throw std::runtime_error("The class " + className + " is not registered");
}

QbObject* create(const std::string& className) {
    auto* entryPoint =
        reinterpret_cast<decltype(&DllGetClassObject)>(dlsym(RTLD_DEFAULT, "DllGetClassObject"));
    QbObject* factory = nullptr;
    if (!entryPoint || entryPoint(registeredId(className).c_str(), QB_AUTOMATION_VERSION, &factory) != QB_OK)
        throw std::runtime_error("The class " + className + " is not to be had");
    auto made = ask(factory, "CreateInstance", QB_CALL);
    factory->table->release(factory);
    return made.as.object;
}

void addTemplate(QbObject* document, const std::string& name) {
    auto* root = create("Quillbox.Root");
    auto templates = ask(root, "QuillboxPageTemplates", QB_CALL);
    auto found = ask(templates.as.object, "Item", QB_READ, {textValue(name)});
    auto list = ask(document, "PageTemplates", QB_READ);
    ask(list.as.object, "Add", QB_CALL, {found, textValue(name)});
    qbClear(&list);
    qbClear(&templates);
    root->table->release(root);
}

void addObject(QbObject* document, QbObject* object, const char* key) {
    auto objects = ask(document, "Objects", QB_READ);
    ask(objects.as.object, "Add", QB_CALL, {objectValue(object), textValue(key)});
    qbClear(&objects);
}

void obey(QbObject* document, const std::string& line) {
    std::istringstream words(line);
    std::string order, rest;
    words >> order;
    std::getline(words >> std::ws, rest);
    if (order == "template") {
        addTemplate(document, rest);
    } else if (order == "exclude") {
        session->exclusions->texts.push_back(rest);
    } else if (order == "member") {
        session->known.push_back(new Member(rest));
    } else if (order == "fail") {
        throw std::runtime_error("The related project is damaged");
    }
}

QbValue load(const Arguments& arguments, std::int32_t) {
    auto* document = arguments.at(0).as.object;
    const auto file = textOf(arguments.at(1));
    session = std::make_unique<Session>(file);
    session->Note("Load " + file.substr(file.rfind('/') + 1));
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) obey(document, line);
    auto* plugIns = new List();
    plugIns->objects.push_back(newPlugIn());
    addObject(document, plugIns, "PlugIns");
    addObject(document, session->exclusions, "NamespaceExclusions");
    plugIns->Release();
    return emptyValue();
}

QbValue unload(const Arguments& arguments, std::int32_t) {
    session->Note("Unload " + classOf(arguments.at(0).as.object));
    for (const auto& name : session->exclusions->texts) session->Note("left on the list: " + name);
    for (const auto* member : session->known) {
        session->Note(member->name + ": IncludeFlag " + (member->included ? "True" : "False") +
                      ", ExcludeFlag " + (member->excluded ? "True" : "False"));
    }
    session.reset();
    return emptyValue();
}

Thing* newLoader() {
    auto* loader = new Thing("Loader");
    loader->members["Load"] = load;
    loader->members["Unload"] = unload;
    return loader;
}

}  // namespace

std::int32_t DllGetClassObject(const char* classId, std::uint32_t version, QbObject** classObject) {
    if (version != QB_AUTOMATION_VERSION) return QB_NO_VERSION;
    const bool isLoader = std::strcmp(classId, "{LOADER}") == 0;
    if (!isLoader && std::strcmp(classId, "{ROOT}") != 0) return QB_NO_CLASS;
    auto* factory = new Thing("Factory");
    factory->members["CreateInstance"] = [isLoader](const Arguments&, std::int32_t) {
        auto* made = isLoader ? newLoader() : new Thing("Root");
        auto value = objectValue(made);
        made->Release();
        return value;
    };
    *classObject = factory;
    return QB_OK;
}
