#include "platform/controls/UILabel.h"
#include "tests/gallery/Gallery.h"

namespace {

class LabelsGallery : public Gallery {
protected:
    // On a grey ground, so that its edges show.
    std::shared_ptr<UILabel> addLabel(const QString& text, const CGRect& rect)
    {
        const auto label = make<UILabel>();
        label->setText(text);
        label->setBackgroundColor(UIColor::systemGray6Color());
        return add(label, rect);
    }
    // A line from edge to edge, a pixel high.
    void addLine(double y)
    {
        const auto line = make<UIView>();
        line->setBackgroundColor(UIColor::colorWithRed(1, 0, 0, 1));
        add(line, { margin, y, width - 2 * margin, 1 / GetParam().scale });
    }

    static QString sentence()
    {
        return QStringLiteral("The tram bends into the square and its wheels sing for as long as it turns.");
    }
};

TEST_P(LabelsGallery, AlignmentsAndFonts)
{
    const struct {
        NSTextAlignment alignment;
        const char* name;
    } alignments[] = { { NSTextAlignment::Left, "left" }, { NSTextAlignment::Center, "centre" },
        { NSTextAlignment::Right, "right" }, { NSTextAlignment::Natural, "natural" } };
    double y = 8;
    for (const auto& row : alignments) {
        addLabel(QString::fromLatin1(row.name), { margin, y, 180, 24 })->setTextAlignment(row.alignment);
        const auto two
            = addLabel(QStringLiteral("two lines,\n") + QString::fromLatin1(row.name), { 198, y, 180, 44 });
        two->setTextAlignment(row.alignment);
        two->setNumberOfLines(2);
        y += 48;
    }
    addLabel(QStringLiteral("שלום, naturally"), { margin, y, 366, 24 });
    y += 32;
    const std::shared_ptr<UIFont> fonts[] = { UIFont::systemFontOfSize(13), UIFont::systemFontOfSize(17),
        UIFont::systemFontOfSize(17, UIFontWeight::Medium), UIFont::boldSystemFontOfSize(17),
        UIFont::fontWithName(QStringLiteral("AvenirNext-Regular"), 17),
        UIFont::fontWithName(QStringLiteral("AvenirNextCondensed-Bold"), 22) };
    for (const auto& font : fonts) {
        const auto label = addLabel(QStringLiteral("Hamburgefonstiv 0123 Åqjg"), {});
        label->setFont(font);
        label->setBackgroundColor(nullptr);
        label->setFrame({ CGPoint(margin, y), label->intrinsicContentSize() });
        y += 28;
    }
    expectPicture("label-alignments", y + 4);
}

TEST_P(LabelsGallery, WrappingAndTruncation)
{
    const struct {
        NSLineBreakMode mode;
        const char* name;
    } modes[] = { { NSLineBreakMode::ByWordWrapping, "words" },
        { NSLineBreakMode::ByCharWrapping, "characters" }, { NSLineBreakMode::ByClipping, "clipped" },
        { NSLineBreakMode::ByTruncatingHead, "head" }, { NSLineBreakMode::ByTruncatingTail, "tail" },
        { NSLineBreakMode::ByTruncatingMiddle, "middle" } };
    const auto font = UIFont::systemFontOfSize(13);
    double y = 8;
    for (const auto& row : modes) {
        addCaption(row.name, margin, y);
        const auto one = addLabel(sentence(), { margin, y + 14, 130, 18 });
        one->setFont(font);
        one->setLineBreakMode(row.mode);
        const auto several = addLabel(sentence(), { 158, y + 14, 130, 36 });
        several->setFont(font);
        several->setLineBreakMode(row.mode);
        several->setNumberOfLines(2);
        y += 56;
    }
    addCaption("as many lines as it needs, in the size that fits", margin, y);
    const auto all = addLabel(sentence(), {});
    all->setFont(font);
    all->setNumberOfLines(0);
    all->setFrame({ CGPoint(margin, y + 14), all->sizeThatFits({ 180, 1000 }) });
    expectPicture("label-wrapping", y + 66);
}

TEST_P(LabelsGallery, BaselinesAndColours)
{
    addCaption("on one baseline", margin, 8);
    constexpr double baseline = 56;
    addLine(baseline);
    double x = margin;
    for (const double size : { 11.0, 17.0, 24.0, 36.0 }) {
        const auto label = addLabel(QStringLiteral("Axg"), {});
        label->setBackgroundColor(nullptr);
        label->setFont(UIFont::systemFontOfSize(size));
        label->sizeToFit();
        label->setFrame({ CGPoint(x, baseline - label->firstBaseline()), label->bounds().size() });
        x += 3 * size;
    }
    addCaption("in the middle of its height", margin, 84);
    addLabel(QStringLiteral("middle"), { margin, 100, 100, 60 });
    const auto onColour = addLabel(QStringLiteral("white on red"), { 124, 100, 120, 60 });
    onColour->setBackgroundColor(UIColor::colorWithRed(0.9, 0.2, 0.3, 1));
    onColour->setTextColor(UIColor::whiteColor());
    onColour->setTextAlignment(NSTextAlignment::Center);
    const auto faded = addLabel(QStringLiteral("half as strong"), { 256, 100, 122, 60 });
    faded->setAlpha(0.5);
    addCaption("at places between the pixels", margin, 170);
    for (int step = 0; step < 4; ++step)
        addLabel(QStringLiteral("+ %1/8").arg(step),
            { margin + 90 * step + step / 8.0, 186 + step / 8.0, 80, 24 });
    expectPicture("label-baselines", 220);
}

GALLERY_LOOKS(LabelsGallery);

} // namespace
