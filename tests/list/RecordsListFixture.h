// The records list in a window, over the sample data, with a clock, queues, sound and fingers moved by hand.
#pragma once

#include "list/ORVRecordTableViewCell.h"
#include "list/ORVRecordsListViewController.h"
#include "platform/foundation/ClassRegistry.h"
#include "platform/foundation/NSBundle.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/FakeAudioDevice.h"
#include "tests/support/ManualExecutor.h"
#include "tests/support/SceneFixture.h"
#include "tests/support/SourcePath.h"

class RecordsListFixture : public SceneFixture {
protected:
    RecordsListFixture()
    {
        ClassRegistry::runLoadHooks(); // the controls have their pictures from them
        scheduler.setAfterTurn([this] { executor.runAll(); });
        storage = make<ORVRecordsStorage>();
        controller = make<ORVRecordsListViewController>();
        controller->setRecordsStorage(storage);
    }
    ~RecordsListFixture() override { scheduler.setAfterTurn(nullptr); }

    // The list as the application opens it: filled before it is seen.
    void open()
    {
        controller->setUserLocation(storage->fakeUserLocation());
        controller->updateRecordsIfNecessary();
        window->setRootViewController(controller);
        runFrames();
        executor.runAll();
    }

    std::shared_ptr<ORVRecordTableViewCell> cellAt(int row) const
    {
        return std::dynamic_pointer_cast<ORVRecordTableViewCell>(
            controller->tableView()->cellForRow({ 0, row }));
    }
    CGPoint centerOfRow(int row) const
    {
        const auto& table = controller->tableView();
        return table->convertPointToView(table->rectForRow({ 0, row }).center(), nullptr);
    }
    void tapRow(int row)
    {
        touch.tap(centerOfRow(row));
        executor.runAll();
    }
    static CGPoint centerOf(const UIView& view)
    {
        return view.convertPointToView(view.bounds().center(), nullptr);
    }
    void tapButton(int row)
    {
        touch.tap(centerOf(*cellAt(row)->playbackButton()));
        executor.runAll();
    }
    // What a row says of its playback: the fraction that was played, and what a tap on the button would do.
    double positionAt(int row) const { return cellAt(row)->playbackButton()->progressView()->progress(); }
    bool isSpinning(int row) const
    {
        return cellAt(row)->playbackButton()->progressView()->isIndeterminate();
    }
    bool showsPause(int row) const { return cellAt(row)->playbackButton()->isPlaying(); }
    bool showsSlider(int row) const { return cellAt(row)->playbackSlider()->superview() != nullptr; }

    const NSBundle::MainReplacement mainBundle { make<NSBundle>(
        sourcePath("resources"), std::vector<NSString> { QStringLiteral("en") }) };
    ManualExecutor executor;
    FakeAudioDevice device;
    std::shared_ptr<ORVRecordsStorage> storage;
    std::shared_ptr<ORVRecordsListViewController> controller;
};
