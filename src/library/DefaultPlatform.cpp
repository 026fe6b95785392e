// Puts the library together: which adapter stands behind which port.

#include "adapters/xml/PugiXml.h"
#include "frame/Platform.h"

namespace quillbox {

Platform makeDefaultPlatform() {
    Platform platform;
    platform.xml = makePugiXmlParser();
    return platform;
}

}  // namespace quillbox
