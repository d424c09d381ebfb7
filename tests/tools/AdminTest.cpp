#include "store/Clock.h"
#include "store/SafetyCopy.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/SavedFiles.h"
#include "support/TestStore.h"
#include "tools/AdminProgram.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QTest>

#include <unistd.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const auto ToTheEnd = [] { return true; };

QStringList namesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

void makeCopy(const TestStore& store, CopyReason reason, const QDateTime& moment) {
    clock::setSource([moment] { return moment; });
    const CopyOutcome outcome = copyBytes(store.path(), reason, CopyPace::AtOnce, ToTheEnd);
    clock::setSource({});
    if (!outcome.copy || finishCopy(store.path(), *outcome.copy, ToTheEnd).kind != StoreFinding::Kind::Sound)
        qFatal("no copy: %s", qUtf8Printable(outcome.finding.technical));
}

} // namespace

/// The safety copies and the store's size, as pontrel-admin tells them.
class AdminTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aCommandLineThatIsNoneIsRefused_data();
    void aCommandLineThatIsNoneIsRefused();
    void helpIsShown();
    void aMissingStoreIsTold();
    void theListTellsTheCopiesTheNewestFirst();
    void theListTellsThatTheLastCopyFailed();
    void aCopyIsMadeAndLookedThrough();
    void aCopyMadeDuringAnActionHoldsWhatIsCommitted();
    void aCopyThatCannotBeMadeIsTold();
    void aSoundCopyIsSound();
    void aDamagedCopyIsTold();
    void theSizeCountsEveryRow();
    void whatWritesIsRefusedInAnotherUsersFolder();
};

void AdminTest::aCommandLineThatIsNoneIsRefused_data() {
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QString>("complaint");
    const auto row = [](const char* title, const QStringList& words, const QString& complaint) {
        QTest::newRow(title) << words << complaint;
    };
    const QString which = u"Say what to do: list, copy, check, restore or size."_s;
    row("no command", {}, u"Name the program folder, and say what to do."_s);
    row("an unknown command", {u"purge"_s}, which);
    row("a restore of nothing", {u"restore"_s}, which);
    row("a restore of two copies", {u"restore"_s, u"a"_s, u"b"_s}, which);
    row("a list of something", {u"list"_s, u"a"_s}, which);
    row("a copy of something", {u"copy"_s, u"a"_s}, which);
    row("an unknown option", {u"list"_s, u"--all"_s}, u"Unknown option 'all'."_s);
}

void AdminTest::aCommandLineThatIsNoneIsRefused() {
    QFETCH(const QStringList, words);
    QFETCH(const QString, complaint);
    const TestStore store;
    const AdminEnd end = admin(store.folder(), words);
    QCOMPARE(end.status, 2);
    QCOMPARE(end.output, QString());
    QVERIFY2(end.errors.startsWith(complaint + u"\n\nUsage: "_s), qPrintable(end.errors));
    QCOMPARE(namesIn(store.folder() + u"/DB"_s), QStringList{u"Pontrel.mdb"_s});
}

void AdminTest::helpIsShown() {
    const AdminEnd end = admin(u"."_s, {u"--help"_s});
    QCOMPARE(end.status, 0);
    QCOMPARE(end.errors, QString());
    for (const QString& command :
         {u"\nlist "_s, u"\ncopy "_s, u"\ncheck "_s, u"\ncheck COPY "_s, u"\nrestore COPY "_s, u"\nsize "_s})
        QVERIFY2(end.output.contains(command), qPrintable(command));
}

void AdminTest::aMissingStoreIsTold() {
    const QTemporaryDir folder;
    for (const QString& command : {u"copy"_s, u"check"_s, u"size"_s}) {
        const AdminEnd end = admin(folder.path(), {command});
        QCOMPARE(end.status, 1);
        QCOMPARE(end.errors, u"There is no store %1/DB/Pontrel.mdb.\n"_s.arg(folder.path()));
    }
    const AdminEnd end = admin(folder.path(), {u"list"_s});
    QCOMPARE(end.status, 1);
    QCOMPARE(end.errors, u"There is no folder %1/DB.\n"_s.arg(folder.path()));
    QCOMPARE(namesIn(folder.path()), QStringList());
}

