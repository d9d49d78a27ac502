#include "platform/foundation/XMLText.h"

#include <QRegularExpression>

#include <unicode/ucnv.h>

#include <array>
#include <memory>

namespace {

struct ConverterClose {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterClose>;

// Null for an encoding that ICU does not know.
Converter converterFor(const QByteArray& encoding)
{
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(encoding.constData(), &status));
    if (U_SUCCESS(status)) // what is no character ends the reading instead of becoming a question mark
        ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

// One name for each encoding, whatever it is called; empty for one that is not known.
QByteArray standardName(const QByteArray& encoding)
{
    const Converter converter = converterFor(encoding);
    UErrorCode status = U_ZERO_ERROR;
    return converter ? QByteArray(ucnv_getName(converter.get(), &status)) : QByteArray();
}

struct Signature {
    QByteArrayView bytes;
    const char* encoding;
    qsizetype markSize; // how many of the bytes are a byte order mark
};

// How an XML document begins in each family of encodings; those that contain others come first.
const std::array<Signature, 9>& signatures()
{
    using namespace std::string_view_literals;
    const auto view = [](std::string_view bytes) {
        return QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size()));
    };
    static const std::array<Signature, 9> all { {
        { view("\xFF\xFE\0\0"sv), "UTF-32LE", 4 },
        { view("\0\0\xFE\xFF"sv), "UTF-32BE", 4 },
        { view("\xEF\xBB\xBF"sv), "UTF-8", 3 },
        { view("\xFF\xFE"sv), "UTF-16LE", 2 },
        { view("\xFE\xFF"sv), "UTF-16BE", 2 },
        { view("<\0\0\0"sv), "UTF-32LE", 0 },
        { view("\0\0\0<"sv), "UTF-32BE", 0 },
        { view("<\0"sv), "UTF-16LE", 0 },
        { view("\0<"sv), "UTF-16BE", 0 },
    } };
    return all;
}

// The name in the declaration that the text begins with; empty without one.
QByteArray declaredEncoding(const NSString& text)
{
    static const QRegularExpression declaration(
        QStringLiteral("^<\\?xml\\s[^>]*?encoding\\s*=\\s*(?:\"([^\"<>]*)\"|'([^'<>]*)')"));
    const QRegularExpressionMatch match = declaration.match(text.left(1000));
    return (match.captured(1) + match.captured(2)).toUtf8();
}

// UTF-16 and UTF-32 leave the order of the bytes to what was found.
bool isNamedBy(const QByteArray& declared, const QByteArray& found)
{
    const QByteArray name = standardName(declared);
    const bool leavesOrderOpen = name == "UTF-16" || name == "UTF-32";
    return name == standardName(found) || (leavesOrderOpen && found.startsWith(name));
}

int lineOf(const NSString& text) { return static_cast<int>(text.count(u'\n')) + 1; }

NSString quoted(const QByteArray& encoding) { return u'"' + NSString::fromUtf8(encoding) + u'"'; }

XMLText decodeFrom(QByteArrayView bytes, const QByteArray& encoding)
{
    const Converter converter = converterFor(encoding);
    if (!converter)
        return { {}, 1, QStringLiteral("the encoding %1 is not known").arg(quoted(encoding)) };
    NSString text(bytes.size() * 2 + 1, Qt::Uninitialized); // a byte gives two units at most
    auto* const begin = reinterpret_cast<char16_t*>(text.data());
    char16_t* end = begin;
    const char* source = bytes.data();
    UErrorCode status = U_ZERO_ERROR;
    ucnv_toUnicode(converter.get(), &end, begin + text.size(), &source, source + bytes.size(), nullptr,
        true /* no more follows */, &status);
    text.truncate(end - begin);
    if (U_FAILURE(status))
        return { {}, lineOf(text),
            QStringLiteral("the text is not in its encoding, %1").arg(quoted(encoding)) };
    return { text, 0, {} };
}

} // namespace

XMLText XMLText::decode(const NSData& data)
{
    const QByteArrayView bytes(data);
    for (const Signature& signature : signatures()) {
        if (!bytes.startsWith(signature.bytes))
            continue;
        XMLText result = decodeFrom(bytes.sliced(signature.markSize), signature.encoding);
        const QByteArray declared = declaredEncoding(result.text);
        if (!declared.isEmpty() && !isNamedBy(declared, signature.encoding))
            return { {}, 1,
                QStringLiteral("the text declares the encoding %1, but is in %2")
                    .arg(quoted(declared), quoted(signature.encoding)) };
        return result;
    }
    const QByteArray declared
        = declaredEncoding(NSString::fromLatin1(bytes.first(std::min<qsizetype>(bytes.size(), 1000))));
    if (declared.isEmpty())
        return decodeFrom(bytes, "UTF-8");
    XMLText result = decodeFrom(bytes, declared);
    if (result.problem.isEmpty() && declaredEncoding(result.text) != declared)
        return { {}, 1,
            QStringLiteral("the text is not in the encoding that it declares, %1").arg(quoted(declared)) };
    return result;
}
