#include "LeaveDesk.h"

#include <QFile>
#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr double Number = 200103040001;

/// A line of walk.tsv by its columns.
struct WalkCase {
    QString title, slots_, roster, types, note, hours, rows, messages, before;
};

Value timeOf(const QString& text) {
    if (text == u"null")
        return {};
    const QTime time = QTime::fromString(text, text.size() > 5 ? u"hh:mm:ss"_s : u"hh:mm"_s);
    if (!time.isValid())
        qFatal("no time: %s", qUtf8Printable(text));
    return time;
}

QDate dateOf(const QString& text) {
    const QDate date = QDate::fromString(text, Qt::ISODate);
    if (!date.isValid())
        qFatal("no date: %s", qUtf8Printable(text));
    return date;
}

QStringList listOf(const QString& field) {
    return field == u"-" ? QStringList() : field.split(u';', Qt::SkipEmptyParts);
}

/// Reads the table that lies beside this file.
QList<WalkCase> readCases() {
    QFile file(QStringLiteral(PONTREL_WALK_TABLE));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qUtf8Printable(file.fileName()));
    QList<WalkCase> cases;
    bool header = true;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        if (line.isEmpty() || line.startsWith(u'#') || std::exchange(header, false))
            continue;
        const QStringList fields = line.split(u'\t');
        if (fields.size() < 8 || fields.size() > 9)
            qFatal("%d fields: %s", int(fields.size()), qUtf8Printable(line));
        cases += {fields[0], fields[1], fields[2], fields[3],      fields[4],
                  fields[5], fields[6], fields[7], fields.value(8)};
    }
    return cases;
}

/// "error 94" is its number, anything else 0.
int errorIn(const QString& text) {
    return text.startsWith(u"error ") ? text.mid(6).toInt() : 0;
}

void fill(Database& database, const WalkCase& it) {
    for (const QString& slot : listOf(it.slots_)) {
        const QStringList times = slot.section(u'=', 1).split(u',');
        Fields fields{{u"TimeNo", slot.section(u'=', 0, 0)}, {u"CardType", 4}};
        for (qsizetype time = 0; time < 4; ++time)
            fields += Field(u"StdT%1"_s.arg(time + 1), timeOf(times.at(time)));
        insertRow(database, u"Base04"_s, fields);
    }
    for (const QString& row : listOf(it.roster))
        addRoster(database, u"10001"_s, dateOf(row.section(u'=', 0, 0)), row.section(u'=', 1));
    for (const QString& type : listOf(it.types))
        insertRow(database, u"Holi01"_s,
                  {{u"HoliNo", type.section(u'=', 0, 0)}, {u"HoliDeduct", type.section(u'=', 1) == u"yes"}});
}

Leave leaveOf(const QString& note) {
    const QStringList parts = note.split(u' ');
    return {parts.at(0),
            parts.at(1),
            dateOf(parts.at(2)),
            dateOf(parts.at(3)),
            timeOf(parts.at(4)).toTime(),
            timeOf(parts.at(5)).toTime()};
}

/// "2001-03-05 08:00 17:00 8 A" as a row of the leave.
QString rowOf(const QString& text, const Leave& leave) {
    const QStringList parts = text.trimmed().split(u' ');
    return dayRow(QString::number(Number, 'f', 0), leave.EmpNo, leave.HoliNo, dateOf(parts.at(0)),
                  timeOf(parts.at(1)).toTime(), timeOf(parts.at(2)).toTime(), parts.at(3).toInt(),
                  parts.at(4) == u"-" ? QString() : parts.at(4));
}

} // namespace

/// The walk over the days of a leave, by a table of cases: what is counted and what is written.
class WalkTest : public QObject {
    Q_OBJECT

    TestStore store_;

    void clear() {
        for (const char16_t* table : {u"Base04", u"Rule03", u"Holi01", u"Holi04"})
            store_.database().execute(u"delete * from "_s + QString::fromUtf16(table));
    }

    static void lookUpBefore(LeaveNotes& notes, const QString& before) {
        const QStringList parts = before.split(u' ');
        if (parts.at(0) == u"deduct")
            notes.LoadHoliDeduct(parts.at(1));
        else
            notes.LoadDaySlot(dateOf(parts.at(0)), parts.at(1));
    }

  private Q_SLOTS:
    void initTestCase() { store_.holdOpen(); }
    void init() { clear(); }

    void theTableHoldsWhatItShould() {
        const QList<WalkCase> cases = readCases();
        QSet<QString> titles;
        for (const WalkCase& each : cases)
            titles.insert(each.title);
        QVERIFY2(cases.size() >= 60, qPrintable(QString::number(cases.size())));
        QCOMPARE(titles.size(), cases.size());
    }

    void aLeaveIsCountedAndWrittenDayByDay_data() {
        QTest::addColumn<int>("index");
        const QList<WalkCase> cases = readCases();
        for (int index = 0; index < cases.size(); ++index)
            QTest::newRow(qUtf8Printable(cases.at(index).title)) << index;
    }

    void aLeaveIsCountedAndWrittenDayByDay() {
        QFETCH(const int, index);
        const WalkCase it = readCases().at(index);
        fill(store_.database(), it);
        LeaveHost host;
        LeaveValues values;
        LeaveNotes notes(store_.database(), host, values);
        if (!it.before.isEmpty())
            lookUpBefore(notes, it.before);
        values.gBusNo = Number;
        host.calls.clear();
        const Leave leave = leaveOf(it.note);

        int hours = -1;
        QCOMPARE(errorOf([&] { return hours = notes.CountLeaveHours(leave); }), errorIn(it.hours));
        if (errorIn(it.hours) == 0)
            QCOMPARE(QString::number(hours), it.hours);
        QCOMPARE(rowsOf(store_.database(), u"Holi04"_s), QStringList());

        QStringList expected;
        int number = 0;
        for (const QString& row : it.rows == u"none" ? QStringList() : listOf(it.rows)) {
            number = errorIn(row.trimmed());
            if (number == 0)
                expected += rowOf(row, leave);
        }
        QCOMPARE(errorOf([&] {
                     notes.InsertLeaveDays(leave);
                     return 0;
                 }),
                 number);
        QCOMPARE(rowsOf(store_.database(), u"Holi04"_s), expected);
        QCOMPARE(host.calls, QStringList(it.messages.toInt(), UnknownType));
    }
};

QTEST_GUILESS_MAIN(WalkTest)
#include "WalkTest.moc"
