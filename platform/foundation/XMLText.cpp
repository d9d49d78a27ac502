#include "platform/foundation/XMLText.h"

#include "platform/foundation/EncodedText.h"

#include <QRegularExpression>

namespace {

constexpr qsizetype longestDeclaration = 1000;

// The name in the declaration that the text begins with; empty without one.
QByteArray declaredEncoding(const NSString& text)
{
    static const QRegularExpression declaration(
        QStringLiteral("^<\\?xml\\s[^>]*?encoding\\s*=\\s*(?:\"([^\"<>]*)\"|'([^'<>]*)')"));
    const QRegularExpressionMatch match = declaration.match(text.left(longestDeclaration));
    return (match.captured(1) + match.captured(2)).toUtf8();
}

// UTF-16 and UTF-32 leave the order of the bytes to what was found.
bool isNamedBy(const QByteArray& declared, const QByteArray& found)
{
    const QByteArray name = EncodedText::standardName(declared);
    const bool leavesOrderOpen = name == "UTF-16" || name == "UTF-32";
    return name == EncodedText::standardName(found) || (leavesOrderOpen && found.startsWith(name));
}

NSString quoted(const QByteArray& encoding) { return u'"' + NSString::fromUtf8(encoding) + u'"'; }

XMLText wholeOrProblem(EncodedText text)
{
    if (text.problem.isEmpty())
        return { std::move(text.text), 0, {} };
    return { {}, text.problemLine, std::move(text.problem) };
}

} // namespace

XMLText XMLText::decode(const NSData& data)
{
    if (const EncodedText::Form form = EncodedText::formOf(data); form.encoding) {
        XMLText result = wholeOrProblem(EncodedText::decode(data));
        const QByteArray declared = declaredEncoding(result.text);
        if (!declared.isEmpty() && !isNamedBy(declared, form.encoding))
            return { {}, 1,
                QStringLiteral("the text declares the encoding %1, but is in %2")
                    .arg(quoted(declared), quoted(form.encoding)) };
        return result;
    }
    const QByteArray declared = declaredEncoding(NSString::fromLatin1(data.left(longestDeclaration)));
    if (declared.isEmpty())
        return wholeOrProblem(EncodedText::decode(data));
    XMLText result = wholeOrProblem(EncodedText::decode(data, declared));
    if (result.problem.isEmpty() && declaredEncoding(result.text) != declared)
        return { {}, 1,
            QStringLiteral("the text is not in the encoding that it declares, %1").arg(quoted(declared)) };
    return result;
}
