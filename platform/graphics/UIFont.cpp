#include "platform/graphics/UIFont.h"

#include "platform/graphics/FontCatalogue.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QRawFont>
#include <QtEndian>

#include <array>
#include <cstdio>

namespace {

const NSString systemFamily = QStringLiteral("Inter");
const NSString emojiFamily = QStringLiteral("Noto Color Emoji");

struct NamedFace {
    NSString name;
    UIFont::Face face;
};

// A written name stands for a typeface that this system has, of the same weight and width.
const std::array<NamedFace, 2>& namedFaces()
{
    static const std::array<NamedFace, 2> faces { {
        { QStringLiteral("AvenirNext-Regular"), { QStringLiteral("Lato"), UIFontWeight::Regular, 100 } },
        { QStringLiteral("AvenirNextCondensed-Bold"),
            { QStringLiteral("Roboto Condensed"), UIFontWeight::Bold, 78 } },
    } };
    return faces;
}

FontCatalogue& catalogue()
{
    static FontCatalogue fonts([] {
        std::vector<NSString> families { systemFamily };
        for (const NamedFace& named : namedFaces())
            families.push_back(named.face.family);
        return families;
    }());
    return fonts;
}

// What has letters that a face lacks, before the system's own choice, which may take emoji from a font that
// has them without colours. They are never the first to be asked: their digits are pictures, too.
const QStringList& fallbackFamilies()
{
    static const QStringList systemAlone { systemFamily };
    if (!catalogue().isWhole())
        return systemAlone;
    static const QStringList families
        = QFontDatabase::hasFamily(systemFamily) ? QStringList { systemFamily, emojiFamily } : systemAlone;
    return families;
}

// How far the lines of a face reach from the baseline and from each other, in parts of its size.
struct LineReach {
    double ascender;
    double descender;
    double leading;
};

// As the face's own table of lines says.
std::optional<LineReach> lineReachOf(const QFont& font)
{
    const QRawFont face = QRawFont::fromFont(font);
    const QByteArray table = face.fontTable("hhea");
    if (!(face.unitsPerEm() > 0) || table.size() < 10)
        return std::nullopt;
    const auto partAt = [&](qsizetype offset) {
        return qFromBigEndian<qint16>(table.constData() + offset) / face.unitsPerEm();
    };
    const LineReach reach { partAt(4), partAt(6), std::max(0.0, partAt(8)) };
    return reach.ascender > 0 ? std::optional(reach) : std::nullopt;
}

// Without letters nothing that is written can be read, and nothing else tells why.
void complainOnceWithoutLetters(const QFontMetricsF& metrics)
{
    static std::once_flag looked;
    std::call_once(looked, [&] {
        if (!metrics.inFont(QLatin1Char('a')))
            std::fputs("no usable font is installed: texts cannot be read\n", stderr);
    });
}

bool isUsableSize(CGFloat size) { return size > 0 && size <= UIFont::largestSize; }

// Measures are kept in 64ths of a pixel, which is too coarse for the smallest sizes.
int pixelSizeFor(CGFloat pointSize) { return std::max(8, qRound(pointSize)); }

} // namespace

UIFont::UIFont(NSString name, const Face& face, CGFloat size)
    : m_name(std::move(name))
    , m_face(face)
    , m_pointSize(size)
{
}

std::shared_ptr<UIFont> UIFont::fontWithName(const NSString& name, CGFloat size)
{
    const auto& faces = namedFaces();
    const auto found
        = std::find_if(faces.begin(), faces.end(), [&](const NamedFace& it) { return it.name == name; });
    return found == faces.end() ? nullptr : fontWithFace(name, found->face, size);
}

std::shared_ptr<UIFont> UIFont::systemFontOfSize(CGFloat size, UIFontWeight weight)
{
    return fontWithFace(
        QStringLiteral("System-%1").arg(static_cast<int>(weight)), { systemFamily, weight, 100 }, size);
}

std::shared_ptr<UIFont> UIFont::boldSystemFontOfSize(CGFloat size)
{
    return systemFontOfSize(size, UIFontWeight::Bold);
}

std::shared_ptr<UIFont> UIFont::fontWithFace(const NSString& name, const Face& face, CGFloat size)
{
    return isUsableSize(size) ? make<UIFont>(name, face, size) : nullptr;
}

std::shared_ptr<UIFont> UIFont::fontWithSize(CGFloat size) const
{
    return fontWithFace(m_name, m_face, size);
}

void UIFont::prepareFor(const NSString& text) const { catalogue().readFor(text, m_face.family); }

NSString UIFont::familyName() const { return QFontInfo(qFont()).family(); }

CGFloat UIFont::qFontScale() const { return m_pointSize / pixelSizeFor(m_pointSize); }

QFont UIFont::qFont() const
{
    QFont font;
    font.setFamilies(QStringList { m_face.family } + fallbackFamilies());
    font.setWeight(static_cast<QFont::Weight>(m_face.weight));
    font.setPixelSize(pixelSizeFor(m_pointSize));
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    if (isStandIn())
        font.setStretch(m_face.stretchWhenMissing);
    return font;
}

bool UIFont::isStandIn() const
{
    if (m_face.stretchWhenMissing == 100)
        return false; // nothing depends on the answer, so nothing is looked up
    std::call_once(m_lookedUp, [this] { m_isStandIn = !QFontDatabase::hasFamily(m_face.family); });
    return m_isStandIn;
}

const UIFont::Metrics& UIFont::metrics() const
{
    std::call_once(m_measured, [this] {
        const QFontMetricsF metrics(qFont());
        complainOnceWithoutLetters(metrics);
        const CGFloat scale = qFontScale();
        m_metrics = { metrics.ascent() * scale, -metrics.descent() * scale, metrics.capHeight() * scale,
            metrics.xHeight() * scale, std::max(0.0, metrics.leading()) * scale };
        // Some faces tell Qt's table a lower ascender and make up for it between the lines; there the rings
        // and accents of capitals would be cut off above a first line.
        const auto reach = metrics.leading() > 0 ? lineReachOf(qFont()) : std::nullopt;
        if (!reach)
            return;
        m_metrics.ascender = reach->ascender * m_pointSize;
        m_metrics.descender = reach->descender * m_pointSize;
        m_metrics.leading = reach->leading * m_pointSize;
    });
    return m_metrics;
}

bool UIFont::isEqual(const NSObject* object) const
{
    const auto* other = dynamic_cast<const UIFont*>(object);
    return other && other->m_name == m_name && other->m_pointSize == m_pointSize;
}

std::size_t UIFont::hash() const { return qHashMulti(0, m_name, m_pointSize); }

NSString UIFont::description() const
{
    return NSObject::description() + QStringLiteral(" %1 %2 pt").arg(m_name).arg(m_pointSize);
}
