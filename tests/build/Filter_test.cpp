#include "build/Filter.h"

#include <gmock/gmock.h>

#include "build/BuildTest.h"
#include "build/LateBoundDouble.h"

namespace quillbox {
namespace {

Filter loaded(const std::string& source) {
    Filter filter;
    filter.Load(source);
    return filter;
}

TEST(Filter, TakesAccessAndType) {
    const auto filter = loaded("access=public+private,type=all");
    EXPECT_TRUE(filter.CheckAccess);
    EXPECT_TRUE(filter.IncludePublic);
    EXPECT_TRUE(filter.IncludePrivate);
    EXPECT_EQ(filter.TypeID, "all");
}

TEST(Filter, TakesScopeAsAccessInAnyCase) {
    const auto filter = loaded("scope=PUBLIC");
    EXPECT_TRUE(filter.CheckAccess);
    EXPECT_TRUE(filter.IncludePublic);
    EXPECT_FALSE(filter.IncludePrivate);
}

TEST(Filter, KeepsTheTypeInLowerCase) { EXPECT_EQ(loaded("type=NotBlank").TypeID, "notblank"); }

TEST(Filter, IncludesAllWhateverTheValueSays) { EXPECT_TRUE(loaded("includeall=false").IncludeAll); }

TEST(Filter, TakesPageGenerationFromTheValue) {
    EXPECT_TRUE(loaded("ForPageGeneration=TRUE").ForPageGeneration);
    EXPECT_FALSE(loaded("ForPageGeneration=yes").ForPageGeneration);
}

TEST(Filter, KnowsTheMisspeltClauseOnly) {
    EXPECT_TRUE(loaded("ingorenamespaceincludeflag=False").IgnoreNamespaceIncludeFlag);
    EXPECT_FALSE(loaded("ignorenamespaceincludeflag=True").IgnoreNamespaceIncludeFlag);
}

TEST(Filter, PassesOverWhatMakesNoSense) {
    for (const auto* source : {"", "access", "nonsense=1", ",,,", "type"}) {
        const auto filter = loaded(source);
        EXPECT_FALSE(filter.CheckAccess) << source;
        EXPECT_FALSE(filter.IncludeAll) << source;
        EXPECT_EQ(filter.TypeID, "") << source;
    }
}

class FilterMembers : public ProviderTest {
  protected:
    bool includes(const std::string& source, const Ref<Object>& member) const {
        auto filter = loaded(source);
        filter.SetDocument(document);
        return filter.IncludeMember(member);
    }
    Ref<LateBoundDouble> component(bool included, bool publicTypes) const {
        auto member = make<LateBoundDouble>("Component");
        member->values = {{"IncludeFlag", included},
                          {"ContainsPublicUDTs", publicTypes},
                          {"ContainsPublicEnumerations", false}};
        return member;
    }
};

TEST_F(FilterMembers, IncludeEverythingWhereAllIsAskedFor) {
    EXPECT_TRUE(includes("includeall=1", component(false, false)));
}

TEST_F(FilterMembers, AskTheDocumentForOtherMembers) {
    auto member = make<LateBoundDouble>("Method");
    member->values["Name"] = "Open";
    EXPECT_TRUE(includes("", member));
    member->values["Name"] = "Excluded";
    EXPECT_FALSE(includes("", member));
}

TEST_F(FilterMembers, KeepAComponentForItsPublicTypesOnPagesOnly) {
    EXPECT_TRUE(includes("", component(true, false)));
    EXPECT_FALSE(includes("", component(false, true)));
    EXPECT_TRUE(includes("forpagegeneration=true", component(false, true)));
    EXPECT_FALSE(includes("forpagegeneration=true", component(false, false)));
}

}  // namespace
}  // namespace quillbox
