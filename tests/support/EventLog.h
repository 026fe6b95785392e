#pragma once

#include <string>
#include <utility>
#include <vector>

#include "frame/typelib/TypeLibrary.h"

namespace quillbox {

// Writes down every published event of an object, in the order in which they are raised: the name, and what
// tells the arguments apart. "TopicChanged(Intro)".
class EventLog {
  public:
    explicit EventLog(const Ref<Object>& object) {
        for (const auto& event : TypeLibrary::Get().ClassOf(*object).events) {
            mConnections.push_back(event.connect(*object, [this, name = event.name](Arguments& arguments) {
                std::string line = name;
                for (std::size_t i = 0; i < arguments.size(); ++i) {
                    line += (i == 0 ? "(" : ", ") + labelOf(arguments[i]);
                }
                mLines.push_back(arguments.empty() ? line : line + ")");
            }));
        }
    }
    ~EventLog() {
        for (const auto& disconnect : mConnections) disconnect();
    }
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;

    // What was raised since the last call.
    std::vector<std::string> Take() { return std::exchange(mLines, {}); }
    // How often an event of that name was raised since then.
    int Count(const std::string& name) const {
        int count = 0;
        for (const auto& line : mLines) count += line.substr(0, line.find('(')) == name;
        return count;
    }
    std::size_t Events() const { return mConnections.size(); }

  private:
    static std::string labelOf(const Value& value) {
        const auto* object = value.If<Ref<Object>>();
        if (!object) return toText(value);
        if (!*object) return "none";
        const auto& info = TypeLibrary::Get().ClassOf(**object);
        for (const auto* name : {"Name", "Term", "CaptionText", "Title", "LocalSpec", "Data", "Category"}) {
            if (!info.FindMember(name)) continue;
            const auto label = toText(getMember(**object, name));
            if (!label.empty()) return label;
        }
        return std::string((*object)->ClassName());
    }

    std::vector<Disconnect> mConnections;
    std::vector<std::string> mLines;
};

}  // namespace quillbox
