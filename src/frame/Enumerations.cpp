#include "frame/Enumerations.h"

namespace quillbox {

void describeEnumerations(TypeLibrary& library) {
    library.Add(EnumerationInfo{"CompileTypeEnum",
                                {{"CompileNone", CompileNone},
                                 {"CompileHTMLHelp1", CompileHTMLHelp1},
                                 {"CompileHelp2", CompileHelp2}}});
    library.Add(EnumerationInfo{"ProjectTypeEnum",
                                {{"ProjectTypeSingleFile", ProjectTypeSingleFile},
                                 {"ProjectTypeSeparateFiles", ProjectTypeSeparateFiles}}});
    library.Add(EnumerationInfo{"RelatedTopicTypeEnum", {{"rttTopic", rttTopic}, {"rttURL", rttURL}}});
    library.Add(EnumerationInfo{"QbNodeTypeEnum",
                                {{"ntStandard", ntStandard},
                                 {"ntSingleTopic", ntSingleTopic},
                                 {"ntSubContents", ntSubContents},
                                 {"ntCMContents", ntCMContents}}});
    library.Add(
        EnumerationInfo{"QbProjectCaptionTypeEnum", {{"ctDefault", ctDefault}, {"ctSpecific", ctSpecific}}});
    library.Add(
        EnumerationInfo{"OtherFileTypeEnum", {{"oftStylesheet", oftStylesheet}, {"oftOther", oftOther}}});
    library.Add(EnumerationInfo{"LinkStatusTypeEnum",
                                {{"lsUnverified", lsUnverified}, {"lsBroken", lsBroken}, {"lsOK", lsOK}}});
    library.Add(EnumerationInfo{"LinkTypeEnum", {{"ltHyperlink", ltHyperlink}, {"ltImage", ltImage}}});
    library.Add(EnumerationInfo{"ManifestTypeEnum",
                                {{"mtBooklet", mtBooklet}, {"mtBrowseSequence", mtBrowseSequence}}});
    library.Add(
        EnumerationInfo{"EntryPageBreakEnum",
                        {{"epbDefault", epbDefault}, {"epbAlways", epbAlways}, {"epbNever", epbNever}}});
    library.Add(EnumerationInfo{
        "PageBreaksEnum",
        {{"pbBeforeTopLevelEntries", pbBeforeTopLevelEntries}, {"pbBeforeAllEntries", pbBeforeAllEntries}}});
    library.Add(EnumerationInfo{"PaperSizeEnum", {{"psLetter", psLetter}, {"psA4", psA4}}});
    library.Add(EnumerationInfo{"EntryNumberingEnum",
                                {{"enNone", enNone},
                                 {"enTopicTitles", enTopicTitles},
                                 {"enTopicTitlesAndHTMLHeadings", enTopicTitlesAndHTMLHeadings}}});
    library.Add(EnumerationInfo{"CheckOutStatusEnum",
                                {{"StatusCheckedIn", StatusCheckedIn},
                                 {"StatusCheckedOutWrongDirectory", StatusCheckedOutWrongDirectory},
                                 {"StatusCheckedOutToOtherUser", StatusCheckedOutToOtherUser},
                                 {"StatusCheckedOutToCurrentUser", StatusCheckedOutToCurrentUser}}});
    library.Add(EnumerationInfo{"ProjectElementTypeEnum",
                                {{"ProjectElementTableOfContents", ProjectElementTableOfContents},
                                 {"ProjectElementManifests", ProjectElementManifests},
                                 {"ProjectElementGlossary", ProjectElementGlossary},
                                 {"ProjectElementTasks", ProjectElementTasks}}});
}

}  // namespace quillbox
