// A rectangle on the screen with a background, contents and sublayers.
//
// What is set here is the model and is read back at once; animations only change what is shown. Changing
// an animatable property first asks actionForKey() for an animation from the old value to the new. A number
// that is not finite is a programming error and changes nothing, except where another answer is stated.
// A change of something that is on the screen asks for a frame. Main thread only.
#pragma once

#include "platform/layers/CAAnimation.h"
#include "platform/layers/CAFrameRecord.h"
#include "platform/layers/CALayerContents.h"
#include "platform/layers/CALayerDelegate.h"
#include "platform/layers/CALayerValues.h"
#include "platform/layers/FrameList.h"

#include <vector>

class CALayerAnimations;
class CALayerTree;
class UIImage;

class CALayer : public NSObject {
public:
    static std::shared_ptr<CALayer> layer();

    CALayer();
    ~CALayer() override;

    // Never given to another layer while the process lives.
    LayerID layerID() const { return m_layerID; }
    const NSString& name() const { return m_name; }
    void setName(const NSString& name) { m_name = name; }
    std::shared_ptr<CALayerDelegate> delegate() const { return m_delegate.lock(); }
    void setDelegate(std::weak_ptr<CALayerDelegate> delegate) { m_delegate = std::move(delegate); }
    NSString description() const override;

    // --- Geometry ------------------------------------------------------------------------------------

    const CGRect& bounds() const { return m_values.bounds; }
    void setBounds(const CGRect&);
    const CGPoint& position() const { return m_values.position; }
    void setPosition(const CGPoint&);
    const CGPoint& anchorPoint() const { return m_values.anchorPoint; }
    void setAnchorPoint(const CGPoint&);
    // affineTransform
    const CGAffineTransform& transform() const { return m_values.transform; }
    void setTransform(const CGAffineTransform&);
    // Computed from the four above; setting it sets the position and the size of the bounds.
    CGRect frame() const { return m_values.frame(); }
    void setFrame(const CGRect&);

    // convertPoint:toLayer: and convertRect:toLayer: — in model values; null stands for the coordinates
    // around the root. A layer in no common tree counts as if its root lay in the same place.
    CGPoint convertPointToLayer(const CGPoint&, const CALayer* other) const;
    CGPoint convertPointFromLayer(const CGPoint&, const CALayer* other) const;
    CGRect convertRectToLayer(const CGRect&, const CALayer* other) const;
    CGRect convertRectFromLayer(const CGRect&, const CALayer* other) const;

    // --- Looks ---------------------------------------------------------------------------------------

    // Kept as it is given; shown as the nearer of 0 and 1.
    double opacity() const { return m_values.opacity; }
    void setOpacity(double);
    bool isHidden() const { return m_hidden; }
    void setHidden(bool);
    const std::shared_ptr<UIColor>& backgroundColor() const { return m_values.backgroundColor; }
    void setBackgroundColor(const std::shared_ptr<UIColor>&); // nil: none
    double cornerRadius() const { return m_values.cornerRadius; }
    void setCornerRadius(double);
    // Clips contents and sublayers to the bounds with their round corners.
    bool masksToBounds() const { return m_masksToBounds; }
    void setMasksToBounds(bool);
    // Kept, and of no effect on the looks: the compositor decides by itself what it flattens.
    bool shouldRasterize() const { return m_shouldRasterize; }
    void setShouldRasterize(bool rasterize) { m_shouldRasterize = rasterize; }
    double rasterizationScale() const { return m_rasterizationScale; }
    void setRasterizationScale(double scale); // above 0

    // --- Contents ------------------------------------------------------------------------------------

    // A picture put in from outside. An image that repeats is repeated over the bounds, whatever the gravity.
    const std::shared_ptr<UIImage>& contents() const { return m_contents.image(); }
    void setContents(std::shared_ptr<UIImage>);
    CAContentsGravity contentsGravity() const { return m_contents.gravity(); }
    void setContentsGravity(CAContentsGravity);
    // Not nil: only the alpha of the contents counts, drawn or put in, and is filled with this colour.
    const std::shared_ptr<UIColor>& contentsTintColor() const { return m_values.contentsTintColor; }
    void setContentsTintColor(const std::shared_ptr<UIColor>&);
    // Device pixels in a point of drawn contents, above 0.
    double contentsScale() const { return m_contents.scale(); }
    void setContentsScale(double);

    // Drawn contents are made once, and again after this call or with another size or scale.
    void setNeedsDisplay();
    bool needsDisplay() const { return m_needsDisplay; }
    void displayIfNeeded();
    // The same for the whole subtree. Hidden layers are filled when they are shown.
    void displaySubtreeIfNeeded();
    // Marks the layer as changed: a frame comes if it can be seen.
    void setNeedsFrame();

    // --- Layout --------------------------------------------------------------------------------------

    void setNeedsLayout();
    bool needsLayout() const { return m_needsLayout; }
    // Lays out from the highest ancestor that waits for it without a gap, downwards, until nothing waits.
    // Layouts that ask for one another without end are left waiting.
    void layoutIfNeeded();
    // Whether this layer or one below waits for a layout.
    bool hasPendingLayout() const { return m_needsLayout || m_sublayersNeedLayout; }

