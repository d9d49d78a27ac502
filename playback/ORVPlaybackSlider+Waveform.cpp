// The part of ORVPlaybackSlider that gets the picture of the waveform.

#include "platform/foundation/Executor.h"
#include "platform/foundation/Messages.h"
#include "platform/graphics/UIGraphics.h"
#include "platform/views/UIWindow.h"
#include "playback/ORVPlaybackSlider.h"

#include <cmath>
#include <limits>

namespace {

constexpr double scaleTolerance = std::numeric_limits<float>::epsilon();

bool fits(const UIImage& picture, const CGSize& size, CGFloat scale)
{
    const CGSize pictureSize = picture.size(); // to be met exactly, so not by Qt's comparison
    return pictureSize.width() == size.width() && pictureSize.height() == size.height()
        && std::abs(picture.scale() - scale) <= scaleTolerance;
}

} // namespace

std::shared_ptr<UIImage> ORVPlaybackSlider::waveformImageForAsset(
    const std::shared_ptr<AVAsset>&, const CGSize& size, CGFloat scale)
{
    const auto picture = UIImage::imageNamed(QStringLiteral("mock_playback_waveform"));
    if (picture && fits(*picture, size, scale))
        return picture;
    UIGraphicsBeginImageContextWithOptions(size, false, scale);
    if (picture)
        picture->drawInRect({ CGPoint(), size });
    auto fitted = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    return fitted;
}

void ORVPlaybackSlider::setAsset(const std::shared_ptr<AVAsset>& asset)
{
    if (asset == m_asset)
        return;
    m_asset = asset;
    setNeedsRenderWaveform();
}

void ORVPlaybackSlider::setNeedsRenderWaveform()
{
    m_needsRenderWaveform = true; // for good: from now on each request renders
    if (window() && m_shouldAutomaticallyRenderWaveform)
        renderWafeformIfNecessaryWithCompletion(nullptr);
}

void ORVPlaybackSlider::didMoveToWindow()
{
    UIView::didMoveToWindow();
    if (window() && m_shouldAutomaticallyRenderWaveform)
        renderWafeformIfNecessaryWithCompletion(nullptr);
}

void ORVPlaybackSlider::renderWafeformIfNecessaryWithCompletion(Completion completion)
{
    if (!m_needsRenderWaveform || !m_asset) {
        if (completion)
            completion();
        return;
    }
    const auto self = strongSelf(this); // the delegate may drop the slider
    m_renderingWaveform = true;
    sendMessage(
        *this, m_delegate, &ORVPlaybackSliderDelegate::playbackSliderDidBeginRenderingWaveform, *this);
    const CGFloat scale = window() ? window()->screen()->scale() : 0;
    // Asset and completion are moved on to the main queue, so that what they own is destroyed there.
    Executor::current().globalQueue().async(
        [weak = std::weak_ptr(self), asset = m_asset, size = bounds().size(), scale,
            completion = std::move(completion)]() mutable {
            auto image = waveformImageForAsset(asset, size, scale);
            Executor::current().mainQueue().async(
                [weak = std::move(weak), asset = std::move(asset), image = std::move(image),
                    completion = std::move(completion)] {
                    if (const auto slider = weak.lock())
                        slider->finishRenderingWaveformWithImage(image, completion);
                });
        });
}

void ORVPlaybackSlider::finishRenderingWaveformWithImage(
    const std::shared_ptr<UIImage>& image, const Completion& completion)
{
    const KeepAlive keepAlive(*this);
    m_minimumTrackView->setWaveformImage(image);
    m_maximumTrackView->setWaveformImage(image);
    m_renderingWaveform = false;
    sendMessage(*this, m_delegate, &ORVPlaybackSliderDelegate::playbackSliderDidEndRenderingWaveform, *this);
    if (completion)
        completion();
}
