// What one frame of a scrolling list costs: thirteen rows of five contents, drawn into a real window.
//
// Draws the same motion in both forms, each row flattened into one picture and a node for each content,
// and prints the time of a frame. A row leaves and another enters every few frames, as in a list. Then it
// draws a list at rest in which only a ring grows, as while a recording plays.
//     scroll_frame_benchmark [frames of each]
#include "benchmarks/InstructionCount.h"
#include "benchmarks/Timings.h"
#include "platform/host/SceneItem.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QQuickWindow>

#include <cstdlib>
#include <cstring>

namespace {

constexpr double scale = 2;
constexpr double rowHeight = 68;
constexpr double step = 7; // points a frame: a brisk flick
const CGSize screen(390, 844);

QImage picture(double width, double height, const QColor& color)
{
    QImage image(qRound(width * scale), qRound(height * scale), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(color);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(image.rect(), 12, 12);
    return image;
}

// A list whose content offset is set; rows keep their layers while they are on the screen.
class List {
public:
    FrameList frame(double offset, double ringEnd = 0)
    {
        FrameList list { screen, scale, {} };
        FrameItem root;
        root.layer = LayerID { 1 };
        root.bounds = { CGPoint(), screen };
        root.backgroundColor = Qt::white;
        list.items.push_back(root);
        FrameItem scrollView = root;
        scrollView.layer = LayerID { 2 };
        scrollView.bounds = { CGPoint(0, offset), screen };
        scrollView.transform = CGAffineTransform::fromTranslate(0, -offset);
        scrollView.clipsToBounds = true;
        list.items.push_back(scrollView);
        const int first = int(offset / rowHeight);
        for (int row = first; row * rowHeight < offset + screen.height(); ++row)
            addRow(list, row);
        if (ringEnd > 0)
            addRing(list, ringEnd);
        list.items[0].subtreeEnd = list.items[1].subtreeEnd = int(list.items.size());
        return list;
    }

private:
    void addRow(FrameList& list, int row)
    {
        const auto id = std::uint64_t(row + 1) * 16;
        const int start = int(list.items.size());
        FrameItem cell;
        cell.layer = LayerID { id };
        cell.transform = CGAffineTransform::fromTranslate(0, row * rowHeight);
        cell.bounds = { 0, 0, screen.width(), rowHeight };
        cell.backgroundColor = Qt::white;
        list.items.push_back(cell);
        const CGRect places[] = { { 12, 10, 48, 48 }, { 72, 10, 220, 22 }, { 72, 36, 180, 18 },
            { 310, 12, 68, 16 }, { 340, 34, 24, 24 } };
        for (std::size_t i = 0; i < std::size(places); ++i) {
            FrameItem item;
            item.layer = LayerID { id + 1 + i };
            item.transform = CGAffineTransform::fromTranslate(places[i].x(), places[i].y());
            item.bounds = { CGPoint(), places[i].size() };
            item.content = FrameImage { contents(row, i, places[i]), item.bounds, {} };
            item.subtreeEnd = int(list.items.size()) + 1;
            list.items.push_back(item);
        }
        list.items[std::size_t(start)].subtreeEnd = int(list.items.size());
    }

    void addRing(FrameList& list, double end)
    {
        FrameItem ring;
        ring.layer = LayerID { 3 };
        ring.transform = CGAffineTransform::fromTranslate(12, 10);
        ring.bounds = { 0, 0, 48, 48 };
        ring.content = FrameShape { m_circle, {}, Qt::red, 3, Qt::RoundCap, 0, end };
        ring.subtreeEnd = int(list.items.size()) + 1;
        list.items.push_back(ring);
    }

    // Texts differ from row to row, as they do in a list.
    QImage contents(int row, std::size_t index, const CGRect& place)
    {
        QImage& image = m_contents[std::size_t(row) % 64][index];
        if (image.isNull())
            image = picture(place.width(), place.height(), QColor::fromHsv((row * 37) % 360, 120, 160));
        return image;
    }

    static std::shared_ptr<const QPainterPath> makeCircle()
    {
        const auto circle = std::make_shared<QPainterPath>();
        circle->addEllipse(CGRect(2, 2, 44, 44));
        return circle;
    }

    const std::shared_ptr<const QPainterPath> m_circle = makeCircle();
    QImage m_contents[64][5];
};

class Stage {
public:
    explicit Stage(FlatteningPlan::FlattensMoving form)
        : m_item(m_window.contentItem(), form)
    {
        m_window.setColor(Qt::white);
        m_window.resize(qRound(screen.width() * scale), qRound(screen.height() * scale));
        m_item.setSize(m_window.size());
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, [this] { ++m_frames; });
        m_item.setFrameList(m_list.frame(0));
        m_window.show();
        while (m_frames == 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    // From the new list to the drawn picture.
    void draw(double offset, double ringEnd = 0)
    {
        const int drawn = m_frames;
        m_item.setFrameList(m_list.frame(offset, ringEnd));
        while (m_frames == drawn)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

private:
    QQuickWindow m_window;
    SceneItem m_item;
    List m_list;
    int m_frames = 0;
};

// Draws each frame, numbered from 1, and answers how long the median took.
template <typename Draw> double drawFrames(const char* name, int frames, Draw draw)
{
    Timings times;
    for (int frame = 1; frame <= frames; ++frame) {
        InstructionCount::begin();
        times.measure([&] { draw(frame); });
        InstructionCount::end(name);
    }
    times.print(name);
    return times.median();
}

double scroll(const char* name, FlatteningPlan::FlattensMoving form, int frames)
{
    Stage stage(form);
    return drawFrames(name, frames, [&](int frame) { stage.draw(frame * step); });
}

} // namespace

int main(int argc, char** argv)
{
    for (const auto& [name, value] : { std::pair { "QT_QPA_PLATFORM", "offscreen" },
             std::pair { "QT_QUICK_BACKEND", "software" }, std::pair { "QT_QPA_UPDATE_IDLE_TIME", "0" } })
        qputenv(name, value);
    const QGuiApplication application(argc, argv);
    const int frames = argc > 1 ? std::max(std::atoi(argv[1]), 1) : 1000;
    Timings::printHeading();
    const double nodes = scroll("a node for each content", FlatteningPlan::FlattensMoving::No, frames);
    const double flattened = scroll("rows flattened", FlatteningPlan::FlattensMoving::Yes, frames);
    std::printf("flattened rows are %.1f times faster\n", nodes / flattened);
    Stage stage(FlatteningPlan::FlattensMoving::Yes);
    drawFrames("a ring grows", frames, [&](int frame) { stage.draw(0, double(frame) / frames); });
    return 0;
}
