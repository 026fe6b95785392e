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

    // The same failure with the file in front. Only the innermost file is told: a failure in a topic's file
    // is not told as one of the project file too. What a handler of the host raised stays as it was raised.
    AutomationError At(const std::string& file) const {
        if (mHasFile || mCause) return *this;
        auto placed = behind(file);
        placed.mHasFile = true;
        return placed;
    }
    // The same failure with a place inside the file in front. Only the innermost place is told.
    AutomationError Inside(const std::string& place) const {
        return mHasFile || mHasPlace || mCause ? *this : behind(place);
    }

  private:
    AutomationError behind(const std::string& place) const {
        AutomationError placed(place + ": " + mDescription, mNumber, mCause);
        placed.mHasPlace = true;
        return placed;
    }

    int mNumber;
    std::string mDescription;
    std::exception_ptr mCause;
    bool mHasFile = false;
    bool mHasPlace = false;
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

// Runs a step and names the file in the failure that comes out of it.
template <class Step>
auto at(const std::string& file, Step&& step) {
    try {
        return step();
    } catch (const AutomationError& error) {
        throw error.At(file);
    }
}

// Runs a step and names the element or item in the failure that comes out of it. `place` gives the name.
template <class Place, class Step>
auto inside(Place&& place, Step&& step) {
    try {
        return step();
    } catch (const AutomationError& error) {
        throw error.Inside(place());
    }
}

}  // namespace quillbox