void AdminTest::theListTellsTheCopiesTheNewestFirst() {
    const TestStore store;
    const QString none = u"There are no safety copies in %1/DB/backup.\n"_s.arg(store.folder());
    QCOMPARE(admin(store.folder(), {u"list"_s}).output, none);
    makeCopy(store, CopyReason::Day, QDateTime(QDate(2026, 11, 21), QTime(8, 0)));
    makeCopy(store, CopyReason::Replace, QDateTime(QDate(2026, 11, 21), QTime(8, 30, 5)));
    makeCopy(store, CopyReason::Purge, QDateTime(QDate(2026, 11, 22), QTime(9, 30)));
    makeCopy(store, CopyReason::Hand, QDateTime(QDate(2026, 11, 22), QTime(9, 31)));
    const QString folder = copyFolderOf(store.path()) + u'/';
    QVERIFY(QFile::copy(folder + u"Pontrel-20261121-080000-day.mdb"_s, folder + u"mine.mdb"_s));
    QVERIFY(QFile::rename(folder + u"Pontrel-20261122-093100-hand.mdb"_s,
                          folder + u".unchecked-Pontrel-20261122-093100-hand.mdb"_s));
    const AdminEnd end = admin(store.folder(), {u"list"_s});
    QCOMPARE(end.status, 0);
    QCOMPARE(end.errors, QString());
    const QString size = QString::number(QFileInfo(folder + u"mine.mdb"_s).size());
    QStringList lines = end.output.split(u'\n');
    for (QString& line : lines)
        line = line.simplified();
    QCOMPARE(
        lines,
        QStringList({u"Pontrel-20261122-093000-purge.mdb 2026-11-22 09:30:00 %1 before a purge"_s.arg(size),
                     u"Pontrel-20261121-083005-replace.mdb 2026-11-21 08:30:05 %1 before a "
                     "replaced day"_s.arg(size),
                     u"Pontrel-20261121-080000-day.mdb 2026-11-21 08:00:00 %1 first start of "
                     "the day"_s.arg(size),
                     u"Pontrel-20261122-093100-hand.mdb still to be looked through: the next "
                     "start of the program does it"_s,
                     QString()}));
}

void AdminTest::theListTellsThatTheLastCopyFailed() {
    const TestStore store;
    clock::setSource([] { return QDateTime(QDate(2026, 11, 22), QTime(9, 30)); });
    noteFailedCopy(store.path(), u"no safety copy:\ntoo little room"_s);
    clock::setSource({});
    const AdminEnd failed = admin(store.folder(), {u"list"_s});
    QCOMPARE(failed.status, 1);
    QCOMPARE(failed.output.split(u'\n').at(1),
             u"The program's last copy failed: 2026-11-22 09:30:00 no safety copy: too little room"_s);
    QCOMPARE(admin(store.folder(), {u"copy"_s}).status, 0);
    const AdminEnd made = admin(store.folder(), {u"list"_s});
    QCOMPARE(made.status, 0);
    QVERIFY(!made.output.contains(u"failed"_s));
}

void AdminTest::aCopyIsMadeAndLookedThrough() {
    TestStore store;
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"1"}, {u"Title", u"科員"}});
    const QByteArray before = contentOf(store.path());
    const AdminEnd end = admin(store.folder(), {u"copy"_s});
    QCOMPARE(end.errors, QString());
    QCOMPARE(end.status, 0);
    const QList<SafetyCopy> copies = safetyCopiesOf(store.path());
    QCOMPARE(copies.size(), 1);
    QVERIFY(copies[0].reason == CopyReason::Hand);
    const QString path = copyFolderOf(store.path()) + u'/' + copies[0].name();
    QCOMPARE(end.output, u"Made "_s + path + u'\n');
    QCOMPARE(namesIn(copyFolderOf(store.path())), QStringList{copies[0].name()});
    Database copy(path);
    QCOMPARE(rowsOf(copy, u"Base01"_s), QStringList{u"1|科員"_s});
    QVERIFY(contentOf(store.path()) == before);
}

void AdminTest::aCopyMadeDuringAnActionHoldsWhatIsCommitted() {
    TestStore store;
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"1"}});
    Stage stage(store.database());
    store.database().execute(u"insert into Base01(TitleNo) values('2')"_s);
    QCOMPARE(admin(store.folder(), {u"copy"_s}).status, 0);
    stage.finish();
    const QList<SafetyCopy> copies = safetyCopiesOf(store.path());
    QCOMPARE(copies.size(), 1);
    Database copy(copyFolderOf(store.path()) + u'/' + copies[0].name());
    QCOMPARE(rowsOf(copy, u"Base01"_s), QStringList{u"1|null"_s});
    QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList({u"1|null"_s, u"2|null"_s}));
}

void AdminTest::aCopyThatCannotBeMadeIsTold() {
    const TestStore store;
    QFile inItsPlace(copyFolderOf(store.path()));
    QVERIFY(inItsPlace.open(QIODevice::WriteOnly));
    const AdminEnd end = admin(store.folder(), {u"copy"_s});
    QCOMPARE(end.status, 1);
    QCOMPARE(end.errors, u"The copy could not be made: no safety copy: the folder %1 cannot be made\n"_s.arg(
                             copyFolderOf(store.path())));
}

