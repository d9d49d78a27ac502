#include "platform/foundation/EncodedText.h"

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

struct Mark {
    QByteArrayView bytes;
    const char* encoding;
};

// The byte order marks; those that contain others come first.
const std::array<Mark, 5>& marks()
{
    using namespace std::string_view_literals;
    const auto view = [](std::string_view bytes) {
        return QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size()));
    };
    static const std::array<Mark, 5> all { {
        { view("\xFF\xFE\0\0"sv), "UTF-32LE" },
        { view("\0\0\xFE\xFF"sv), "UTF-32BE" },
        { view("\xEF\xBB\xBF"sv), "UTF-8" },
        { view("\xFF\xFE"sv), "UTF-16LE" },
        { view("\xFE\xFF"sv), "UTF-16BE" },
    } };
    return all;
}

int lineOf(const NSString& text) { return static_cast<int>(text.count(u'\n')) + 1; }

} // namespace

EncodedText::Form EncodedText::formOf(const NSData& data)
{
    const QByteArrayView bytes(data);
    for (const Mark& mark : marks())
        if (bytes.startsWith(mark.bytes))
            return { mark.encoding, mark.bytes.size() };
    const auto isZero = [&](qsizetype index) { return index < bytes.size() && bytes[index] == '\0'; };
    const auto isNotZero = [&](qsizetype index) { return index < bytes.size() && bytes[index] != '\0'; };
    if (isZero(1) && isZero(2) && isZero(3) && isNotZero(0))
        return { "UTF-32LE" };
    if (isZero(0) && isZero(1) && isZero(2) && isNotZero(3))
        return { "UTF-32BE" };
    if (isNotZero(0) && isZero(1))
        return { "UTF-16LE" };
    if (isZero(0) && isNotZero(1))
        return { "UTF-16BE" };
    return { nullptr };
}

QByteArray EncodedText::standardName(const QByteArray& encoding)
{
    const Converter converter = converterFor(encoding);
    UErrorCode status = U_ZERO_ERROR;
    return converter ? QByteArray(ucnv_getName(converter.get(), &status)) : QByteArray();
}

EncodedText EncodedText::decode(const NSData& data)
{
    const Form form = formOf(data);
    return decode(data, form.encoding ? form.encoding : "UTF-8", form.markSize);
}

EncodedText EncodedText::decode(const NSData& data, const QByteArray& encoding, qsizetype markSize)
{
    const Converter converter = converterFor(encoding);
    if (!converter)
        return { {}, 1,
            QStringLiteral("the encoding \"%1\" is not known").arg(NSString::fromUtf8(encoding)) };
    const QByteArrayView bytes = QByteArrayView(data).sliced(markSize);
    NSString text(bytes.size() * 2 + 1, Qt::Uninitialized); // a byte gives two units at most
    auto* const begin = reinterpret_cast<char16_t*>(text.data());
    char16_t* end = begin;
    const char* source = bytes.data();
    UErrorCode status = U_ZERO_ERROR;
    ucnv_toUnicode(converter.get(), &end, begin + text.size(), &source, source + bytes.size(), nullptr,
        true /* no more follows */, &status);
    text.truncate(end - begin);
    if (U_SUCCESS(status))
        return { std::move(text), 0, {} };
    const int line = lineOf(text);
    return { std::move(text), line,
        QStringLiteral("the text is not in its encoding, \"%1\"").arg(NSString::fromUtf8(encoding)) };
}
