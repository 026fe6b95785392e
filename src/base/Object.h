#pragma once

#include <memory>
#include <string_view>
#include <utility>

namespace quillbox {

template <class T>
using Ref = std::shared_ptr<T>;

class LateBound;

// Anything that a caller can hold: reference counted, known by the name of its class.
class Object : public std::enable_shared_from_this<Object> {
  public:
    Object();
    virtual ~Object();
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    // The published name, by which members are found.
    virtual std::string_view ClassName() const = 0;

    // The same object, where its members are found by name when they are used; none for all classes of this
    // library.
    virtual LateBound* AsLateBound() { return nullptr; }

    // Runs once, when the first handle exists; a weak handle to oneself is empty in a constructor.
    virtual void Created() {}

    // How many objects of the library are alive in this process.
    static long Alive();
};

template <class T, class... Arguments>
Ref<T> make(Arguments&&... arguments) {
    auto object = std::make_shared<T>(std::forward<Arguments>(arguments)...);
    object->Created();
    return object;
}

// The handle of an object that is at work in a member of its own.
template <class T>
Ref<T> self(T* object) {
    return std::static_pointer_cast<T>(object->shared_from_this());
}

// The handle that an object keeps upward, to its parent: it does not keep its target alive.
template <class T>
class ObjectReference {
  public:
    Ref<T> Get() const { return mTarget.lock(); }
    void Set(const Ref<T>& target) { mTarget = target; }
    explicit operator bool() const { return !mTarget.expired(); }

  private:
    std::weak_ptr<T> mTarget;
};

}  // namespace quillbox