void AdminTest::aSoundCopyIsSound() {
    const TestStore store;
    makeCopy(store, CopyReason::Day, QDateTime(QDate(2026, 11, 21), QTime(8, 0)));
    const QString name = u"Pontrel-20261121-080000-day.mdb"_s;
    const QString path = copyFolderOf(store.path()) + u'/' + name;
    for (const QString& word : {name, path}) {
        const AdminEnd end = admin(store.folder(), {u"check"_s, word});
        QCOMPARE(end.errors, QString());
        QCOMPARE(end.status, 0);
        QCOMPARE(end.output, path + u" is sound.\n"_s);
    }
    const AdminEnd none = admin(store.folder(), {u"check"_s, u"Pontrel-20261121-080001-day.mdb"_s});
    QCOMPARE(none.status, 1);
    QCOMPARE(none.errors,
             u"There is no copy %1/Pontrel-20261121-080001-day.mdb.\n"_s.arg(copyFolderOf(store.path())));
}

void AdminTest::aDamagedCopyIsTold() {
    const TestStore store;
    makeCopy(store, CopyReason::Day, QDateTime(QDate(2026, 11, 21), QTime(8, 0)));
    const QString name = u"Pontrel-20261121-080000-day.mdb"_s;
    const QString path = copyFolderOf(store.path()) + u'/' + name;
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite) && file.resize(file.size() - 8192));
    file.close();
    const QByteArray before = contentOf(path);
    const AdminEnd end = admin(store.folder(), {u"check"_s, name});
    QCOMPARE(end.errors, QString());
    QCOMPARE(end.status, 1);
    QVERIFY2(end.output.startsWith(path + u" is damaged: "_s), qPrintable(end.output));
    QVERIFY(contentOf(path) == before);
}

void AdminTest::theSizeCountsEveryRow() {
    const TestStore store;
    {
        // As many as are counted in one piece, one less, one more, and over three of them with gaps.
        SQLite::Database engine(store.path().toStdString(), SQLite::OPEN_READWRITE);
        engine.exec("WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 50000) "
                    "INSERT INTO AtteTemp(EmpNo) SELECT i FROM n;"
                    "INSERT INTO AtteTemp1(EmpNo) SELECT EmpNo FROM AtteTemp LIMIT 49999;"
                    "INSERT INTO Holi02(SuitNo) SELECT EmpNo FROM AtteTemp; INSERT INTO Holi02(SuitNo) "
                    "VALUES('x');"
                    "INSERT INTO Over01(rowid, EmpNo) SELECT 3 * rowid - 75000, EmpNo FROM AtteTemp;"
                    "INSERT INTO Over01(EmpNo) SELECT EmpNo FROM AtteTemp;");
    }
    const AdminEnd end = admin(store.folder(), {u"size"_s});
    QCOMPARE(end.errors, QString());
    QCOMPARE(end.status, 0);
    QStringList lines = end.output.split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(
        lines.takeFirst(),
        u"%1: %2 bytes, 0 of them free for new rows"_s.arg(store.path()).arg(QFileInfo(store.path()).size()));
    QStringList filled;
    for (const QString& line : lines)
        if (!line.endsWith(u" 0 rows"_s))
            filled += line.simplified();
    QCOMPARE(filled, QStringList({u"AtteTemp 50000 rows"_s, u"AtteTemp1 49999 rows"_s, u"Holi02 50001 rows"_s,
                                  u"Over01 100000 rows"_s, u"Syst01 1 rows"_s, u"syst02 1 rows"_s,
                                  u"Syst03 3 rows"_s}));
    QCOMPARE(lines.size(), 27);
}

/// What root leaves there is root's alone: the program of the folder's owner could no longer write its
/// copies, or read its own store.
void AdminTest::whatWritesIsRefusedInAnotherUsersFolder() {
    if (::geteuid() != 0)
        QSKIP("Only root can give a folder to another user.");
    const TestStore store;
    makeCopy(store, CopyReason::Day, QDateTime(QDate(2026, 11, 21), QTime(8, 0)));
    const QString name = u"Pontrel-20261121-080000-day.mdb"_s;
    const QString folder = QFileInfo(store.path()).path();
    QCOMPARE(::chown(QFile::encodeName(folder).constData(), 65533, 65533), 0);
    const QStringList before = namesIn(folder) + namesIn(copyFolderOf(store.path()));
    for (const QStringList& words : {QStringList{u"copy"_s}, {u"check"_s}, {u"restore"_s, name}}) {
        const AdminEnd end = admin(store.folder(), words);
        QCOMPARE(end.status, 1);
        QCOMPARE(end.output, QString());
        QVERIFY2(end.errors.startsWith(folder + u" belongs to "_s) &&
                     end.errors.endsWith(u": this has to be done as that user.\n"_s),
                 qPrintable(end.errors));
        QCOMPARE(namesIn(folder) + namesIn(copyFolderOf(store.path())), before);
    }
    for (const QStringList& words : {QStringList{u"list"_s}, {u"size"_s}, {u"check"_s, name}})
        QCOMPARE(admin(store.folder(), words).status, 0);
    QCOMPARE(namesIn(folder) + namesIn(copyFolderOf(store.path())), before);
}

QTEST_GUILESS_MAIN(AdminTest)
#include "AdminTest.moc"
