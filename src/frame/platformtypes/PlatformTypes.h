#pragma once

#include "frame/typelib/TypeLibrary.h"

namespace quillbox {

// Describes what the object model takes from the platform and a script may hold: the classes of the ports and
// of the document engine, and their constants. None of it is part of the library's own list.
void describePlatform(TypeLibrary& library);

ClassInfo describeCollection();

ClassInfo describeXMLDocument();
ClassInfo describeXMLElement();
ClassInfo describeXMLAttributes();
ClassInfo describeXMLAttribute();

ClassInfo describeFileSystemObject();

ClassInfo describeHTMLDocument();
ClassInfo describeIHTMLElement();
ClassInfo describeIHTMLElementCollection();

ClassInfo describeVSSDatabase();
ClassInfo describeVSSItem();
ClassInfo describeVSSCheckouts();
ClassInfo describeVSSCheckout();

ClassInfo describeDocument();
ClassInfo describePageTemplates();
ClassInfo describePageTemplate();
ClassInfo describeTemplatePage();
ClassInfo describeLoadedPage();
ClassInfo describeNamespaceDef();
ClassInfo describeNamespaceDefs();
ClassInfo describeVariableValue();
ClassInfo describeVariableValues();
ClassInfo describeTOCDefinition();
ClassInfo describeNodeDef();
ClassInfo describeNodeDefs();
ClassInfo describeElement();

}  // namespace quillbox
