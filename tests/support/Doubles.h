#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "platform/Automation.h"
#include "platform/MessageBoxes.h"
#include "platform/SettingsStore.h"
#include "platform/System.h"
#include "platform/WebRequest.h"
#include "platform/engine/Document.h"

namespace quillbox {

// Stand-ins for the ports: what the outside world says is set by the test, what was asked of it is recorded.

// A clock that stands still, one user, and GUIDs that count.
class FixedSystem : public System {
  public:
    Date now = *Date::From({2026, 3, 14, 15, 9, 26, 0});
    std::string user = "Writer";
    bool makesGuids = true;

    Date Now() override { return now; }
    std::string UserName() override { return user; }
    std::string NewGuid() override {
        if (!makesGuids) return {};
        const auto number = std::to_string(++mCount);
        return "{00000000-0000-0000-0000-" + std::string(12 - number.size(), '0') + number + "}";
    }

  private:
    long mCount = 0;
};

// Answers boxes from a list; a box that the test did not expect fails.
class ScriptedBoxes : public MessageBoxes {
  public:
    struct Box {
        std::string text, title;
        MessageButtons buttons;
        MessageIcon icon;
    };
    std::vector<Box> shown;
    std::deque<MessageAnswer> answers;

    MessageAnswer Show(const std::string& text, const std::string& title, MessageButtons buttons,
                       MessageIcon icon) override {
        shown.push_back({text, title, buttons, icon});
        if (answers.empty()) throw AutomationError("No answer is ready for the box '" + text + "'");
        const auto answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

class MemorySettings : public SettingsStore {
  public:
    std::string Read(Hive hive, const std::string& key, const std::string& valueName) override {
        const auto found = mValues.find({hive, key, valueName});
        return found == mValues.end() ? "" : found->second;
    }
    void Write(Hive hive, const std::string& key, const std::string& valueName,
               const std::string& value) override {
        mValues[{hive, key, valueName}] = value;
    }
    void Delete(Hive hive, const std::string& key, const std::string& valueName) override {
        mValues.erase({hive, key, valueName});
    }
    std::string dataDirectory;
    std::string DataDirectory() override { return dataDirectory; }

  private:
    std::map<std::tuple<Hive, std::string, std::string>, std::string> mValues;
};

// Knows the classes that the test registers.
class TestClasses : public ClassRegistry {
  public:
    std::map<std::string, std::function<Ref<Object>()>> classes;
    int asked = 0;

    Ref<Object> CreateObject(const std::string& className) override {
        ++asked;
        const auto found = classes.find(className);
        if (found == classes.end()) throw AutomationError("The class '" + className + "' is not registered");
        return found->second();
    }
};

// Tells the error that is set, and records what was fetched.
class ScriptedWeb : public WebRequest {
  public:
    std::string error;
    std::vector<std::string> fetched;

    std::string Fetch(const std::string& url) override {
        fetched.push_back(url);
        return error;
    }
};

// A template that is known by what lists ask of it.
class ListedTemplate : public PageTemplate {
  public:
    ListedTemplate(std::string name, std::string supports, const std::vector<std::string>& namespaces)
        : mName(std::move(name)), mSupports(std::move(supports)) {
        for (const auto& one : namespaces) mNamespaces->Add(one);
    }
    std::string Name() const override { return mName; }
    std::string Path() const override { return {}; }
    std::string Supports() const override { return mSupports; }
    Ref<Collection> Pages() override { return make<Collection>(); }
    Ref<quillbox::NamespaceDefs> NamespaceDefs() override { return make<quillbox::NamespaceDefs>(); }
    Ref<Collection> Namespaces() override { return mNamespaces; }

  private:
    std::string mName, mSupports;
    Ref<Collection> mNamespaces = make<Collection>();
};

// An engine that has templates to list and builds nothing.
class ListingEngine : public DocumentEngine, public TemplateService {
  public:
    Ref<quillbox::PageTemplates> templates = make<quillbox::PageTemplates>();

    void AddTemplate(const std::string& name, const std::string& supports,
                     const std::vector<std::string>& namespaces) {
        templates->Add(make<ListedTemplate>(name, supports, namespaces), name);
    }

    Ref<Document> NewDocument() override { throw AutomationError("This engine builds nothing"); }
    TemplateService& Templates() override { return *this; }

    Ref<quillbox::PageTemplates> PageTemplates() override { return templates; }
    void AddFolder(const std::string&) override {}
    Ref<Object> SharedTemplateObject() override { return {}; }
    Ref<NamespaceDefs> Namespaces(const std::string& family) override {
        throw AutomationError("The family '" + family + "' is not known");
    }
    void RegisterFamily(const Family&) override {}
};

}  // namespace quillbox
