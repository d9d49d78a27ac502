#include "platform/foundation/MethodIdentity.h"

#include <gtest/gtest.h>

namespace {

class Base {
public:
    virtual ~Base() = default;
    virtual void shown() { }
    virtual void hidden() { }
    void plain() { }
    void plain(int) { m_number = 1; }
    int m_number = 0;
};

class Derived : public Base {
public:
    void shown() override { m_number = 2; }
};

} // namespace

TEST(MethodIdentityTest, IsEqualForOneMethodAndNoOther)
{
    EXPECT_EQ(MethodIdentity(&Base::shown), MethodIdentity(&Base::shown));
    EXPECT_NE(MethodIdentity(&Base::shown), MethodIdentity(&Base::hidden));
    EXPECT_NE(MethodIdentity(&Base::shown), MethodIdentity(static_cast<void (Base::*)()>(&Base::plain)));
}

TEST(MethodIdentityTest, TellsOverloadsApart)
{
    EXPECT_NE(MethodIdentity(static_cast<void (Base::*)()>(&Base::plain)),
        MethodIdentity(static_cast<void (Base::*)(int)>(&Base::plain)));
}

TEST(MethodIdentityTest, AnOverrideIsTheMethodThatItOverrides)
{
    EXPECT_EQ(MethodIdentity(&Base::shown), MethodIdentity(&Derived::shown));
}

TEST(MethodIdentityTest, NoMethodIsLikeNoOther)
{
    EXPECT_EQ(MethodIdentity(), MethodIdentity());
    EXPECT_NE(MethodIdentity(), MethodIdentity(&Base::shown));
}
