#include "tests/support/TextComparison.h"

#include "tests/support/SourcePath.h"

#include <QFile>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace {

// What is left after the longest common subsequence of lines is taken out.
QString difference(const QStringList& before, const QStringList& after)
{
    const qsizetype rows = before.size();
    const qsizetype columns = after.size();
    std::vector<std::vector<int>> common(
        static_cast<std::size_t>(rows + 1), std::vector<int>(static_cast<std::size_t>(columns + 1)));
    const auto length = [&](qsizetype row, qsizetype column) -> int& {
        return common[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    };
    for (qsizetype row = rows - 1; row >= 0; --row)
        for (qsizetype column = columns - 1; column >= 0; --column)
            length(row, column) = before[row] == after[column]
                ? length(row + 1, column + 1) + 1
                : std::max(length(row + 1, column), length(row, column + 1));
    QString lines;
    qsizetype row = 0;
    qsizetype column = 0;
    while (row < rows || column < columns) {
        if (row < rows && column < columns && before[row] == after[column]) {
            ++row;
            ++column;
        } else if (column == columns || (row < rows && length(row + 1, column) >= length(row, column + 1))) {
            lines += QStringLiteral("-%1\n").arg(before[row++]);
        } else {
            lines += QStringLiteral("+%1\n").arg(after[column++]);
        }
    }
    return lines;
}

} // namespace

testing::AssertionResult matchesFile(const QString& text, const char* path)
{
    QFile file(sourcePath(path));
    if (qEnvironmentVariableIsSet("ORUVANE_RENEW_DUMPS")) {
        const QByteArray bytes = text.toUtf8();
        const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
        return testing::AssertionFailure() << path << (written ? " is renewed" : " cannot be written");
    }
    if (!file.open(QIODevice::ReadOnly))
        return testing::AssertionFailure() << path << " cannot be read";
    const QString expected = QString::fromUtf8(file.readAll());
    if (text == expected)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << path << " differs:\n"
                                       << difference(expected.split(u'\n'), text.split(u'\n')).toStdString();
}
