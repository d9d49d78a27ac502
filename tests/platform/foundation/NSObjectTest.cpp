#include "platform/foundation/NSObject.h"

#include <gmock/gmock.h>

#include <functional>

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

// --- The end -----------------------------------------------------------------------------------------

namespace {

class LastWill : public NSObject {
public:
    explicit LastWill(std::vector<std::string>& log)
        : m_log(log)
    {
    }
    ~LastWill() override { m_log.emplace_back("gone"); }
    void willBeDestroyed()
    {
        m_log.emplace_back("will be destroyed, " + name());
        if (onEnd)
            onEnd(shared_from_this());
    }
    virtual std::string name() const { return "plain"; }

    std::function<void(const std::shared_ptr<NSObject>&)> onEnd;

private:
    std::vector<std::string>& m_log;
};

class NamedLastWill final : public LastWill {
public:
    using LastWill::LastWill;
    std::string name() const override { return "named"; }
};

} // namespace

TEST(NSObjectTest, IsWholeAndOwnedWhenItIsToldOfItsEnd)
{
    std::vector<std::string> log;
    std::shared_ptr<LastWill> object = make<NamedLastWill>(log);
    auto owner = object;
    object = nullptr;
    EXPECT_TRUE(log.empty()) << "while somebody owns it";
    owner = nullptr;
    EXPECT_EQ(log, (std::vector<std::string> { "will be destroyed, named", "gone" }));
}

TEST(NSObjectTest, LivesAsLongAsSomebodyKeepsItFromInsideItsEnd)
{
    std::vector<std::string> log;
    auto object = make<LastWill>(log);
    const std::weak_ptr<LastWill> before = object;
    std::shared_ptr<NSObject> kept;
    object->onEnd = [&](const std::shared_ptr<NSObject>& self) { kept = self; };
    object = nullptr;
    EXPECT_EQ(log, std::vector<std::string> { "will be destroyed, plain" });
    EXPECT_TRUE(before.expired());
    EXPECT_EQ(kept->shared_from_this(), kept);
    kept = nullptr;
    EXPECT_EQ(log, (std::vector<std::string> { "will be destroyed, plain", "gone" })) << "told once";
}
