#include "platform/foundation/Messages.h"

#include <gmock/gmock.h>

namespace {

class Sender;

class Receiver {
public:
    virtual ~Receiver() = default;
    virtual void senderDidFinish(Sender&) { }
    virtual int senderWantsNumber(Sender&, int) { return 0; }
};

class Sender final : public NSObject {
public:
    explicit Sender(bool* isGone)
        : m_isGone(isGone)
    {
    }
    ~Sender() override { *m_isGone = true; }

    std::weak_ptr<Receiver> m_receiver;

private:
    bool* const m_isGone;
};

// Owns the sender, and drops it or itself from inside a message.
class Owner final : public Receiver {
public:
    void senderDidFinish(Sender&) override
    {
        m_sender.reset();
        m_wasGoneInMessage = m_isGone;
        if (m_self)
            m_self.reset();
        m_answered = true;
    }
    int senderWantsNumber(Sender&, int number) override { return number + 1; }

    bool m_isGone = false;
    bool m_wasGoneInMessage = false;
    bool m_answered = false;
    std::shared_ptr<Sender> m_sender = make<Sender>(&m_isGone);
    std::shared_ptr<Owner> m_self;
};

} // namespace

TEST(MessagesTest, SenderDroppedInsideItsMessageLivesUntilTheMessageReturns)
{
    const auto owner = std::make_shared<Owner>();
    owner->m_sender->m_receiver = owner;
    Sender& sender = *owner->m_sender;
    sendMessage(sender, sender.m_receiver, &Receiver::senderDidFinish, sender);
    EXPECT_TRUE(owner->m_answered);
    EXPECT_FALSE(owner->m_wasGoneInMessage);
    EXPECT_TRUE(owner->m_isGone);
}

TEST(MessagesTest, ReceiverDroppedInsideItsMessageLivesUntilTheMessageReturns)
{
    bool isGone = false;
    const auto sender = make<Sender>(&isGone);
    auto owner = std::make_shared<Owner>();
    owner->m_self = owner;
    sender->m_receiver = owner;
    const std::weak_ptr<Owner> held = owner;
    owner.reset();
    sendMessage(*sender, sender->m_receiver, &Receiver::senderDidFinish, *sender);
    EXPECT_TRUE(held.expired());
}

TEST(MessagesTest, AnswersWhatTheReceiverAnswers)
{
    const auto owner = std::make_shared<Owner>();
    owner->m_sender->m_receiver = owner;
    Sender& sender = *owner->m_sender;
    EXPECT_EQ(sendMessage(sender, sender.m_receiver, &Receiver::senderWantsNumber, sender, 41), 42);
}

TEST(MessagesTest, WithoutAReceiverTheAnswerIsZero)
{
    bool isGone = false;
    const auto sender = make<Sender>(&isGone);
    EXPECT_EQ(sendMessage(*sender, sender->m_receiver, &Receiver::senderWantsNumber, *sender, 41), 0);
}

TEST(MessagesTest, KeepsAnObjectUntilTheEndOfTheBlock)
{
    bool isGone = false;
    auto sender = make<Sender>(&isGone);
    {
        const KeepAlive keepAlive(*sender);
        sender.reset();
        EXPECT_FALSE(isGone);
    }
    EXPECT_TRUE(isGone);
}

TEST(MessagesTest, HoldsNothingOfAnObjectThatNobodyOwns)
{
    bool isGone = false;
    {
        Sender sender(&isGone);
        const KeepAlive keepAlive(sender);
    }
    EXPECT_TRUE(isGone);
}

TEST(MessagesTest, KeepsAnObjectThatIsNoNSObject)
{
    class Helper : public std::enable_shared_from_this<Helper> { };
    auto helper = std::make_shared<Helper>();
    const std::weak_ptr<Helper> held = helper;
    {
        const KeepAlive keepAlive(*helper);
        helper.reset();
        EXPECT_FALSE(held.expired());
    }
    EXPECT_TRUE(held.expired());
}

TEST(MessagesTest, KeepsAnObjectByItsAddressAndNothingOfNone)
{
    bool isGone = false;
    auto sender = make<Sender>(&isGone);
    {
        const KeepAlive keepAlive(sender.get());
        const KeepAlive keepNothing(nullptr);
        sender.reset();
        EXPECT_FALSE(isGone);
    }
    EXPECT_TRUE(isGone);
}
