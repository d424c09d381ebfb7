#include "paper/PaperSupport.h"
#include "support/Builders.h"
#include "support/Errors.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QTest>

using namespace pontrel;
using namespace pontrel::paper;
using namespace pontrel::test;

namespace {

/// A template over that table that reads these fields, in their order.
Template reading(const QByteArray& rows, const QByteArray& order, const QByteArrayList& fields) {
    QByteArray columns;
    for (const QByteArray& field : fields)
        columns += "<column caption=\"\" width=\"5\">{" + field + "}</column>";
    return templateOf("<report format=\"1\" code=\"T\" caption=\"\">" + rows + order + "<columns>" + columns +
                      "</columns></report>");
}

QStringList rowsOf(const TestStore& store, const Template& layout, const Selection& selection = {}) {
    const ReportRows rows = ReportRows::read(store.path(), layout, selection);
    QStringList lines;
    for (std::size_t row = 0; row < rows.count(); ++row) {
        QStringList values;
        for (const Cell& cell : layout.cells)
            values += rows.isNull(row, cell.fields.front()) ? QStringLiteral("null")
                                                            : rows.value(row, cell.fields.front()).joined();
        lines += values.join(u' ');
    }
    return lines;
}

Selection selectionOf(const char* condition, std::vector<Value> values,
                      const std::vector<const char16_t*>& tables) {
    Selection made;
    made.condition = condition;
    made.values = std::move(values);
    for (const char16_t* name : tables)
        made.tables.push_back(findTable(name));
    return made;
}

/// How often this process has the store's file open.
int openings(const TestStore& store) {
    int count = 0;
    const QFileInfoList files =
        QDir(QStringLiteral("/proc/self/fd")).entryInfoList(QDir::Files | QDir::System);
    for (const QFileInfo& file : files)
        count += file.symLinkTarget() == QFileInfo(store.path()).canonicalFilePath() ? 1 : 0;
    return count;
}

} // namespace

