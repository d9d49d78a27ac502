#include "platform/controls/UIButton.h"
#include "tests/gallery/Gallery.h"
#include "tests/support/Pictures.h"

namespace {

struct State {
    const char* name;
    bool enabled = true;
    bool highlighted = false;
    bool selected = false;
};

constexpr State states[] = {
    { .name = "normal" },
    { .name = "pressed", .highlighted = true },
    { .name = "disabled", .enabled = false },
    { .name = "selected", .selected = true },
    { .name = "sel. + pressed", .highlighted = true, .selected = true },
};

class ButtonsGallery : public Gallery {
protected:
    enum class Parts { Picture, Title, Both };
    static constexpr double column = 75;

    static double left(int index) { return margin + index * column; }

    std::shared_ptr<UIButton> makeButton(UIButtonType type, Parts parts)
    {
        const auto button = make<UIButton>(type);
        if (parts != Parts::Title && type != UIButtonType::DetailDisclosure)
            button->setImage(picture("ov_locateme"), UIControlState::Normal);
        if (parts != Parts::Picture)
            button->setTitle(parts == Parts::Both ? QStringLiteral("Go") : QStringLiteral("Sound"),
                UIControlState::Normal);
        return button;
    }
    static void setState(UIButton& button, const State& state)
    {
        button.setEnabled(state.enabled);
        button.setHighlighted(state.highlighted);
        button.setSelected(state.selected);
    }
    void addRow(UIButtonType type, Parts parts, double y)
    {
        for (int index = 0; index < int(std::size(states)); ++index) {
            const auto button = makeButton(type, parts);
            setState(*button, states[index]);
            add(button, { CGPoint(left(index), y), button->intrinsicContentSize() });
        }
    }

    // Answers the one with a tint of its own.
    std::shared_ptr<UIButton> addLooks()
    {
        const auto red = UIColor::colorWithRed(0.9, 0.1, 0.2, 1);
        const auto tinted = add(makeButton(UIButtonType::System, Parts::Both), { 12, 22, 80, 44 });
        addCaption("own tint", 12, 8);
        tinted->setTintColor(red);

        const auto dimmed = add(makeButton(UIButtonType::System, Parts::Both), { 112, 22, 80, 44 });
        addCaption("dimmed", 112, 8);
        dimmed->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);

        addCaption("title colours", 212, 8);
        for (const bool pressed : { false, true }) {
            const auto coloured = makeButton(UIButtonType::Custom, Parts::Title);
            coloured->setTitleColor(red, UIControlState::Normal);
            coloured->setTitleColor(UIColor::systemBlueColor(), UIControlState::Highlighted);
            coloured->setHighlighted(pressed);
            add(coloured, { pressed ? 292.0 : 212.0, 22, 70, 44 });
        }

        addCaption("background pictures, normal and pressed", 12, 76);
        for (const bool pressed : { false, true }) {
            const auto backed = makeButton(UIButtonType::Custom, Parts::Both);
            backed->setTitleColor(UIColor::blackColor(), UIControlState::Normal);
            backed->setBackgroundImage(plainImage({ 4, 4 }, QColor(255, 220, 120)), UIControlState::Normal);
            backed->setBackgroundImage(
                plainImage({ 4, 4 }, QColor(150, 210, 255)), UIControlState::Highlighted);
            backed->setHighlighted(pressed);
            add(backed, { pressed ? 132.0 : 12.0, 92, 108, 44 });
        }

        addCaption("content insets 12, 20; image insets left 10, right -10", 12, 146);
        const auto inset = makeButton(UIButtonType::System, Parts::Both);
        inset->setContentEdgeInsets({ 12, 20, 12, 20 });
        inset->setBackgroundColor(UIColor::systemGray6Color());
        add(inset, { CGPoint(12, 162), inset->intrinsicContentSize() });
        const auto moved = makeButton(UIButtonType::System, Parts::Both);
        moved->setContentEdgeInsets({ 12, 20, 12, 20 });
        moved->setImageEdgeInsets({ 0, 10, 0, -10 });
        moved->setBackgroundColor(UIColor::systemGray6Color());
        add(moved, { CGPoint(132, 162), moved->intrinsicContentSize() });
        const auto narrow = makeButton(UIButtonType::System, Parts::Both);
        narrow->setTitle(QStringLiteral("A title too long for it"), UIControlState::Normal);
        narrow->setBackgroundColor(UIColor::systemGray6Color());
        add(narrow, { 252, 162, 126, 48 });
        return tinted;
    }

    static constexpr double looksHeight = 224;
};

TEST_P(ButtonsGallery, EveryTypeInEveryState)
{
    for (int index = 0; index < int(std::size(states)); ++index)
        addCaption(states[index].name, left(index), 8);
    const struct {
        UIButtonType type;
        const char* name;
    } types[] = { { UIButtonType::Custom, "custom" }, { UIButtonType::System, "system" },
        { UIButtonType::DetailDisclosure, "detail disclosure" } };
    double y = 26;
    for (const auto& type : types) {
        addCaption(type.name, margin, y);
        addRow(type.type, Parts::Picture, y + 16);
        addRow(type.type, Parts::Both, y + 48);
        if (type.type != UIButtonType::DetailDisclosure)
            addRow(type.type, Parts::Title, y + 80);
        y += 116;
    }
    expectPicture("buttons", y - 30);
}

TEST_P(ButtonsGallery, TintsBackgroundsAndInsets)
{
    addLooks();
    expectPicture("button-looks", looksHeight);
}

TEST_P(ButtonsGallery, OneButtonInAnotherTintOrStateIsNoticed)
{
    const auto tinted = addLooks();
    tinted->setTintColor(nullptr);
    expectOtherPicture("button-looks", looksHeight);
    tinted->setTintColor(UIColor::colorWithRed(0.9, 0.1, 0.2, 1));
    tinted->setEnabled(false);
    expectOtherPicture("button-looks", looksHeight);
}

GALLERY_LOOKS(ButtonsGallery);

} // namespace
