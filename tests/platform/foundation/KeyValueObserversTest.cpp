#include "platform/foundation/KeyValueObservers.h"

#include "tests/support/AssertionRecorder.h"

#include <gmock/gmock.h>

#include <functional>

using testing::ElementsAre;

namespace {

const char contextOfTest = 0;
const char otherContext = 0;
const NSString playing = QStringLiteral("playing");
const NSString position = QStringLiteral("position");

// Announces "playing" automatically and by hand, "position" only by hand.
class Subject : public NSObject {
public:
    void setPlaying(bool isPlaying)
    {
        const AutomaticChange change(*this, playing);
        m_isPlaying = isPlaying;
    }
    void setPlayingByBothMechanisms(bool isPlaying)
    {
        const AutomaticChange change(*this, playing);
        willChangeValueForKey(playing);
        m_isPlaying = isPlaying;
        didChangeValueForKey(playing);
    }
    void setPosition(double) { const AutomaticChange change(*this, position); }
    bool isPlaying() const { return m_isPlaying; }

protected:
    bool automaticallyNotifiesObserversForKey(const NSString& key) const override { return key != position; }

private:
    bool m_isPlaying = false;
};

class Observer : public NSObject {
public:
    explicit Observer(std::vector<std::string>& log, std::function<void()> reaction = {})
        : m_log(log)
        , m_reaction(std::move(reaction))
    {
    }
    void observeValueForKeyPath(const NSString& key, NSObject& object, const void* context) override
    {
        if (context != &contextOfTest) {
            NSObject::observeValueForKeyPath(key, object, context);
            return;
        }
        m_log.push_back(key.toStdString());
        if (m_reaction)
            m_reaction();
    }

private:
    std::vector<std::string>& m_log;
    std::function<void()> m_reaction;
};

class KeyValueObservingTest : public testing::Test {
protected:
    std::vector<std::string> log;
    std::shared_ptr<Subject> subject = make<Subject>();
    std::shared_ptr<Observer> observer = make<Observer>(log);
};

} // namespace

TEST_F(KeyValueObservingTest, TellsOfASetterAndNotOfOtherKeys)
{
    subject->addObserver(*observer, playing, &contextOfTest);
    subject->setPlaying(true);
    subject->didChangeValueForKey(position);
    EXPECT_THAT(log, ElementsAre("playing"));
}

TEST_F(KeyValueObservingTest, AKeyThatIsAnnouncedByHandIsNotAnnouncedBySetters)
{
    subject->addObserver(*observer, position, &contextOfTest);
    subject->setPosition(1);
    EXPECT_TRUE(log.empty());
    subject->willChangeValueForKey(position);
    subject->didChangeValueForKey(position);
    EXPECT_THAT(log, ElementsAre("position"));
}

TEST_F(KeyValueObservingTest, ASetterThatAnnouncesByHandTooTellsTwice)
{
    subject->addObserver(*observer, playing, &contextOfTest);
    subject->setPlayingByBothMechanisms(true);
    EXPECT_THAT(log, ElementsAre("playing", "playing"));
}

TEST_F(KeyValueObservingTest, ARemovedObserverIsNotCalled)
{
    subject->addObserver(*observer, playing, &contextOfTest);
    subject->removeObserver(*observer, playing, &contextOfTest);
    subject->setPlaying(true);
    EXPECT_TRUE(log.empty());
}

TEST_F(KeyValueObservingTest, RemovalTakesOneRegistrationOfTheSameContext)
{
    subject->addObserver(*observer, playing, &contextOfTest);
    subject->addObserver(*observer, playing, &contextOfTest);
    subject->removeObserver(*observer, playing, &contextOfTest);
    subject->setPlaying(true);
    EXPECT_THAT(log, ElementsAre("playing"));
}

TEST_F(KeyValueObservingTest, CountsTheRegistrationsThatAreInForce)
{
    const std::int64_t before = KeyValueObservers::liveCount();
    subject->addObserver(*observer, playing, &contextOfTest);
    subject->addObserver(*observer, playing, &otherContext);
    EXPECT_EQ(KeyValueObservers::liveCount(), before + 2);
    subject->removeObserver(*observer, playing, &contextOfTest);
    EXPECT_EQ(KeyValueObservers::liveCount(), before + 1);
    subject = nullptr; // what was observed goes, and its registrations with it
    EXPECT_EQ(KeyValueObservers::liveCount(), before);
}

TEST_F(KeyValueObservingTest, RemovingWhatWasNeverAddedIsAProgrammingError)
{
    AssertionRecorder recorder;
    subject->removeObserver(*observer, playing, &contextOfTest);
    subject->addObserver(*observer, playing, &contextOfTest);
    subject->removeObserver(*observer, playing, &otherContext);
    const NSString message
        = QStringLiteral("Cannot remove an observer of \"playing\" because it is not registered.");
    EXPECT_THAT(recorder.messages(), ElementsAre(message, message));
}

TEST_F(KeyValueObservingTest, AnUnknownContextIsAProgrammingError)
{
    AssertionRecorder recorder;
    subject->addObserver(*observer, playing, &otherContext);
    subject->setPlaying(true);
    EXPECT_TRUE(log.empty());
    EXPECT_THAT(recorder.messages(),
        ElementsAre(QStringLiteral("A change of \"playing\" was received but not handled.")));
}

TEST_F(KeyValueObservingTest, AnObserverThatIsNotSharedIsAProgrammingError)
{
    AssertionRecorder recorder;
    Observer unshared(log);
    subject->addObserver(unshared, playing, &contextOfTest);
    EXPECT_THAT(recorder.messages(),
        ElementsAre(QStringLiteral("Invalid parameter not satisfying: observer is shared")));
}

TEST_F(KeyValueObservingTest, AnObserverThatIsGoneIsNotTold)
{
    subject->addObserver(*observer, playing, &contextOfTest);
    observer.reset();
    subject->setPlaying(true);
    EXPECT_TRUE(log.empty());
}

TEST_F(KeyValueObservingTest, AnObserverRemovedWhileAChangeIsToldIsNotCalledAgain)
{
    const auto remover
        = make<Observer>(log, [&] { subject->removeObserver(*observer, playing, &contextOfTest); });
    subject->addObserver(*remover, playing, &contextOfTest);
    subject->addObserver(*observer, playing, &contextOfTest);
    subject->setPlaying(true);
    EXPECT_THAT(log, ElementsAre("playing"));
}

TEST_F(KeyValueObservingTest, AnObserverAddedWhileAChangeIsToldIsCalledFromTheNextOneOn)
{
    bool isAdded = false;
    const auto adder = make<Observer>(log, [&] {
        if (!std::exchange(isAdded, true))
            subject->addObserver(*observer, playing, &contextOfTest);
    });
    subject->addObserver(*adder, playing, &contextOfTest);
    subject->setPlaying(true);
    EXPECT_EQ(log.size(), 1u);
    subject->setPlaying(false);
    EXPECT_EQ(log.size(), 3u);
}

TEST_F(KeyValueObservingTest, TheObjectMayBeDroppedByAnObserverInTheMiddleOfItsSetter)
{
    const auto dropper = make<Observer>(log, [&] { subject.reset(); });
    const std::weak_ptr<Subject> weak = subject;
    Subject& object = *subject;
    object.addObserver(*dropper, playing, &contextOfTest);
    object.setPlayingByBothMechanisms(true);
    EXPECT_THAT(log, ElementsAre("playing", "playing"));
    EXPECT_TRUE(weak.expired());
}
