#pragma once

#include <exception>
#include <string>
#include <utility>

namespace quillbox {

// The one failure that leaves a member of the library.
class AutomationError : public std::exception {
  public:
    static constexpr int kNumber = 65535;

    // The cause is what a handler of the host raised, where the failure comes from there.
    explicit AutomationError(std::string description, int number = kNumber,
                             std::exception_ptr cause = nullptr)
        : mNumber(number), mDescription(std::move(description)), mCause(std::move(cause)) {}

    int Number() const { return mNumber; }
    const std::string& Description() const { return mDescription; }
    const std::exception_ptr& Cause() const { return mCause; }
    const char* what() const noexcept override { return mDescription.c_str(); }

    // The same failure with the file or element in front; only the first place told is kept.
    AutomationError At(const std::string& place) const {
        if (mPlaced) return *this;
        AutomationError placed(place + ": " + mDescription, mNumber, mCause);
        placed.mPlaced = true;
        return placed;
    }

  private:
    int mNumber;
    std::string mDescription;
    std::exception_ptr mCause;
    bool mPlaced = false;
};

// Runs a step whose failures are meant to be passed over. Every swallowed failure goes through here.
template <class Step>
bool ignoringFailures(Step&& step) {
    try {
        step();
        return true;
    } catch (const AutomationError&) {
        return false;
    }
}

// Runs a step and names the file or element in the failure that comes out of it.
template <class Step>
auto at(const std::string& place, Step&& step) {
    try {
        return step();
    } catch (const AutomationError& error) {
        throw error.At(place);
    }
}

}  // namespace quillbox
