#include "tests/support/TemporaryBundle.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

NSString xmlOf(const QVariant& value)
{
    NSString text;
    switch (value.typeId()) {
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        for (auto each = map.begin(); each != map.end(); ++each)
            text += QStringLiteral("<key>%1</key>").arg(each.key().toHtmlEscaped()) + xmlOf(each.value());
        return QStringLiteral("<dict>%1</dict>").arg(text);
    }
    case QMetaType::QVariantList: {
        for (const QVariant& each : value.toList())
            text += xmlOf(each);
        return QStringLiteral("<array>%1</array>").arg(text);
    }
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("<true/>") : QStringLiteral("<false/>");
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return QStringLiteral("<integer>%1</integer>").arg(value.toString());
    case QMetaType::Double:
        return QStringLiteral("<real>%1</real>").arg(value.toDouble(), 0, 'g', 17);
    default:
        return QStringLiteral("<string>%1</string>").arg(value.toString().toHtmlEscaped());
    }
}

} // namespace

void TemporaryBundle::writeFile(const NSString& name, const NSData& contents)
{
    QFile file(m_folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    ASSERT_EQ(file.write(contents), contents.size());
}

void TemporaryBundle::writeFolder(const NSString& name) { ASSERT_TRUE(QDir(m_folder.path()).mkpath(name)); }

void TemporaryBundle::writeList(const NSString& name, const QVariant& list)
{
    const NSString xml
        = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">%1</plist>\n");
    writeFile(name + QStringLiteral(".plist"), xml.arg(xmlOf(list)).toUtf8());
}

void TemporaryBundle::makeMain()
{
    m_replacement.reset();
    m_replacement.emplace(make<NSBundle>(m_folder.path()));
}

NSURL TemporaryBundle::urlOf(const NSString& name) const
{
    return QUrl::fromLocalFile(m_folder.filePath(name));
}
