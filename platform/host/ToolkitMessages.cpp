#include "platform/host/ToolkitMessages.h"

#include <QString>
#include <QtGlobal>

namespace {

QtMessageHandler sayAsBefore = nullptr;

void say(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (!message.startsWith(QLatin1String("  OpenType support missing for ")))
        sayAsBefore(type, context, message);
}

} // namespace

void ToolkitMessages::dropSearchesForFonts()
{
    if (!sayAsBefore)
        sayAsBefore = qInstallMessageHandler(say);
}
