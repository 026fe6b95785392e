#include "platform/engine/Contents.h"

#include <atomic>

namespace quillbox {

std::string NodeDef::NewKey() {
    static std::atomic<unsigned long> made{0};
    return "node" + std::to_string(++made);
}

}  // namespace quillbox
