#include "platform/graphics/FontCatalogue.h"

#include <QFontDatabase>

#include <fontconfig/fontconfig.h>

#include <span>

namespace {

struct ConfigDeleter {
    void operator()(FcConfig* config) const { FcConfigDestroy(config); }
};
using Config = std::unique_ptr<FcConfig, ConfigDeleter>;

// The folders are those of fontconfig's own configuration, for fonts and for what it has found out about
// them. Of the fonts only some families are taken; %1 is the patterns of these.
const NSString familiesOnly = QStringLiteral(R"(<?xml version="1.0"?>
<fontconfig>
  <dir>/usr/share/fonts</dir>
  <dir>/usr/local/share/fonts</dir>
  <dir prefix="xdg">fonts</dir>
  <dir>~/.fonts</dir>
  <cachedir>/var/cache/fontconfig</cachedir>
  <cachedir prefix="xdg">fontconfig</cachedir>
  <selectfont>
    <acceptfont>%1</acceptfont>
    <rejectfont><pattern/></rejectfont>
  </selectfont>
</fontconfig>)");
const NSString acceptedFamily
    = QStringLiteral(R"(<pattern><patelt name="family"><string>%1</string></patelt></pattern>)");

// Of several fonts that have a letter the system's rules prefer those that have Latin letters, too, which are
// often the ones with serifs. These have none, and some are made for lines as low as those of Latin text.
constexpr const char* preferredFamilies[]
    = { "Noto Sans Arabic UI", "Noto Sans Armenian", "Noto Sans Bengali UI", "Noto Sans Devanagari UI",
          "Noto Sans Ethiopic", "Noto Sans Georgian", "Noto Sans Gujarati UI", "Noto Sans Gurmukhi UI",
          "Noto Sans Hebrew", "Noto Sans Kannada UI", "Noto Sans Khmer UI", "Noto Sans Lao UI",
          "Noto Sans Malayalam UI", "Noto Sans Myanmar UI", "Noto Sans Oriya UI", "Noto Sans Sinhala UI",
          "Noto Sans Tamil UI", "Noto Sans Telugu UI", "Noto Sans Thai UI" };
// They come after the families of the text and before all others. %1 is a string for each.
const NSString preferredFirst = QStringLiteral(R"(<?xml version="1.0"?>
<fontconfig>
  <match target="pattern">
    <edit name="family" mode="append_last" binding="strong">%1</edit>
  </match>
</fontconfig>)");

bool parse(FcConfig& config, const NSString& text)
{
    const QByteArray bytes = text.toUtf8();
    return FcConfigParseAndLoadFromMemory(
        &config, reinterpret_cast<const FcChar8*>(bytes.constData()), FcFalse);
}

// As the system has it, but for the families that are preferred.
Config allFonts()
{
    NSString preferred;
    for (const char* family : preferredFamilies)
        preferred += QStringLiteral("<string>%1</string>").arg(QLatin1String(family));
    Config config(FcConfigCreate());
    if (parse(*config, preferredFirst.arg(preferred)) && FcConfigParseAndLoad(config.get(), nullptr, FcTrue)
        && FcConfigBuildFonts(config.get()))
        return config;
    return Config(FcInitLoadConfigAndFonts());
}

bool isConfiguredByTheEnvironment()
{
    for (const char* name : { "FONTCONFIG_FILE", "FONTCONFIG_PATH", "FONTCONFIG_SYSROOT" })
        if (qEnvironmentVariableIsSet(name))
            return true;
    return false;
}

bool has(const FcCharSet* characters, char32_t character)
{
    return characters && FcCharSetHasChar(characters, character);
}

// Whether nothing is drawn for the character itself, so that no font needs to have it.
bool isInvisible(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return character >= 0xFE00 && character <= 0xFE0F; // which of two looks a letter has
    }
}

// The character that begins at the place, which moves behind it.
char32_t nextCharacter(const NSString& text, qsizetype& place)
{
    const QChar unit = text[place++];
    if (unit.isHighSurrogate() && place < text.size() && text[place].isLowSurrogate())
        return QChar::surrogateToUcs4(unit, text[place++]);
    return unit.unicode();
}

