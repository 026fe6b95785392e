#include "frame/platformtypes/PlatformTypes.h"

#include "platform/MessageBoxes.h"
#include "platform/SettingsStore.h"
#include "platform/SourceSafe.h"

namespace quillbox {

namespace {

template <class E>
std::pair<std::string, int> named(const char* name, E value) {
    return {name, static_cast<int>(value)};
}

void describeConstants(TypeLibrary& library) {
    const auto add = [&](const char* name, std::vector<std::pair<std::string, int>> values) {
        library.Add(EnumerationInfo{name, std::move(values), false});
    };
    add("HiveEnum",
        {named("HKEY_CURRENT_USER", Hive::CurrentUser), named("HKEY_LOCAL_MACHINE", Hive::LocalMachine)});
    add("MessageButtonsEnum",
        {named("bsOK", MessageButtons::bsOK), named("bsYesNoCancel", MessageButtons::bsYesNoCancel),
         named("bsYesNo", MessageButtons::bsYesNo)});
    add("MessageIconEnum",
        {named("biNone", MessageIcon::biNone), named("biQuestion", MessageIcon::biQuestion),
         named("biExclamation", MessageIcon::biExclamation),
         named("biInformation", MessageIcon::biInformation)});
    add("MessageAnswerEnum", {named("mbOK", MessageAnswer::mbOK), named("mbCancel", MessageAnswer::mbCancel),
                              named("mbYes", MessageAnswer::mbYes), named("mbNo", MessageAnswer::mbNo)});
    add("VSSItemTypeEnum", {named("VSSITEM_PROJECT", VSSITEM_PROJECT), named("VSSITEM_FILE", VSSITEM_FILE)});
    add("VSSFileStatusEnum", {named("VSSFILE_NOTCHECKEDOUT", VSSFILE_NOTCHECKEDOUT),
                              named("VSSFILE_CHECKEDOUT", VSSFILE_CHECKEDOUT),
                              named("VSSFILE_CHECKEDOUT_ME", VSSFILE_CHECKEDOUT_ME)});
    add("VSSFlagsEnum", {named("VSSFLAG_KEEPNO", VSSFLAG_KEEPNO), named("VSSFLAG_KEEPYES", VSSFLAG_KEEPYES)});
}

}  // namespace

void describePlatform(TypeLibrary& library) {
    for (auto* describe : {describeCollection,     describeXMLDocument,   describeXMLElement,
                           describeXMLAttributes,  describeXMLAttribute,  describeFileSystemObject,
                           describeHTMLDocument,   describeIHTMLElement,  describeIHTMLElementCollection,
                           describeVSSDatabase,    describeVSSItem,       describeVSSCheckouts,
                           describeVSSCheckout,    describeDocument,      describePageTemplates,
                           describePageTemplate,   describeTemplatePage,  describeLoadedPage,
                           describeNamespaceDef,   describeNamespaceDefs, describeVariableValue,
                           describeVariableValues, describeTOCDefinition, describeNodeDef,
                           describeNodeDefs,       describeElement}) {
        library.Add(describe());
    }
    describeConstants(library);
}

}  // namespace quillbox
