#include "frame/typelib/Held.h"

#include <atomic>

namespace quillbox {

namespace {
std::atomic<long> held{0};
}

Held::Held(Ref<Object> object) : mObject(std::move(object)) { ++held; }
Held::~Held() { --held; }
long Held::Count() { return held; }

}  // namespace quillbox
