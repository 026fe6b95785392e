#pragma once

#include <string>

#include "base/AutomationError.h"

namespace quillbox {

// The description of the failure that a step ends in; "no failure" where there is none.
template <class Step>
std::string failureOf(Step&& step) {
    try {
        step();
    } catch (const AutomationError& error) {
        return error.Description();
    }
    return "no failure";
}

}  // namespace quillbox
