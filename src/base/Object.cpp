#include "base/Object.h"

#include <atomic>

namespace quillbox {

namespace {
std::atomic<long> alive{0};
}

Object::Object() { ++alive; }
Object::~Object() { --alive; }
long Object::Alive() { return alive; }

}  // namespace quillbox
