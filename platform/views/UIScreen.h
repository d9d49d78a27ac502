// The screen: its size, its density, and where notches and home indicators reach into it.
//
// The host says what it is, and says it again when it changes; windows follow. Main thread only.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/foundation/ObserverList.h"
#include "platform/graphics/Geometry.h"

// Hears that the screen is another one.
class UIScreenObserver {
public:
    virtual void screenDidChange() = 0;

protected:
    ~UIScreenObserver() = default; // nobody owns an observer through this type
};

class UIScreen final : public NSObject {
public:
    static const std::shared_ptr<UIScreen>& mainScreen();

    CGRect bounds() const { return { CGPoint(), m_geometry.size }; }
    double scale() const { return m_geometry.scale; }
    const UIEdgeInsets& safeAreaInsets() const { return m_geometry.safeAreaInsets; }

    struct Geometry {
        CGSize size;
        double scale = 1; // device pixels in a point
        UIEdgeInsets safeAreaInsets;

        bool operator==(const Geometry&) const = default;
    };
    const Geometry& geometry() const { return m_geometry; }
    // A scale that is no positive number is a programming error and changes nothing.
    void setGeometry(const Geometry& geometry);

    void addObserver(std::weak_ptr<UIScreenObserver> observer) { m_observers.add(std::move(observer)); }

private:
    Geometry m_geometry;
    ObserverList<UIScreenObserver> m_observers;
};
