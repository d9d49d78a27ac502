#include "platform/layout/VisualFormatError.h"

NSString VisualFormatError::pointingInto(QStringView format) const
{
    NSString shown = format.toString();
    NSString indent;
    for (qsizetype index = 0; index < shown.size(); ++index) {
        if (!shown.at(index).isPrint() && !shown.at(index).isSurrogate())
            shown[index] = u' '; // a tab or a new line would move the caret
        if (index < position && !shown.at(index).isLowSurrogate())
            indent += u' ';
    }
    return QStringLiteral("Cannot use the visual format: ") + message + u'\n' + shown + u'\n' + indent + u'^';
}
