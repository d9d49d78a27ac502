// The list on a phone and on a tablet, in what it does: the renderer must draw what a painter does.
#include "platform/controllers/UINavigationController.h"
#include "platform/graphics/UIColor.h"
#include "tests/gallery/Gallery.h"
#include "tests/gallery/RendererWindow.h"
#include "tests/list/RecordsListFixture.h"
#include "theme/ORVAutoTintNavigationBar.h"
#include "theme/UIColor+ORVTheme.h"

namespace {

class ListGallery : public RecordsListFixture, public ::testing::WithParamInterface<GalleryLook> {
protected:
    // A window of that size with the list in it; its rows are opened and played in what follows.
    void openOn(const CGSize& size, const UIEdgeInsets& safeArea)
    {
        UIScreen::mainScreen()->setGeometry({ size, GetParam().scale, safeArea });
        CurrentUserInterfaceStyle::set(GetParam().style);
        window->setTintColor(orv_oruvaneMainColor());
        controller->setUserLocation(storage->fakeUserLocation());
        controller->updateRecordsIfNecessary();
        const auto navigation = make<UINavigationController>([] { return make<ORVAutoTintNavigationBar>(); });
        navigation->navigationBar()->setTranslucent(false);
        navigation->navigationBar()->setBarStyle(UIBarStyle::Black);
        navigation->setViewControllers({ controller });
        window->setRootViewController(navigation);
        runFrames();
        executor.runAll();
    }
    void expectDrawn(const char* moment)
    {
        runFrames();
        EXPECT_TRUE(RendererWindow::shared().draws(frame, moment)) << moment;
    }
    // Every frame on the way is shown, so that what moves is flattened as on a screen.
    void showFramesFor(double seconds)
    {
        for (double passed = 0; passed < seconds; passed += 1 / 30.0) {
            scheduler.advance(1 / 30.0);
            RendererWindow::shared().show(frame);
        }
    }
    void playScrubAndScroll()
    {
        expectDrawn("at rest");
        tapButton(1);
        scheduler.advance(2);
        showFramesFor(0.2);
        tapButton(1); // paused somewhere between two pixels
        scheduler.advance(1);
        expectDrawn("an open row");
        const CGPoint thumb = centerOf(*cellAt(1)->playbackSlider()->thumbView());
        touch.down(thumb);
        touch.moveTo({ thumb.x() + 101.3, thumb.y() });
        touch.up();
        scheduler.advance(1);
        expectDrawn("scrubbed");
        const auto& table = controller->tableView();
        table->setContentOffset({ 0, table->contentOffset().y() + 70.4 });
        showFramesFor(0.2);
        table->setContentOffset({ 0, table->contentOffset().y() + 33.3 });
        showFramesFor(0.2);
        scheduler.advance(2);
        expectDrawn("scrolled");
    }
};

TEST_P(ListGallery, OnAPhone)
{
    openOn({ 390, 844 }, { 47, 0, 34, 0 });
    playScrubAndScroll();
}

TEST_P(ListGallery, OnATabletWhoseWidthIsNoWholeNumberOfPixels)
{
    openOn({ 700.34, 600 }, { 24, 0, 20, 0 });
    playScrubAndScroll();
}

GALLERY_LOOKS(ListGallery);

} // namespace
