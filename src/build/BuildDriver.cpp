#include "build/BuildDriver.h"

#include "base/Text.h"
#include "build/BuildEvents.h"
#include "build/BuildResult.h"
#include "build/CompilerChoice.h"
#include "build/ItemFamily.h"
#include "build/RelatedProject.h"
#include "content/OtherFiles.h"
#include "frame/Module.h"
#include "frame/Platform.h"
#include "platform/engine/BuildRecordName.h"
#include "project/QbProject.h"

namespace quillbox {

namespace {

Ref<BuildResult> cancelledResult() {
    auto result = make<BuildResult>();
    result->Cancelled = true;
    return result;
}

void showExclamation(const std::string& text, const std::string& title) {
    platform().messages->Show(text, title, MessageButtons::bsOK, MessageIcon::biExclamation);
}

bool tellsProblem(const std::string& log) {
    return log.find("Warning:") != std::string::npos || log.find("Error:") != std::string::npos;
}

// The files of the project that no page may replace.
Ref<Collection> keptFiles(const QbProject& project) {
    auto names = make<Collection>();
    for (const auto& file : project.OtherFiles->Items()) names->Add(file->RelativeFileName());
    return names;
}

}  // namespace

BuildDriver::BuildDriver(const Ref<QbProject>& project, BuildOrder order)
    : mProject(project), mOrder(std::move(order)) {
    if (mProject->mBuilding) throw AutomationError("A build of this project is under way already");
    mProject->mBuilding = true;
}

BuildDriver::~BuildDriver() { mProject->mBuilding = false; }

Ref<BuildResult> BuildDriver::Run(const Ref<Document>& passedDoc) {
    takeDocument(passedDoc);
    if (!prepareRelatedProject()) return cancelledResult();
    handOverProject();
    if (!prepareOutputFolder()) return cancelledResult();
    chooseCompiler();
    copyVariables();
    handOverSettings();
    auto result = generate();
    if (mRelated) mRelated->Unload();
    letGo();
    cleanUp();
    mProject->mGeneratedFiles.clear();
    return result;
}

void BuildDriver::takeDocument(const Ref<Document>& passedDoc) {
    mProject->mGeneratedFiles.clear();
    mDocument = passedDoc ? passedDoc : documentEngine().NewDocument();
    mProject->hearDocument(mDocument);
}

bool BuildDriver::prepareRelatedProject() {
    const auto file = mProject->CMPFileName();
    if (!file.empty() && mOrder.buildRelatedCMP && IsCodemarkInstalled()) {
        if (!loadRelatedProject(file)) return false;
    }
    if (mRelated) return true;
    mDocument->PageTemplates = make<PageTemplates>();
    mDocument->AuxiliaryList = make<Collection>();
    mDocument->VariableValues = make<VariableValues>();
    return true;
}

bool BuildDriver::loadRelatedProject(const std::string& file) {
    const auto path = mProject->FullPathOf(file);
    if (!newFile(path)->Exists()) {
        showExclamation("The Codemark file '" + file + "' could not be found.  Build cancelled",
                        "Codemark file not found");
        return false;
    }
    mRelated = RelatedProject::Find(mDocument);
    if (!mRelated) return true;  // as if no related project were asked for
    mRelated->Load(path);
    if (mDocument->PageTemplates->Count() > 0) return true;
    showExclamation("Could not load from Codemark project file '" + file + "'. Build cancelled",
                    "Codemark file invalid");
    return false;
}

void BuildDriver::handOverProject() {
    // A build that failed may have left the project there.
    if (projectOf(*mDocument) != mProject) mDocument->Objects->Add(mProject, kProviderName);
    if (!mOrder.pageTemplate) throw AutomationError("There is no page template for this project");
    mDocument->PageTemplates->Add(mOrder.pageTemplate, mOrder.pageTemplate->Name());
    mDocument->OutputPath = mProject->Filename->Directory();
    const auto output = mProject->OutputFileName();
    mDocument->OutputFileName = output.empty() ? output : mProject->FullPathOf(output);
    mDocument->CompileType = std::to_string(mProject->CompileType());
    mDocument->Help2Namespace = mProject->Help2Namespace();
    mDocument->Help2FileID = mProject->Help2FileID();
    mDocument->KeptFiles = keptFiles(*mProject);
}

bool BuildDriver::prepareOutputFolder() {
    const auto folder = platform().files->NewFileSystemObject();
    const auto path = newFile(mDocument->OutputFileName)->Directory();
    folder->SetDirectory(path);
    if (path.empty() || folder->DirectoryExists()) return true;
    const auto answer = platform().messages->Show(
        "The specified output path '" + path + "' doesn't exist.  Would you like to create it?",
        "Codemark path does not exist", MessageButtons::bsYesNo, MessageIcon::biQuestion);
    if (answer == MessageAnswer::mbYes) {
        folder->CreateDirectory();
        return true;
    }
    platform().messages->Show("Could not access output path, build cancelled", "", MessageButtons::bsOK,
                              MessageIcon::biInformation);
    // Not asked whether there is anything to unload: a build without a related project fails here. It is
    // meant so.
    if (!mRelated) throw AutomationError("There is no related project to unload");
    mRelated->Unload();
    letGo();
    return false;
}

void BuildDriver::chooseCompiler() {
    mDocument->Compile = mOrder.compile;
    if (!mOrder.compile || mProject->CompileType() != CompileHTMLHelp1) return;
    mDocument->CompilerFileName =
        mOrder.compilerFileName.empty() ? htmlHelpCompiler() : mOrder.compilerFileName;
}

void BuildDriver::copyVariables() {
    auto& values = *mDocument->VariableValues;
    for (const auto& variable : mProject->VariableValues->Items()) {
        ignoringFailures([&] { values.Remove(variable->Name); });
        values.Add(variable, variable->Name);
    }
}

void BuildDriver::handOverSettings() {
    mDocument->SwitchA = false;
    mDocument->SwitchB = true;
    mDocument->TemplateHost = documentEngine().Templates().SharedTemplateObject();
    mDocument->TemplateName = mOrder.pageTemplate->Name();
    mDocument->Title = mProject->Title();
    mDocument->SwitchC = true;
    mProject->IncrementingValues = make<Collection>();
    mProject->mDefaultTopicLayout = mProject->DefaultTopicLayout();
}

// Goes on until the log is clean, or somebody gives up.
Ref<BuildResult> BuildDriver::generate() {
    auto result = make<BuildResult>();
    for (bool cancel = false; !cancel;) {
        mDocument->Build();
        if (mDocument->Cancelled()) {
            result->Cancelled = true;
            break;
        }
        result->Cancelled = false;
        result->CompilerLog = mDocument->CompilerLog();
        if (!tellsProblem(result->CompilerLog)) break;
        auto document = mDocument;
        auto passed = result;
        mProject->BuildErrorsOrWarnings.emit(document, passed, cancel);
        if (passed) result = passed;
    }
    return result;
}

void BuildDriver::letGo() {
    mDocument->Objects = make<Collection>();
    mProject->hearDocument(nullptr);
}

void BuildDriver::cleanUp() {
    if (!mOrder.compile || !mOrder.cleanupAfterBuild) return;
    auto folder = mDocument->OutputRoot.empty() ? mDocument->OutputPath : mDocument->OutputRoot;
    if (!folder.ends_with('/') && !folder.ends_with('\\')) folder += platform().files->Separator();
    for (const auto& name : mProject->mGeneratedFiles) {
        if (startsWithText(name, "col_")) continue;
        ignoringFailures([&] { newFile(folder + name)->Delete(); });
    }
    ignoringFailures([&] { newFile(folder + std::string(kBuildRecordName))->Delete(); });
}

}  // namespace quillbox
