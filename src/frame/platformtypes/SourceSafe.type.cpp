#include "platform/SourceSafe.h"

#include "frame/Platform.h"
#include "frame/platformtypes/PlatformTypes.h"
#include "frame/typelib/Describe.h"

namespace quillbox {

ClassInfo describeVSSDatabase() {
    return Describe<VSSDatabase>("VSSDatabase", "A session with a source-control database.")
        .unpublished()
        .creatable([] {
            const auto client = platform().sourceSafe;
            if (auto database = client ? client->NewDatabase() : nullptr) return database;
            throw AutomationError("The source-control client is not installed");
        })
        .method("Open", &VSSDatabase::Open, {{"SrcSafeIni", ""}, {"Username", ""}, {"Password", ""}},
                "Logs in; an empty ini file means the default database.")
        .method("VSSItem", &VSSDatabase::VSSItem, {"Spec", {"Deleted", false}},
                "Looks an item up; fails for an unknown spec.")
        .done();
}

ClassInfo describeVSSItem() {
    return Describe<VSSItem>("VSSItem", "A file or a folder of a source-control database.")
        .unpublished()
        .read("Spec", &VSSItem::Spec, "Full name of the item in the database.")
        .read("Name", &VSSItem::Name, "Name of the item.")
        .read("Type", &VSSItem::Type, "VSSITEM_PROJECT or VSSITEM_FILE.")
        .write("Deleted", &VSSItem::SetDeleted, "Marks the item as deleted.")
        .read("IsCheckedOut", &VSSItem::IsCheckedOut, "One of the VSSFILE values.")
        .read("Checkouts", &VSSItem::Checkouts, "The check-outs of the item.")
        .method("IsDifferent", &VSSItem::IsDifferent, {"Local"},
                "Whether a local file differs from the database.")
        .method("Get", &VSSItem::Get, {"Local", {"iFlags", 0}}, "Gets the item to a local path.")
        .method("Checkout", &VSSItem::Checkout, {{"Comment", ""}, {"Local", ""}, {"iFlags", 0}},
                "Checks the item out.")
        .method("Checkin", &VSSItem::Checkin, {{"Comment", ""}, {"Local", ""}, {"iFlags", 0}},
                "Checks the item in.")
        .method("UndoCheckout", &VSSItem::UndoCheckout, {{"Local", ""}, {"iFlags", 0}},
                "Gives a check-out up.")
        .method("Add", &VSSItem::Add, {"Local", {"Comment", ""}, {"iFlags", 0}},
                "Adds a local file and returns its item.")
        .method("NewSubproject", &VSSItem::NewSubproject, {"Name", {"Comment", ""}},
                "Makes a folder and returns its item.")
        .done();
}

ClassInfo describeVSSCheckouts() {
    return Describe<VSSCheckouts>("VSSCheckouts", "The check-outs of an item.")
        .unpublished()
        .read("Count", &VSSCheckouts::Count, "Number of check-outs.")
        .read("Item", &VSSCheckouts::Item, {"Index"}, "The check-out at a position, from 1.")
        .isDefault()
        .done();
}

ClassInfo describeVSSCheckout() {
    return Describe<VSSCheckout>("VSSCheckout", "One check-out of an item.")
        .unpublished()
        .read("Username", &VSSCheckout::Username, "Who holds the item.")
        .read("LocalSpec", &VSSCheckout::LocalSpec,
              "The folder it is checked out to, without a final separator.")
        .done();
}

}  // namespace quillbox
