// What a layout pass costs on a screen of twelve cells, each an island of constraints of its own.
//
// A cell holds a portrait, three labels, a button with a ring and an icon, and a slider split at a knob:
// twelve views under 45 constraints. Measured are building a cell, a pass in which nothing changed, one in
// which a single knob has moved, and one after the screen has turned; and how many views each of them visits.
//     layout_pass_benchmark [passes]
#include "benchmarks/InstructionCount.h"
#include "benchmarks/Timings.h"
#include "platform/layout/NSLayoutConstraint.h"
#include "platform/views/UIView.h"

#include <QGuiApplication>

#include <cstdlib>

namespace {

using enum NSLayoutAttribute;

int visits = 0;

// A view that counts how often it is laid out.
class CountedView : public UIView {
public:
    using UIView::UIView;
    void layoutSubviews() override { ++visits; }
};

// One whose content has a size of its own, as labels and pictures have.
class SizedView : public CountedView {
public:
    CGSize size { UIViewNoIntrinsicMetric, UIViewNoIntrinsicMetric };
    CGSize intrinsicContentSize() const override { return size; }
};

class Cell {
public:
    Cell(UIView& screen, int row)
        : m_view(make<CountedView>(CGRect(0, row * 108.0, screen.bounds().width(), 108)))
    {
        m_view->setAutoresizingMask(UIViewAutoresizing::FlexibleWidth);
        screen.addSubview(m_view);
        const auto info = add(*m_view);
        const auto portrait = add(*info, { 44, 44 });
        const auto name = add(*info, { 140, 20 });
        const auto time = add(*info, { 60, 16 });
        const auto place = add(*info, { 180, 16 });
        const auto button = add(*info);
        const auto ring = add(*button);
        const auto icon = add(*button, { 24, 24 });
        m_slider = add(*m_view);
        const auto played = add(*m_slider);
        const auto left = add(*m_slider);
        m_knob = add(*m_slider, { 44, 44 });
        const NSLayoutConstraint::Views views { { "info", info }, { "portrait", portrait }, { "name", name },
            { "time", time }, { "place", place }, { "button", button }, { "ring", ring }, { "icon", icon },
            { "slider", m_slider }, { "played", played }, { "left", left }, { "knob", m_knob } };
        NSLayoutConstraint::activateVisualFormats(
            { "H:|-(0)-[info]-(0)-|", "V:|-(0)-[info(64)]", "H:|-(0)-[slider]-(0)-|",
                "V:[info]-(0)-[slider(44)]",
                "H:|-16-[portrait(44)]-12-[name]-(>=8)-[time]-12-[button(44)]-16-|", "V:|-10-[portrait(44)]",
                "V:|-12-[name]", "V:|-14-[time]", "H:[portrait]-12-[place]-(>=8)-[button]",
                "V:[name]-4-[place]", "V:|-10-[button(44)]", "H:|-(4)-[ring]-(4)-|", "V:|-(4)-[ring]-(4)-|",
                "V:|-(0)-[played]-(0)-|", "V:|-(0)-[left]-(0)-|", "V:|-(0)-[knob]-(0)-|",
                "H:|-(0)-[played]-(0)-[left]-(0)-|" },
            views);
        NSLayoutConstraint::activateConstraints(
            std::vector { icon->centerXAnchor().constraintEqualToAnchor(button->centerXAnchor(), 1),
                icon->centerYAnchor().constraintEqualToAnchor(button->centerYAnchor()),
                icon->widthAnchor().constraintLessThanOrEqualToAnchor(button->widthAnchor()),
                icon->heightAnchor().constraintLessThanOrEqualToAnchor(button->heightAnchor()),
                m_knob->widthAnchor().constraintLessThanOrEqualToConstant(66),
                played->rightAnchor().constraintEqualToAnchor(m_knob->centerXAnchor()) });
        moveKnob(0.3);
    }

    void moveKnob(double position)
    {
        if (m_place)
            m_slider->removeConstraint(*m_place);
        m_place = NSLayoutConstraint::constraintWithItem(
            *m_knob, CenterX, NSLayoutRelation::Equal, m_slider.get(), Right, position, 0);
        m_place->setActive(true);
    }

    std::shared_ptr<UIView> view() const { return m_view; }

private:
    static std::shared_ptr<UIView> add(
        UIView& superview, CGSize size = { UIViewNoIntrinsicMetric, UIViewNoIntrinsicMetric })
    {
        auto view = make<SizedView>();
        view->size = size;
        view->setTranslatesAutoresizingMaskIntoConstraints(false);
        superview.addSubview(view);
        return view;
    }

    std::shared_ptr<UIView> m_view;
    std::shared_ptr<UIView> m_slider;
    std::shared_ptr<UIView> m_knob;
    std::shared_ptr<NSLayoutConstraint> m_place;
};

class Bench {
public:
    explicit Bench(int passes)
        : m_passes(passes)
    {
    }

    void run()
    {
        Timings::printHeading();
        measureBuilding();
        measure("pass, nothing changed", "unchanged", [](int) {});
        measure("pass, one knob moved", "knob",
            [this](int pass) { m_cells[std::size_t(pass) % m_cells.size()].moveKnob(pass % 97 / 100.0); });
        measure("pass, all twelve knobs moved", "knobs", [this](int pass) {
            for (Cell& cell : m_cells)
                cell.moveKnob(pass % 97 / 100.0);
        });
        measure("pass, the screen turned", "turned", [this](int pass) {
            m_screen->setFrame({ 0, 0, pass % 2 ? 390.0 : 844.0, 1300 });
        });
    }

private:
    void measureBuilding()
    {
        for (int pass = 0; pass < m_passes / 20 + 1; ++pass) {
            m_cells.clear();
            m_screen = make<CountedView>(CGRect(0, 0, 390, 1300));
            m_building.measure([&] {
                for (int row = 0; row < 12; ++row)
                    m_cells.emplace_back(*m_screen, row);
                m_screen->layoutIfNeeded();
            });
        }
        m_building.print("twelve cells, built and laid out");
    }

    template <typename Change> void measure(const char* name, const char* kind, Change change)
    {
        Timings timings;
        visits = 0;
        InstructionCount::begin();
        for (int pass = 0; pass < m_passes; ++pass)
            timings.measure([&] {
                change(pass);
                m_screen->layoutIfNeeded();
            });
        InstructionCount::end(kind);
        timings.print(name);
        std::printf("%-34s %7.1f views visited a pass\n", "", double(visits) / m_passes);
    }

    int m_passes;
    Timings m_building;
    std::shared_ptr<UIView> m_screen;
    std::vector<Cell> m_cells;
};

} // namespace

int main(int argumentCount, char** arguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argumentCount, arguments);
    Bench(argumentCount > 1 ? std::atoi(arguments[1]) : 2000).run();
}
