#include "platform/foundation/NSObject.h"

#include <gmock/gmock.h>

class FoundationSample : public NSObject {
public:
    bool isSharedInInit() const { return m_isSharedInInit; }

protected:
    void init() override
    {
        NSObject::init();
        m_isSharedInInit = strongSelf(this).get() == this;
    }

private:
    bool m_isSharedInInit = false;
};

class FoundationSubSample : public FoundationSample { };

TEST(NSObjectTest, IsEqualToItselfOnly)
{
    const auto first = make<FoundationSample>();
    const auto second = make<FoundationSample>();
    EXPECT_TRUE(first->isEqual(first.get()));
    EXPECT_FALSE(first->isEqual(second.get()));
    EXPECT_FALSE(first->isEqual(nullptr));
    EXPECT_NE(first->hash(), second->hash());
}

TEST(NSObjectTest, NilEqualsNilAndNothingElse)
{
    const auto object = make<FoundationSample>();
    EXPECT_TRUE(isEqual(nullptr, nullptr));
    EXPECT_FALSE(isEqual(object.get(), nullptr));
    EXPECT_FALSE(isEqual(nullptr, object.get()));
    EXPECT_TRUE(isEqual(object.get(), object.get()));
}

TEST(NSObjectTest, DescribesItselfByClassAndAddress)
{
    const auto object = make<FoundationSubSample>();
    const NSString address = NSString::number(reinterpret_cast<quintptr>(object.get()), 16);
    EXPECT_EQ(object->description(), QStringLiteral("<FoundationSubSample: 0x") + address + u'>');
    EXPECT_EQ(object->debugDescription(), object->description());
}

TEST(NSObjectTest, ASubclassIsOfTheKindButNoMemberOfTheClass)
{
    const auto object = make<FoundationSubSample>();
    EXPECT_TRUE(object->isKindOfClass<FoundationSample>());
    EXPECT_FALSE(object->isMemberOfClass<FoundationSample>());
    EXPECT_TRUE(object->isMemberOfClass<FoundationSubSample>());
}

TEST(NSObjectTest, IsSharedWhenItIsSetUp) { EXPECT_TRUE(make<FoundationSample>()->isSharedInInit()); }
