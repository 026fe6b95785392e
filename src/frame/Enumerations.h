#pragma once

#include "base/Object.h"
#include "frame/typelib/Convert.h"
#include "frame/typelib/TypeLibrary.h"

namespace quillbox {

// The enumerations of the library, with the values that files and callers know.

enum CompileTypeEnum : int { CompileNone = 0, CompileHTMLHelp1 = 1, CompileHelp2 = 2 };
enum ProjectTypeEnum : int { ProjectTypeSingleFile = 0, ProjectTypeSeparateFiles = 1 };
enum RelatedTopicTypeEnum : int { rttTopic = 0, rttURL = 1 };
enum QbNodeTypeEnum : int { ntStandard = 0, ntSingleTopic = 1, ntSubContents = 2, ntCMContents = 3 };
enum QbProjectCaptionTypeEnum : int { ctDefault = 1, ctSpecific = 2 };
enum OtherFileTypeEnum : int { oftStylesheet = 0, oftOther = 1 };
enum LinkStatusTypeEnum : int { lsUnverified = 0, lsBroken = 1, lsOK = 2 };
enum LinkTypeEnum : int { ltHyperlink = 0, ltImage = 1 };
enum ManifestTypeEnum : int { mtBooklet = 0, mtBrowseSequence = 1 };
enum EntryPageBreakEnum : int { epbDefault = 0, epbAlways = 1, epbNever = 2 };
enum PageBreaksEnum : int { pbBeforeTopLevelEntries = 0, pbBeforeAllEntries = 1 };
enum PaperSizeEnum : int { psLetter = 1, psA4 = 9 };
enum EntryNumberingEnum : int { enNone = 0, enTopicTitles = 1, enTopicTitlesAndHTMLHeadings = 2 };
enum CheckOutStatusEnum : int {
    StatusCheckedIn = 0,
    StatusCheckedOutWrongDirectory = 1,
    StatusCheckedOutToOtherUser = 2,
    StatusCheckedOutToCurrentUser = 3
};
enum ProjectElementTypeEnum : int {
    ProjectElementTableOfContents = 1,
    ProjectElementManifests = 2,
    ProjectElementGlossary = 3,
    ProjectElementTasks = 4
};

// Carries the enumerations to callers; has no members.
class Enums : public Object {
  public:
    static constexpr std::string_view kClassName = "Enums";
    std::string_view ClassName() const override { return kClassName; }
};

void describeEnumerations(TypeLibrary& library);

#define QUILLBOX_ENUMERATION(E)                  \
    template <>                                  \
    struct EnumerationName<E> {                  \
        static constexpr const char* value = #E; \
    }
QUILLBOX_ENUMERATION(CompileTypeEnum);
QUILLBOX_ENUMERATION(ProjectTypeEnum);
QUILLBOX_ENUMERATION(RelatedTopicTypeEnum);
QUILLBOX_ENUMERATION(QbNodeTypeEnum);
QUILLBOX_ENUMERATION(QbProjectCaptionTypeEnum);
QUILLBOX_ENUMERATION(OtherFileTypeEnum);
QUILLBOX_ENUMERATION(LinkStatusTypeEnum);
QUILLBOX_ENUMERATION(LinkTypeEnum);
QUILLBOX_ENUMERATION(ManifestTypeEnum);
QUILLBOX_ENUMERATION(EntryPageBreakEnum);
QUILLBOX_ENUMERATION(PageBreaksEnum);
QUILLBOX_ENUMERATION(PaperSizeEnum);
QUILLBOX_ENUMERATION(EntryNumberingEnum);
QUILLBOX_ENUMERATION(CheckOutStatusEnum);
QUILLBOX_ENUMERATION(ProjectElementTypeEnum);
#undef QUILLBOX_ENUMERATION

}  // namespace quillbox
