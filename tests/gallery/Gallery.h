// Controls in all their states, drawn through a real window at a phone's width and compared with pictures.
//
// A scene is a test of this fixture: it fills the window and ends with expectPicture(). Each is drawn in six
// looks: at one, two and three pixels a point, in light and in dark. There are two pictures of it in
// tests/gallery/pictures, SCENE-light.png at two pixels a point and SCENE-dark.png at three; a look at the
// other scale is held against the one of its style, for it must differ in nothing but its sharpness.
// At these scales and at one pixel a point the renderer must draw what a plain painter does.
// PictureCells.h says what counts as the same. To renew the pictures, run
//
//     ORUVANE_RENEW_PICTURES=1 build/dev/tests/gallery/tests_gallery
//
// look at every one that has changed, and commit them. A test that renews a picture fails and says so.
#pragma once

#include "platform/foundation/NSBundle.h"
#include "platform/graphics/UIColor.h"
#include "platform/layout/NSLayoutConstraint.h"
#include "platform/views/UIAppearance.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"
#include "tests/support/SourcePath.h"

class QImage;
class UIImage;

struct GalleryLook {
    double scale;
    UIUserInterfaceStyle style;

    bool isDark() const { return style == UIUserInterfaceStyle::Dark; }
    std::string name() const; // "2x_light"
};

void PrintTo(const GalleryLook& look, std::ostream* out);

class Gallery : public SceneFixture, public ::testing::WithParamInterface<GalleryLook> {
protected:
    Gallery();
    ~Gallery() override;

    // Paints the window down to that height and compares it with the scene's picture.
    void expectPicture(const char* scene, double height);
    // The same the other way round, for tests of the tests: something is amiss, and the picture must tell.
    void expectOtherPicture(const char* scene, double height);

    // Says that nothing but the captions is text. Such a picture is compared with much less tolerance.
    void showsNoText() { m_showsText = false; }
    // What is turned has edges that renderers smooth in ways of their own.
    void showsTurned(const CGRect& rect) { m_turned = rect; }

    // A small grey text with its top left corner at the point, which is no part of the comparison.
    void addCaption(const char* text, double x, double y);
    template <typename View> std::shared_ptr<View> add(std::shared_ptr<View> view, const CGRect& rect)
    {
        view->setFrame(rect);
        window->addSubview(view);
        return view;
    }
    static std::shared_ptr<UIImage> picture(const char* name);

    static constexpr double width = 390;
    static constexpr double margin = 12;

    AssertionRecorder assertions;
    int conflicts = 0; // between constraints
    const NSLayoutConstraint::ConflictReplacement conflictCounter { [this](auto&) { ++conflicts; } };
    const UIAppearance::Replacement nothingRecorded; // named pictures are recorded at the first look's scale
    const NSBundle::MainReplacement mainBundle { make<NSBundle>(
        sourcePath("resources"), std::vector<NSString> { QStringLiteral("en") }) };

private:
    // Writes the picture where it is the kept one of its style, which fails the test.
    void renewPicture(const char* scene, double height);
    QImage painted(double height);
    void blankCaptions(QImage& picture) const;
    ::testing::AssertionResult matchesPicture(const char* scene, double height);

    std::vector<CGRect> m_captions;
    CGRect m_turned;
    bool m_showsText = true;
};

// Puts a fixture's scenes into all looks.
#define GALLERY_LOOKS(Fixture)                                                                               \
    INSTANTIATE_TEST_SUITE_P(Looks, Fixture, ::testing::ValuesIn(galleryLooks),                              \
        [](const auto& look) { return look.param.name(); })

inline constexpr GalleryLook galleryLooks[] = {
    { 1, UIUserInterfaceStyle::Light },
    { 1, UIUserInterfaceStyle::Dark },
    { 2, UIUserInterfaceStyle::Light },
    { 2, UIUserInterfaceStyle::Dark },
    { 3, UIUserInterfaceStyle::Light },
    { 3, UIUserInterfaceStyle::Dark },
};
