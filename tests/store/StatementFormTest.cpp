#include "store/StatementForm.h"
#include "store/RunTimeError.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/TestStore.h"

#include <QTest>

#include <array>
#include <vector>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// A statement run with other values in place of its literals.
class StatementFormTest : public QObject {
    Q_OBJECT

  private:
    static int numberOf(Database& database, const StatementForm& form, const std::vector<Value>& values) {
        return errorOf([&] { database.execute(form, values); });
    }

    const StatementForm punch_{
        u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)values('',#2000/1/1#,#08:00:00#,'','')"_s};

  private Q_SLOTS:
    void itsRunsAreThoseOfTheTextsWithTheValuesJoined() {
        TestStore store;
        const QDate day(2001, 3, 5);
        // Longer than what is bound without a copy, beyond ASCII, with a zero character, empty.
        const QStringList codes{u"00001"_s, QString(40, u'x'), u"\u00c4\u738b"_s,
                                u"a"_s + QChar(u'\0') + u'b', u""_s};
        for (const QString& code : codes) {
            const std::array<Value, 5> values{code, day, QTime(23, 59, 59), u"255", u"001"};
            QCOMPARE(store.database().execute(punch_, values), 1);
            store.database().execute(u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)values('"_s +
                                     code + u"',#2001/3/5#,#23:59:59#,'255','001')"_s);
        }
        const QStringList rows = rowsOf(store.database(), u"AtteTemp"_s);
        QCOMPARE(rows.size(), 2 * codes.size());
        for (qsizetype row = 0; row < rows.size(); row += 2) {
            QCOMPARE(rows[row], rows[row + 1]);
            QCOMPARE(rows[row], codes[row / 2] + u"|2001-03-05|23:59:59|255|001"_s);
        }
    }

    void aNullTakesThePlaceOfAnyLiteral() {
        TestStore store;
        const std::array<Value, 5> values{u"1", QDate(2001, 3, 5), Value(), Value(), Value()};
        store.database().execute(punch_, values);
        QCOMPARE(rowsOf(store.database(), u"AtteTemp"_s), QStringList{u"1|2001-03-05|null|null|null"_s});
        // Nothing of the run before shines through.
        store.database().execute(punch_, std::array<Value, 5>{Value(), Value(), Value(), Value(), Value()});
        QCOMPARE(rowsOf(store.database(), u"AtteTemp"_s).constLast(), u"null|null|null|null|null"_s);
    }

    void aTextWithAnApostropheBreaksTheStatement() {
        TestStore store;
        const std::vector<Value> values{u"z' or '1", QDate(2001, 3, 5), QTime(8, 0), u"255", u"001"};
        QCOMPARE(numberOf(store.database(), punch_, values), error::Syntax);
        QCOMPARE(rowsOf(store.database(), u"AtteTemp"_s), QStringList());
    }

    void aSelectionReadsTheRowsOfItsValues() {
        TestStore store;
        for (const QString& EmpNo : {u"1"_s, u"2"_s, u"2"_s})
            store.database().execute(
                punch_, std::array<Value, 5>{EmpNo, QDate(2001, 3, 5), QTime(8, 0), u"255", Value()});
        const StatementForm form(
            u"select EmpNo,UseDate,ReaderID as r from AtteTemp where EmpNo = 'x' and UseDate = #2000/1/1#"_s);
        const auto rowsFor = [&](const Value& EmpNo, const Value& day) {
            const Rows rows = store.database().select(form, std::array<Value, 2>{EmpNo, day});
            return std::vector<std::vector<Value>>(rows.begin(), rows.end());
        };
        const std::vector<Value> second{u"2", QDate(2001, 3, 5), Value()};
        QCOMPARE(rowsFor(u"2", QDate(2001, 3, 5)), (std::vector<std::vector<Value>>{second, second}));
        QCOMPARE(rowsFor(u"1", QDate(2001, 3, 5)).size(), std::size_t{1});
        QVERIFY(rowsFor(u"3", QDate(2001, 3, 5)).empty());
        QVERIFY(rowsFor(u"2", QDate(2001, 3, 6)).empty());
        QVERIFY(rowsFor(Value(), QDate(2001, 3, 5)).empty());
        const Rows none = store.database().select(form, std::array<Value, 2>{Value(), Value()});
        QCOMPARE(none.columns(), (QStringList{u"EmpNo"_s, u"UseDate"_s, u"r"_s}));
        QCOMPARE(errorOf([&] { return rowsFor(u"z' or '1", QDate(2001, 3, 5)).size(); }), error::Syntax);
        QCOMPARE(errorOf([&] { return store.database().select(punch_, std::array<Value, 5>{}).count(); }),
                 error::Syntax);
    }

    void asManyValuesAsLiteralsAreNeeded() {
        TestStore store;
        QCOMPARE(numberOf(store.database(), punch_, {u"1", QDate(2001, 3, 5)}), error::Syntax);
        QCOMPARE(numberOf(store.database(), StatementForm(u"select 1 from Base01"_s), {1}), error::Syntax);
    }

    void aFormOutlivesManyOtherStatements() {
        TestStore store;
        const std::vector<Value> values{u"1", QDate(2001, 3, 5), QTime(8, 0), u"255", u"001"};
        QCOMPARE(numberOf(store.database(), punch_, values), 0);
        for (int shape = 0; shape < 1100; ++shape)
            (void)store.database().select(u"select 1 as a%1 from Base01"_s.arg(shape));
        QCOMPARE(numberOf(store.database(), punch_, values), 0);
        QCOMPARE(rowsOf(store.database(), u"AtteTemp"_s).size(), 2);
    }
};

QTEST_GUILESS_MAIN(StatementFormTest)
#include "StatementFormTest.moc"