/// The records of a report: what is read, in which order, and what is left open behind it.
class ReportRowsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void everyTypeComesBackAsItStands() {
        TestStore store;
        Database& database = store.database();
        insertRow(database, QStringLiteral("Over01"),
                  {{u"EmpNo", u"A01"},
                   {u"OverDate", QDate(2026, 1, 5)},
                   {u"BegTime", QTime(18, 30, 5)},
                   {u"EndTime", Value()},
                   {u"OverHours", 3},
                   {u"Memo", u"盤點 𠮷"},
                   {u"Rest", true},
                   {u"TransDate", QDateTime(QDate(2026, 1, 6), QTime(0, 0, 1))}});
        insertRow(database, QStringLiteral("Over01"),
                  {{u"EmpNo", Value()},
                   {u"OverDate", Value()},
                   {u"BegTime", QTime(0, 0)},
                   {u"OverHours", Value()},
                   {u"Memo", u""},
                   {u"TransDate", Value()}});
        insertRow(database, QStringLiteral("Over01"),
                  {{u"EmpNo", u"A03"}, {u"OverDate", QDate(100, 1, 1)}, {u"OverHours", 4'000'000'000LL}});
        const Template layout =
            reading("<rows from=\"Over01\"/>", "",
                    {"Over01.EmpNo", "Over01.OverDate", "Over01.BegTime", "Over01.EndTime",
                     "Over01.OverHours", "Over01.Memo", "Over01.Rest", "Over01.TransDate"});
        const ReportRows rows = ReportRows::read(store.path(), layout, {});
        QCOMPARE(rows.count(), std::size_t{3});
        const QList<Value> first{Value(u"A01"),
                                 Value(QDate(2026, 1, 5)),
                                 Value(QTime(18, 30, 5)),
                                 Value(),
                                 Value(3),
                                 Value(u"盤點 𠮷"),
                                 Value(true),
                                 Value(QDateTime(QDate(2026, 1, 6), QTime(0, 0, 1)))};
        const QList<Value> second{Value(), Value(),    Value(QTime(0, 0)), Value(),
                                  Value(), Value(u""), Value(false),       Value()};
        const QList<Value> third{Value(u"A03"),
                                 Value(QDate(100, 1, 1)),
                                 Value(),
                                 Value(),
                                 Value(4'000'000'000LL),
                                 Value(),
                                 Value(false),
                                 Value()};
        int field = 0;
        for (const Cell& cell : layout.cells) {
            const int place = cell.fields.front();
            QCOMPARE(describe(rows.value(0, place)), describe(first[field]));
            QCOMPARE(describe(rows.value(1, place)), describe(second[field]));
            QCOMPARE(describe(rows.value(2, place)), describe(third[field]));
            QCOMPARE(rows.isNull(1, place), second[field].isNull());
            ++field;
        }
    }

    void whatIsNoDateStaysAText() {
        TestStore store;
        insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", u"A01"}});
        SQLite::Database engine(store.path().toStdString(), SQLite::OPEN_READWRITE);
        engine.exec("UPDATE Over01 SET OverDate = '2026-02-30', BegTime = 'noon'");
        const Template layout = reading("<rows from=\"Over01\"/>", "", {"Over01.OverDate", "Over01.BegTime"});
        const ReportRows rows = ReportRows::read(store.path(), layout, {});
        QCOMPARE(rows.value(0, 0), Value(u"2026-02-30"));
        QCOMPARE(rows.value(0, 1), Value(u"noon"));
        QVERIFY(!rows.isNull(0, 0));
        const auto document = documentOf(store, layout);
        QCOMPARE(linesOf(*document, 0).last(), QStringLiteral("2…|n…"));
    }

    void textsAreTheSameInAnyCaseOfLetters() {
        TestStore store;
        for (const char16_t* code : {u"A1", u"a1", u"B1", u"Ａ1"})
            insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", code}});
        for (int row = 0; row < 2; ++row)
            insertRow(store.database(), QStringLiteral("Over01"), {{u"Memo", u"nobody's"}});
        insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", u""}});
        const Template layout = reading("<rows from=\"Over01\"/>", "", {"Over01.EmpNo"});
        const ReportRows rows = ReportRows::read(store.path(), layout, {});
        QVERIFY(rows.same(0, 1, 0));
        QVERIFY(!rows.same(0, 2, 0));
        QVERIFY(!rows.same(0, 3, 0));
        QVERIFY(rows.same(4, 5, 0));
        QVERIFY(!rows.same(5, 6, 0));
        QCOMPARE(rows.value(1, 0), Value(u"a1"));
    }

    void manyTextsAreKeptApart() {
        TestStore store;
        store.holdOpen();
        for (int number = 0; number < 3000; ++number)
            insertRow(
                store.database(), QStringLiteral("Over01"),
                {{u"EmpNo", QString::number(number % 1500)}, {u"Memo", QStringLiteral("X%1").arg(number)}});
        store.commit();
        const Template layout = reading("<rows from=\"Over01\"/>", "", {"Over01.EmpNo", "Over01.Memo"});
        const ReportRows rows = ReportRows::read(store.path(), layout, {});
        QCOMPARE(rows.count(), std::size_t{3000});
        for (std::size_t row = 0; row < 3000; ++row) {
            QCOMPARE(rows.text(row, 0).toInt(), static_cast<int>(row % 1500));
            QCOMPARE(rows.text(row, 1), QStringLiteral("X%1").arg(row));
        }
    }

    void noRowIsLostOrDoubledByALookUp() {
        TestStore store;
        addEmployee(store.database(), QStringLiteral("A01"), {{u"UnitNo", u"0001"}, {u"EmpName", u"王大明"}});
        insertRow(store.database(), QStringLiteral("Base02"), {{u"UnitNo", u"0001"}, {u"Unit", u"總務部"}});
        insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", u"A01"}});
        insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", u"X99"}});
        insertRow(store.database(), QStringLiteral("Over01"), {{u"Memo", u"nobody's"}});
        const Template layout =
            reading("<rows from=\"Over01\"><look-up table=\"Base06\" on=\"EmpNo\"/>"
                    "<look-up table=\"Base02\" on=\"Base06.UnitNo\"/></rows>",
                    "<order by=\"EmpNo\"/>", {"Over01.EmpNo", "Base06.EmpName", "Base02.Unit"});
        QCOMPARE(rowsOf(store, layout),
                 (QStringList{QStringLiteral("null null null"), QStringLiteral("A01 王大明 總務部"),
                              QStringLiteral("X99 null null")}));
    }

    void rowsComeByGroupsThenOrderThenAsTheyWereEntered() {
        TestStore store;
        const QList<std::tuple<const char16_t*, QDate, const char16_t*>> entered{
            {u"B", QDate(2026, 3, 2), u"1"},
            {u"A", QDate(2025, 4, 2), u"2"},
            {u"A", QDate(2026, 1, 30), u"3"},
            {u"a", QDate(2024, 2, 2), u"4"},
            {u"A", QDate(2026, 3, 2), u"5"}};
        for (const auto& [code, day, memo] : entered)
            insertRow(store.database(), QStringLiteral("Over01"),
                      {{u"EmpNo", code}, {u"OverDate", day}, {u"Memo", memo}});
        const auto order = [&](const QByteArray& by) {
            return rowsOf(store,
                          reading("<rows from=\"Over01\"/>", "<group by=\"EmpNo\"/>" + by, {"Over01.Memo"}))
                .join(u' ');
        };
        QCOMPARE(order({}), QStringLiteral("2 3 4 5 1"));
        QCOMPARE(order("<order by=\"OverDate\"/>"), QStringLiteral("4 2 3 5 1"));
        QCOMPARE(order("<order by=\"day(OverDate)\"/>"), QStringLiteral("2 4 5 3 1"));
        QCOMPARE(order("<order by=\"month(OverDate), OverDate\"/>"), QStringLiteral("3 4 5 2 1"));
    }

    void aConditionSelects() {
        TestStore store;
        for (const char16_t* code : {u"A", u"B", u"C"})
            insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", code}});
        const Template layout = reading("<rows from=\"Over01\"/>", "", {"Over01.EmpNo"});
        const Selection some = selectionOf("\"Over01\".\"EmpNo\" >= ?1 AND \"Over01\".\"EmpNo\" <= ?2",
                                           {Value(u"b"), Value(u"b")}, {u"Over01"});
        QCOMPARE(rowsOf(store, layout, some), QStringList{QStringLiteral("B")});
        const Selection none = selectionOf("\"Over01\".\"EmpNo\" = ?1", {Value()}, {u"Over01"});
        QCOMPARE(rowsOf(store, layout, none), QStringList());
    }

    void aRelatedTableKeepsRowsOnceEach() {
        TestStore store;
        for (const char16_t* code : {u"1", u"2", u"3"})
            insertRow(store.database(), QStringLiteral("Base01"), {{u"TitleNo", code}, {u"Title", u"職"}});
        addEmployee(store.database(), QStringLiteral("A01"), {{u"TitleNo", u"1"}});
        addEmployee(store.database(), QStringLiteral("A02"), {{u"TitleNo", u"1"}});
        addEmployee(store.database(), QStringLiteral("A03"), {{u"TitleNo", u"3"}});
        const Template related =
            reading("<rows from=\"Base01\"><related table=\"Base06\" by=\"TitleNo\"/></rows>", "",
                    {"Base01.TitleNo"});
        const Selection two = selectionOf("\"Base06\".\"EmpNo\" <= ?1", {Value(u"A02")}, {u"Base06"});
        QCOMPARE(rowsOf(store, related, two), QStringList{QStringLiteral("1")});
        QCOMPARE(rowsOf(store, related).size(), 3);

        // Without a relation the condition is one over the other table alone: all rows, or none.
        const Template apart = reading("<rows from=\"Holi01\"/>", "", {"Holi01.HoliNo"});
        insertRow(store.database(), QStringLiteral("Holi01"), {{u"HoliNo", u"01"}, {u"HoliType", u"事假"}});
        QCOMPARE(rowsOf(store, apart, two), QStringList{QStringLiteral("01")});
        const Selection nobody = selectionOf("\"Base06\".\"EmpNo\" <= ?1", {Value(u"A00")}, {u"Base06"});
        QCOMPARE(rowsOf(store, apart, nobody), QStringList());
    }

    void nothingStaysOpenBehindThem() {
        TestStore store;
        insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", u"A"}});
        const Template layout = reading("<rows from=\"Over01\"/>", "", {"Over01.EmpNo"});
        const int before = openings(store);
        const auto document = documentOf(store, layout);
        QCOMPARE(openings(store), before);
        QCOMPARE(store.database().execute(QStringLiteral("delete * from Over01")), 1);
        QCOMPARE(linesOf(*document, 0).last(), QStringLiteral("A"));
    }

    void aStoreThatCannotBeRead() {
        const Template layout = reading("<rows from=\"Over01\"/>", "", {"Over01.EmpNo"});
        TestStore store;
        QCOMPARE(errorOf([&] {
                     return ReportRows::read(store.folder() + QStringLiteral("/none.mdb"), layout, {});
                 }),
                 error::StoreNotFound);
        QCOMPARE(errorOf([&] { return ReportRows::read(store.folder(), layout, {}); }),
                 error::UnrecognizedStore);
        Stage stage(store.database());
        insertRow(store.database(), QStringLiteral("Over01"), {{u"EmpNo", u"A"}});
        SQLite::Database engine(store.path().toStdString(), SQLite::OPEN_READWRITE);
        // What has been written and not committed is not read, and hinders nobody.
        QCOMPARE(ReportRows::read(store.path(), layout, {}).count(), std::size_t{0});
    }
};

QTEST_GUILESS_MAIN(ReportRowsTest)
#include "ReportRowsTest.moc"
