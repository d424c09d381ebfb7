#include "store/StatementText.h"

#include "store/RunTimeError.h"

#include <QTest>

using namespace pontrel;
using namespace Qt::StringLiterals;

namespace {

/// What the routine joins, or "number technical text" of its error.
template<typename Routine>
QString outcomeOf(Routine&& routine) {
    try {
        return routine();
    } catch (const RunTimeError& failure) {
        return QString::number(failure.number()) + u' ' + failure.technical();
    }
}

} // namespace

/// What values become in a statement, and which break it.
class StatementTextTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void texts_data();
    void texts();
    void datesAndTimes();
    void datesByTheirText_data();
    void datesByTheirText();
};

void StatementTextTest::texts_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("good");
    QTest::newRow("a code") << u"00001"_s << true;
    QTest::newRow("the empty text") << QString() << true;
    QTest::newRow("Chinese") << u"王小明"_s << true;
    QTest::newRow("other signs") << u"a\"#%1*[;--"_s << true;
    QTest::newRow("an apostrophe") << u"'"_s << false;
    QTest::newRow("one in the middle") << u"O'Brien"_s << false;
    QTest::newRow("two") << u"''"_s << false;
    QTest::newRow("a condition") << u"z' or '1"_s << false;
}

void StatementTextTest::texts() {
    QFETCH(const QString, text);
    QFETCH(const bool, good);
    const QString error = u"3075 "_s + text;
    QCOMPARE(outcomeOf([&] { return textLiteral(text); }), good ? u"'"_s + text + u"'"_s : error);
    QCOMPARE(outcomeOf([&] { return startLiteral(text); }), good ? u"'"_s + text + u"*'"_s : error);
    QCOMPARE(breaksLiteral(text), !good);
}

void StatementTextTest::datesAndTimes() {
    QCOMPARE(dateLiteral(QDate(2001, 3, 5)), u"#2001/3/5#"_s);
    QCOMPARE(dateLiteral(QDate(2038, 12, 31)), u"#2038/12/31#"_s);
    QCOMPARE(outcomeOf([] { return dateLiteral(QDate()); }), u"3075 no date"_s);
    QCOMPARE(timeLiteral(0), u"#00:00:00#"_s);
    QCOMPARE(timeLiteral(8 * 3600 + 5 * 60 + 9), u"#08:05:09#"_s);
    QCOMPARE(timeLiteral(86399), u"#23:59:59#"_s);
}

void StatementTextTest::datesByTheirText_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("good");
    QTest::newRow("a day") << u"2001/03/05"_s << true;
    QTest::newRow("a moment") << u"2001-Mar-05 08:00:00"_s << true;
    QTest::newRow("an empty box") << QString() << false;
    QTest::newRow("a number sign") << u"#"_s << false;
    QTest::newRow("two days") << u"2001/3/5# or UseDate = #2001/3/6"_s << false;
}

void StatementTextTest::datesByTheirText() {
    QFETCH(const QString, text);
    QFETCH(const bool, good);
    QCOMPARE(outcomeOf([&] { return dateLiteral(text); }), good ? u"#"_s + text + u"#"_s : u"3075 "_s + text);
}

QTEST_GUILESS_MAIN(StatementTextTest)
#include "StatementTextTest.moc"