    // --- Tree ----------------------------------------------------------------------------------------

    CALayer* superlayer() const { return m_superlayer; }
    // The last is on top.
    const std::vector<std::shared_ptr<CALayer>>& sublayers() const { return m_sublayers; }
    void addSublayer(const std::shared_ptr<CALayer>&);
    // insertSublayer:atIndex: — the layer leaves its old place first; an index beyond the end is the end.
    void insertSublayer(std::shared_ptr<CALayer> sublayer, std::size_t index);
    void removeFromSuperlayer();
    // The tree of the window that shows this layer, or null.
    CALayerTree* tree() const { return m_tree; }

    // --- Animations ----------------------------------------------------------------------------------

    // addAnimation:forKey: — the layer takes a copy. A null key replaces nothing.
    void addAnimation(const std::shared_ptr<CAAnimation>&, const NSString& key);
    std::shared_ptr<const CAAnimation> animationForKey(const NSString& key) const;
    std::vector<NSString> animationKeys() const;
    void removeAnimationForKey(const NSString& key); // an unknown key has no effect
    void removeAllAnimations();
    // For a view that leaves its window: those of the layer and of all layers below it. Endless ones stay, as
    // nobody waits for their end, and are seen again when the layer is.
    void removeEndingAnimationsOfSubtree();
    bool hasAnimations() const;

    // The animation that a change of the property is to have, or nil. Asks the delegate, then, where the
    // layer is in a window and actions are not disabled, the transaction, or else makes a basic animation
    // from the shown value.
    virtual std::shared_ptr<CAAnimation> actionForKey(const NSString& key);

    // What is shown now, and at a time of the media clock.
    CALayerValues presentationValues() const;
    CALayerValues presentationValuesAt(double mediaTime) const;

    // valueForKeyPath:, setValue:forKeyPath: — of the model; an unknown path is missing and sets nothing.
    CAValue valueForKeyPath(const NSString& keyPath) const;
    void setValueForKeyPath(const CAValue& value, const NSString& keyPath);

    // --- Time ----------------------------------------------------------------------------------------

    // The layer's time is (superlayer's time − beginTime) · speed + timeOffset, and its animations and
    // sublayers go by it: speed 0 holds them where timeOffset says, a negative one plays them backwards.
    // Any number is kept; an animation that has not begun or has ended at the time that comes out is not
    // shown. One that is played back to its start stays there until time runs forwards again.
    double beginTime() const { return m_timing.beginTime; }
    void setBeginTime(double);
    double timeOffset() const { return m_timing.timeOffset; }
    void setTimeOffset(double);
    double speed() const { return m_timing.speed; }
    void setSpeed(double);
    // convertTime:fromLayer:nil — the layer's time at a time of the media clock.
    double convertTimeFromMedia(double mediaTime) const { return momentAt(mediaTime).time; }
    // convertTime:toLayer:nil — infinite or not a number where the layer's time stands still.
    double convertTimeToMedia(double localTime) const;
    CAMoment momentAt(double mediaTime) const;

    // --- For the frame builder -----------------------------------------------------------------------

    const CALayerValues& modelValues() const { return m_values; }
    const CAMediaTiming& timing() const { return m_timing; }
    const CALayerAnimations* animations() const { return m_animations.get(); }
    // What the layer draws above its background, with the shown values.
    virtual FrameContent frameContent(const CALayerValues& shown) const;
    CAFrameRecord& frameRecord() const { return m_frameRecord; }

    // Called by the tree for its root, and from there downwards.
    class TreeKey {
        friend class CALayer;
        friend class CALayerTree;
        TreeKey() = default;
    };
    void setTree(CALayerTree*, TreeKey);

protected:
    // Draws in the layer's coordinates; by default the delegate draws.
    virtual void drawInContext(CGContext&);
    virtual bool drawsContent() const;
    virtual void layoutSublayers();

    // Sets an animatable property with its action.
    template <typename Value> void change(CAProperty, Value CALayerValues::*member, const Value& value);

private:
    void timingDidChange();
    bool isShown() const;
    bool isWithin(const CALayer& ancestor) const;
    CGAffineTransform transformToRoot() const;
    void ancestorsNeedLayout();
    void ancestorsNeedDisplay();
    void markFrameStale();
    void layoutSubtreeOnce();
    void display();
    void contentsDidChange();

    const LayerID m_layerID;
    mutable CAFrameRecord m_frameRecord;
    NSString m_name;
    std::weak_ptr<CALayerDelegate> m_delegate;
    CALayerValues m_values;
    CAMediaTiming m_timing;
    CALayerContents m_contents;
    CALayer* m_superlayer = nullptr; // set and cleared by the superlayer
    CALayerTree* m_tree = nullptr;
    std::vector<std::shared_ptr<CALayer>> m_sublayers;
    std::unique_ptr<CALayerAnimations> m_animations; // made with the first animation
    double m_rasterizationScale = 1;
    bool m_hidden = false;
    bool m_masksToBounds = false;
    bool m_shouldRasterize = false;
    bool m_needsDisplay = false;
    bool m_needsLayout = false;
    bool m_sublayersNeedDisplay = false; // some layer below does
    bool m_sublayersNeedLayout = false;
};
