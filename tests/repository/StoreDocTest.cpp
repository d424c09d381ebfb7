#include "store/Schema.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace pontrel;

namespace {

QString typeName(const Column& column) {
    switch (column.type) {
    case ColumnType::Text:
        return column.length > 0 ? QStringLiteral("text(%1)").arg(column.length) : QStringLiteral("text");
    case ColumnType::Integer:
        return column.startsAsZero ? QStringLiteral("counter") : QStringLiteral("integer");
    case ColumnType::Real:
        return QStringLiteral("real");
    case ColumnType::Boolean:
        return QStringLiteral("boolean");
    case ColumnType::Date:
        return QStringLiteral("date");
    case ColumnType::Time:
        return QStringLiteral("time");
    case ColumnType::DateTime:
        return QStringLiteral("date-time");
    case ColumnType::Unknown:
        break;
    }
    return QStringLiteral("?");
}

/// "Name type" of every column, led by the key.
QStringList told(const Table& table) {
    QStringList lines{QStringLiteral("key ") + table.key.join(u' ')};
    for (const Column& column : table.columns)
        lines += column.name + u' ' + typeName(column);
    return lines;
}

/// The same out of a section of the page, where `T1` to `T12` stands for twelve columns.
QStringList told(const QString& section) {
    static const QRegularExpression keyLine(QStringLiteral("^Key: (.*)\\.$"),
                                            QRegularExpression::MultilineOption);
    static const QRegularExpression row(
        QStringLiteral("^\\| `(\\w+?)(\\d*)`(?: to `\\1(\\d+)`)? \\| (\\S+) \\| .+ \\|$"),
        QRegularExpression::MultilineOption);
    QStringList lines{QStringLiteral("key ") + keyLine.match(section).captured(1).remove(u'`').remove(u',')};
    auto rows = row.globalMatch(section);
    while (rows.hasNext()) {
        const QRegularExpressionMatch match = rows.next();
        const QString name = match.captured(1);
        const QString type = match.captured(4);
        const int last = match.captured(3).toInt();
        if (last == 0)
            lines += name + match.captured(2) + u' ' + type;
        else
            for (int number = match.captured(2).toInt(); number <= last; ++number)
                lines += name + QString::number(number) + u' ' + type;
    }
    return lines;
}

} // namespace

/// The page that tells a site what stands in the store.
class StoreDocTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void thePageTellsEveryTable() {
        QFile file(QStringLiteral(PONTREL_STORE_PAGE));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList sections = QString::fromUtf8(file.readAll()).split(QStringLiteral("\n### `"));
        QStringList tablesTold;
        for (qsizetype index = 1; index < sections.size(); ++index) {
            const QString name = sections[index].section(u'`', 0, 0);
            const Table* table = findTable(name);
            QVERIFY2(table, qPrintable(name));
            QCOMPARE(name, table->name);
            QCOMPARE(told(sections[index]), told(*table));
            tablesTold += name;
        }
        QStringList all;
        for (const Table& table : tables())
            all += table.name;
        tablesTold.sort();
        all.sort();
        QCOMPARE(tablesTold, all);
    }
};

QTEST_GUILESS_MAIN(StoreDocTest)
#include "StoreDocTest.moc"
