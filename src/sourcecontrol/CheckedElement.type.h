#pragma once

#include <string>
#include <string_view>

#include "base/AutomationError.h"
#include "frame/typelib/Describe.h"
#include "sourcecontrol/CheckedElement.h"

namespace quillbox {

// The rows that every element under source control has, each by its name, as the classes list them in
// different orders. `Result` is what a check-in and an undo are described to give: Boolean or Value.
template <class Result, class T>
void checkedMember(Describe<T>& d, std::string_view name, const char* checkOutComment) {
    using Text = const std::string&;
    if (name == "LocalSpec") {
        d.read("LocalSpec", &T::LocalSpec, "Returns the local filename of this item.");
    } else if (name == "SSSpec") {
        d.read("SSSpec", &T::SSSpec, "Returns the source control spec of this item.");
    } else if (name == "CheckOut") {
        d.method(
            "CheckOut", [](T& e, Text comment) { return e.CheckedElement::CheckOut(comment); },
            {{"Comment", checkOutComment}}, "Checks this item out. False where it is not checked in.");
    } else if (name == "CheckIn") {
        d.method(
            "CheckIn",
            [](T& e, Text comment, bool keep) -> Result { return e.CheckedElement::CheckIn(comment, keep); },
            {{"Comment", kCheckInComment}, {"KeepCheckedOut", true}},
            "Checks this item in. An unchanged item is not stored as a new version.");
    } else if (name == "UndoCheckout") {
        d.method(
            "UndoCheckout", [](T& e) -> Result { return e.CheckedElement::UndoCheckout(); },
            "Undoes the check-out of this item.");
    } else if (name == "GetLatestVersion" || name == "GetLatestSSVersion") {
        d.method(
            name == "GetLatestVersion" ? "GetLatestVersion" : "GetLatestSSVersion",
            [](T& e) { return e.CheckedElement::GetLatestVersion(); },
            "Renews the local file. False while anybody has this item checked out.");
    } else if (name == "IsCheckedOut") {
        d.read(
            "IsCheckedOut", [](T& e) { return e.IsCheckedOut(); }, "True if this item is checked out here.");
    } else if (name == "CheckOutStatus") {
        d.read(
            "CheckOutStatus", [](T& e) { return e.CheckOutStatus(); },
            "The state of this item; StatusCheckedIn for one that source control does not know.");
    } else if (name == "ReadOnly") {
        d.read(
            "ReadOnly", [](T& e) { return e.ReadOnly(); }, "True if this item may not be edited now.");
    } else if (name == "IsDifferent") {
        d.read(
            "IsDifferent", [](T& e) { return e.IsDifferent(); },
            "True if the local file differs from source control; False where that cannot be told.");
    } else if (name == "CheckedOutToUser") {
        d.read(
            "CheckedOutToUser", [](T& e) { return e.CheckedOutToUser(); },
            "Who has this item checked out; empty for nobody.");
    } else {
        throw AutomationError("'" + std::string(name) + "' is no member of elements under source control");
    }
}

template <class Result, class T>
Describe<T>& checkedMembers(Describe<T>& d, std::initializer_list<std::string_view> names,
                            const char* checkOutComment = "Checked out by Quillbox") {
    for (const auto name : names) checkedMember<Result>(d, name, checkOutComment);
    return d;
}

}  // namespace quillbox
