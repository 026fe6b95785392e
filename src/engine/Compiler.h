#pragma once

#include <functional>
#include <string>

#include "platform/engine/Document.h"

namespace quillbox {

// The name, without a folder, that the compiled help gets: that of the output file, else the title's.
std::string compiledFileName(const Document& document);

// The compiler to run for a compile type: the one that was given, else one on the path. Fails where there is
// none.
std::string findCompiler(const std::string& given, int compileType);

struct CompileJob {
    std::string compiler;
    // Where the inputs lie on disk, and the one to hand over.
    std::string folder, inputFile;
    // What the compiler makes in that folder, and where it belongs.
    std::string compiledName, target;
    std::function<bool()> goOn;
};

// Fails, before any work, where the compiled file could not be put in its place.
void checkTarget(const CompileJob& job);

// Runs the compiler. What it wrote comes back, with one "Error:" line at the end where it made no file; the
// file that was there before is then in its place again.
std::string compile(const CompileJob& job);

}  // namespace quillbox
