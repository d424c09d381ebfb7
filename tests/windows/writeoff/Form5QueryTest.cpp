#include "windows/writeoff/Form5Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// The tab of the entries over three rows.
class QueryFixture : public Form5Fixture {
  public:
    QueryFixture() {
        addPeople();
        addEntries();
        open(Entries);
    }
};

} // namespace

/// What the query of the entries shows, and for how long.
class Form5QueryTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aQueryStaysUntilTheNextRefresh_data();
    void aQueryStaysUntilTheNextRefresh();
    void aUnitLeavesTheListAsItIs();
    void aCancelledDialogRepeatsTheLastKind();
};

void Form5QueryTest::aQueryStaysUntilTheNextRefresh_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("all") << 0 << QStringList({u"10001/2001/3/5"_s, u"10001/2001/3/6"_s, u"10002/2001/3/5"_s});
    QTest::newRow("a day") << 1 << QStringList({u"10001/2001/3/5"_s, u"10002/2001/3/5"_s});
    QTest::newRow("a day of an employee") << 2 << QStringList{u"10002/2001/3/5"_s};
    QTest::newRow("an employee") << 3 << QStringList{u"10002/2001/3/5"_s};
}

void Form5QueryTest::aQueryStaysUntilTheNextRefresh() {
    QFETCH(const int, kind);
    QFETCH(const QStringList, found);
    QueryFixture it;
    const auto shown = [&it] {
        QStringList rows;
        for (const QString& row : it.shown(u"TDBG1(0)"_s))
            rows << row.section(u'|', 0, 0) + u'/' + row.section(u'|', 2, 2);
        return rows;
    };
    it.expectKind(kind);
    if (kind == 1 || kind == 2)
        it.expectDate(u"900305"_s);
    if (kind >= 2)
        it.expectPick(u"QFrmEmpNO"_s, 1);
    it.press(u"CtrlCmd2(5)"_s);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(shown(), found);
    QCOMPARE(it.panel(1), u"資料錄:1/%1"_s.arg(found.size()));
    // An edit and a move leave it; the next refresh brings all.
    it.press(u"CtrlCmd2(1)"_s);
    it.press(u"CtrlCmd2(3)"_s);
    it.press(u"CtrlCmd2(9)"_s);
    QCOMPARE(shown(), found);
    it.press(u"CtrlCmd2(10)"_s);
    QCOMPARE(it.panel(1), u"資料錄:1/3"_s);
}

void Form5QueryTest::aUnitLeavesTheListAsItIs() {
    QueryFixture it;
    it.expectKind(3);
    it.expectPick(u"QFrmEmpNO"_s, 1);
    it.press(u"CtrlCmd2(5)"_s);
    QCOMPARE(it.panel(1), u"資料錄:1/1"_s);
    it.expectKind(4);
    it.expectDate(u"900305"_s);
    it.answers.expect(u"QFrmUnitNo"_s, clickOk);
    it.press(u"CtrlCmd2(5)"_s);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.panel(1), u"資料錄:1/1"_s);
    QCOMPARE(it.text(u"Text5(0)"_s), u"10002"_s);
}

void Form5QueryTest::aCancelledDialogRepeatsTheLastKind() {
    QueryFixture it;
    gQueryKind = 3;
    gPickEmpNo = u"10001"_s;
    it.answers.expectClick(u"IFrmQuery"_s, u"Command1(1)"_s);
    it.press(u"CtrlCmd2(5)"_s);
    QCOMPARE(it.panel(1), u"資料錄:1/2"_s);
}

int main(int argc, char** argv) {
    return runTests<Form5QueryTest>(argc, argv);
}

#include "Form5QueryTest.moc"
