#include "platform/foundation/ClassRegistry.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

class RegisteredSample : public NSObject { };

namespace {

REGISTER_CLASS(RegisteredSample);

std::vector<std::string>& log()
{
    static std::vector<std::string> lines;
    return lines;
}

} // namespace

TEST(ClassRegistryTest, MakesAnObjectByTheNameOfItsClass)
{
    const auto object = ClassRegistry::makeObject(QStringLiteral("RegisteredSample"));
    ASSERT_TRUE(object);
    EXPECT_TRUE(object->isMemberOfClass<RegisteredSample>());
    EXPECT_NE(ClassRegistry::makeObject(QStringLiteral("RegisteredSample")), object);
}

TEST(ClassRegistryTest, AnUnknownNameMakesNil)
{
    EXPECT_EQ(ClassRegistry::makeObject(QStringLiteral("NoSuchClass")), nullptr);
    EXPECT_EQ(ClassRegistry::makeObject(NSString()), nullptr);
}

TEST(ClassRegistryTest, RunsEachLoadHookOnceInOrder)
{
    ClassRegistry::runLoadHooks(); // those of the program itself
    log().clear();
    const ClassRegistry::LoadHook ofTheClass([] { log().push_back("class"); });
    const ClassRegistry::LoadHook ofTheCategory([] { log().push_back("category"); });
    EXPECT_TRUE(log().empty());
    ClassRegistry::runLoadHooks();
    ClassRegistry::runLoadHooks();
    EXPECT_THAT(log(), ElementsAre("class", "category"));
}

TEST(ClassRegistryTest, AHookThatIsAddedByAHookRunsToo)
{
    log().clear();
    const ClassRegistry::LoadHook outer([] {
        const ClassRegistry::LoadHook inner([] { log().push_back("inner"); });
        log().push_back("outer");
    });
    ClassRegistry::runLoadHooks();
    EXPECT_THAT(log(), ElementsAre("outer", "inner"));
}