// Qt reads the fonts of the current configuration when it is first asked for one, and again after it has
// dropped a font that the application brought along, even one that could not be read.
void use(FcConfig* config)
{
    FcConfigSetCurrent(config);
    QFontDatabase::addApplicationFontFromData(QByteArrayLiteral("no font"));
    QFontDatabase::removeAllApplicationFonts();
}

} // namespace

// Some families by name, and which characters all faces of each have.
class FontCatalogue::Families {
public:
    explicit Families(std::vector<NSString> names);
    // Makes them the only ones that are known. False where one of them is not installed.
    bool read();
    // Whether the family, or the first one in its place, has all characters of the text.
    bool canDraw(const NSString& text, const NSString& family) const;

private:
    struct CharactersDeleter {
        void operator()(FcCharSet* characters) const { FcCharSetDestroy(characters); }
    };
    struct Family {
        NSString name;
        std::unique_ptr<FcCharSet, CharactersDeleter> characters; // null: no face is found
    };

    void addFace(FcPattern&);

    std::vector<Family> m_families;
};

FontCatalogue::Families::Families(std::vector<NSString> names)
{
    for (NSString& name : names)
        m_families.push_back({ std::move(name), nullptr });
}

bool FontCatalogue::Families::read()
{
    NSString accepted;
    for (const Family& family : m_families)
        accepted += acceptedFamily.arg(family.name.toHtmlEscaped());
    const Config config(FcConfigCreate());
    if (!parse(*config, familiesOnly.arg(accepted)) || !FcConfigBuildFonts(config.get()))
        return false;
    const FcFontSet* const faces = FcConfigGetFonts(config.get(), FcSetSystem);
    for (FcPattern* const face : std::span(faces->fonts, static_cast<std::size_t>(faces->nfont)))
        addFace(*face);
    if (std::any_of(m_families.begin(), m_families.end(), [](const Family& it) { return !it.characters; }))
        return false;
    use(config.get());
    return true;
}

void FontCatalogue::Families::addFace(FcPattern& face)
{
    FcCharSet* characters = nullptr;
    if (FcPatternGetCharSet(&face, FC_CHARSET, 0, &characters) != FcResultMatch)
        return;
    FcChar8* name = nullptr;
    for (int index = 0; FcPatternGetString(&face, FC_FAMILY, index, &name) == FcResultMatch; ++index)
        for (Family& family : m_families) {
            if (family.name != NSString::fromUtf8(reinterpret_cast<const char*>(name)))
                continue;
            if (!family.characters)
                family.characters.reset(FcCharSetCopy(characters));
            else if (family.characters.get() != characters) // faces that have the same share one set
                family.characters.reset(FcCharSetIntersect(family.characters.get(), characters));
        }
}

bool FontCatalogue::Families::canDraw(const NSString& text, const NSString& family) const
{
    const auto found = std::find_if(
        m_families.begin(), m_families.end(), [&](const Family& it) { return it.name == family; });
    const FcCharSet* const own = found == m_families.end() ? nullptr : found->characters.get();
    const FcCharSet* const standIn = m_families.front().characters.get();
    for (qsizetype place = 0; place < text.size();) {
        const char32_t character = nextCharacter(text, place);
        if (!has(own, character) && !has(standIn, character) && !isInvisible(character))
            return false;
    }
    return true;
}

FontCatalogue::FontCatalogue(std::vector<NSString> families)
    : m_families([&] {
        auto read = std::make_unique<Families>(std::move(families));
        return isConfiguredByTheEnvironment() || !read->read() ? nullptr : std::move(read);
    }())
    , m_isWhole(!m_families)
{
}

FontCatalogue::~FontCatalogue() = default;

void FontCatalogue::readFor(const NSString& text, const NSString& family)
{
    if (!m_isWhole && !m_families->canDraw(text, family))
        readAll();
}

void FontCatalogue::readAll()
{
    const std::scoped_lock lock(m_reading);
    if (m_isWhole)
        return;
    if (const Config config = allFonts())
        use(config.get());
    m_isWhole = true;
}
