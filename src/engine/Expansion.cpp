#include "engine/Expansion.h"

#include <functional>

#include "base/AutomationError.h"

namespace quillbox {

void expandThrough(IDataProvider& provider, const TagPieces& pieces, const std::string& templateFile,
                   const std::string& writing, const Ref<FileSystemObject>& file, std::string& out) {
    const auto valueOf = [&](const TagPiece& tag) {
        try {
            return provider.ProvideData(tag.element, file);
        } catch (const AutomationError& error) {
            const auto place = templateFile + ", line " + std::to_string(tag.line);
            throw error.At(writing.empty() ? place : place + ", writing " + writing);
        }
    };
    expandTags(pieces, std::ref(valueOf), out);
}

}  // namespace quillbox
