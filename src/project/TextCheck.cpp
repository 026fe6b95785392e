#include "project/TextCheck.h"

#include "base/AutomationError.h"
#include "base/Utf8.h"

namespace quillbox {

namespace {

class TextCheck : public XMLElement {
  public:
    explicit TextCheck(const std::string& name) : mName(name) {}

    std::string Name() const override { return mName; }
    void SetName(const std::string& name) override { mName = name; }
    std::string Text() const override { return {}; }
    void SetText(const std::string& text) override { check(text, "the text"); }
    std::optional<std::string> Find(std::string_view) const override { return {}; }
    void AddAttribute(const std::string& name, const std::string& value) override {
        check(value, "attribute '" + name + "'");
    }
    Ref<XMLAttributes> Attributes() override { return {}; }
    Ref<XMLElement> AddChild(const std::string& name, const std::string& text) override {
        auto child = make<TextCheck>(name);
        child->SetText(text);
        return child;
    }
    std::vector<Ref<XMLElement>> Children() override { return {}; }
    int Line() const override { return 0; }

  private:
    void check(const std::string& text, const std::string& where) const {
        if (findNonXml(text) == std::string_view::npos) return;
        throw AutomationError("element '" + mName + "': " + where +
                              " holds a character that a file cannot hold");
    }

    std::string mName;
};

}  // namespace

Ref<XMLElement> makeTextCheck() { return make<TextCheck>("QbProject"); }

}  // namespace quillbox
