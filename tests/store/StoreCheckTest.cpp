#include "store/StoreCheck.h"

#include "support/Dump.h"
#include "support/SavedFiles.h"
#include "support/TestStore.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const auto ToTheEnd = [] { return true; };

/// All that stands beside the store.
QStringList beside(const TestStore& store) {
    return QDir(store.folder() + u"/DB"_s)
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

const QStringList StoreAlone{u"Pontrel.mdb"_s};

/// Some four megabytes of punches.
void fill(TestStore& store) {
    Stage stage(store.database());
    for (int row = 0; row < 40'000; ++row)
        store.database().execute(
            u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID) values('%1',#2001/3/5#,#08:00:00#,'255','001')"_s
                .arg(row, 60, 10, QLatin1Char('0')));
    stage.finish();
}

} // namespace

class StoreCheckTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aSoundStoreIsFoundSoundAndTheCopyGoes() {
        const TestStore store;
        const QByteArray before = contentOf(store.path());
        const StoreFinding finding = checkCopyOf(store.path(), ToTheEnd);
        QVERIFY2(finding.kind == StoreFinding::Kind::Sound, qPrintable(finding.technical));
        QCOMPARE(finding.technical, QString());
        QCOMPARE(contentOf(store.path()), before);
        QCOMPARE(beside(store), StoreAlone);
    }

    void damageIsFoundAndLeftAsItIs() {
        TestStore store;
        fill(store);
        QFile file(store.path());
        QVERIFY(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        QVERIFY(file.seek(file.size() / 2) && file.write(QByteArray(20'000, '\xa5')) == 20'000);
        file.close();
        const QByteArray before = contentOf(store.path());
        const StoreFinding finding = checkCopyOf(store.path(), ToTheEnd);
        QVERIFY(finding.kind == StoreFinding::Kind::Damaged);
        QVERIFY(!finding.technical.isEmpty());
        QVERIFY(contentOf(store.path()) == before);
        QCOMPARE(beside(store), StoreAlone);
    }

    void theCopyIsItsOwnersAloneAndStandsInPlaceOfOneThatWasLeft() {
        TestStore store;
        fill(store);
        for (const QString& name :
             {checkedCopyOf(store.path()), checkedCopyOf(store.path()) + u"-journal"_s}) {
            QFile left(name);
            QVERIFY(left.open(QIODevice::WriteOnly) && left.write("of a killed program") == 19);
        }
        QFileDevice::Permissions seen;
        const StoreFinding finding = checkCopyOf(store.path(), [&] {
            seen |= QFile::permissions(checkedCopyOf(store.path()));
            return true;
        });
        QVERIFY2(finding.kind == StoreFinding::Kind::Sound, qPrintable(finding.technical));
        QCOMPARE(seen & ~(QFile::ReadUser | QFile::WriteUser), QFile::ReadOwner | QFile::WriteOwner);
        QCOMPARE(beside(store), StoreAlone);
    }

    void theLiveStoreIsWrittenMeanwhile() {
        TestStore store;
        fill(store);
        int written = 0;
        const StoreFinding finding = checkCopyOf(store.path(), [&] {
            if (written < 3)
                store.database().execute(u"insert into Base01(TitleNo) values('%1')"_s.arg(++written));
            return true;
        });
        QVERIFY2(finding.kind == StoreFinding::Kind::Sound, qPrintable(finding.technical));
        QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList({u"1|null"_s, u"2|null"_s, u"3|null"_s}));
    }

    void aStoreWrittenWithoutEndIsNotLookedAt() {
        TestStore store;
        fill(store);
        int written = 0;
        const auto other = store.connect();
        const StoreFinding finding = checkCopyOf(store.path(), [&] {
            other->execute(u"insert into Holi02(SuitNo) values('%1')"_s.arg(++written));
            return true;
        });
        QVERIFY(finding.kind == StoreFinding::Kind::NotLookedAt);
        QCOMPARE(rowsOf(store.database(), u"Holi02"_s).size(), written);
        QCOMPARE(beside(store), StoreAlone);
    }

    void itStopsWhenItIsToldTo() {
        TestStore store;
        fill(store);
        int asked = 0;
        const StoreFinding finding = checkCopyOf(store.path(), [&asked] { return ++asked < 3; });
        QVERIFY(finding.kind == StoreFinding::Kind::NotLookedAt);
        QCOMPARE(asked, 3);
        QCOMPARE(beside(store), StoreAlone);
    }

    void aCopyThatCannotBeMadeIsNoDamage() {
        const TestStore store;
        QVERIFY(QDir().mkdir(checkedCopyOf(store.path())));
        QVERIFY(checkCopyOf(store.path(), ToTheEnd).kind == StoreFinding::Kind::NotLookedAt);
        QVERIFY(checkCopyOf(store.folder() + u"/DB/none.mdb"_s, ToTheEnd).kind ==
                StoreFinding::Kind::NotLookedAt);
    }

    void aDayIsLookedAtOnce() {
        const TestStore store;
        const QDate day(2001, 3, 5);
        QVERIFY(isCheckDue(store.path(), day));
        rememberCheck(store.path(), day);
        QVERIFY(!isCheckDue(store.path(), day));
        QVERIFY(isCheckDue(store.path(), day.addDays(1)));
        QVERIFY(isCheckDue(store.path(), day.addDays(-1)));
    }
};

QTEST_GUILESS_MAIN(StoreCheckTest)
#include "StoreCheckTest.moc"
