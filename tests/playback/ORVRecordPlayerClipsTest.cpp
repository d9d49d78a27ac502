#include "tests/playback/RecordPlayerFixture.h"
#include "tests/support/SourcePath.h"

#include <QDir>

#include <cmath>

namespace {

TEST_F(ORVRecordPlayerTest, PlaysEverySampleClipToItsEnd)
{
    const QDir folder(sourcePath("resources/sounds"));
    const QStringList clips = folder.entryList({ QStringLiteral("*.m4a") });
    ASSERT_GE(clips.size(), 24);
    for (const QString& clip : clips) {
        makePlayer(QUrl::fromLocalFile(folder.filePath(clip)));
        executor.runAll();
        ASSERT_EQ(delegate->takeLines(), Lines { "ready" }) << clip.toStdString();
        const double duration = player->recordDuration();
        scheduler.advance(duration + 0.5);

        const Lines lines = delegate->takeLines();
        const auto ticks = static_cast<std::size_t>(std::ceil(duration * 10 - 1e-6)) - 1;
        ASSERT_EQ(lines.size(), ticks + 2) << clip.toStdString();
        EXPECT_EQ(lines.front(), "at 0.1");
        EXPECT_EQ(lines[ticks], "end");
        EXPECT_EQ(lines[ticks + 1], "at 0");
        const FakeAudioDevice::Run& run = device.lastRun();
        const double samples = duration * run.format().sampleRate * run.format().channels;
        EXPECT_EQ(run.samples().size(), static_cast<std::size_t>(std::llround(samples)));
    }
}

} // namespace
