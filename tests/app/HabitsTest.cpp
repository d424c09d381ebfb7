#include "app/Habits.h"

#include "support/AppSupport.h"
#include "support/SavedFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

/// The file of window habits, and what stands in for it where it is of no use.
class HabitsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void whatIsRememberedIsReadAnew();
    void theFileOfAUserLiesAmongHisSettings();
    void aProcessThatNamesNoFileWritesNone();
    void missingHabitsAreTheDefaults();
    void aDamagedFileMeansDefaultsAndIsMended_data();
    void aDamagedFileMeansDefaultsAndIsMended();
    void aPlaceThatCannotBeWrittenIsNoError_data();
    void aPlaceThatCannotBeWrittenIsNoError();
    void whatIsNoFileIsLeftAlone();
    void anotherProgramsHabitsStay();
    void widthsOutOfReasonAreDropped();
    void anotherFileTakesThePlaceOfWhatIsRemembered();
    void aFileOfAnotherKindByItsSizeIsLeftAlone();

  private:
    [[nodiscard]] QString file() const { return folder_.filePath(u"%1/pontrel/habits.ini"_s.arg(test_)); }
    [[nodiscard]] QByteArray bytes() const {
        QFile read(file());
        return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray();
    }
    void write(const QByteArray& text) const {
        QDir().mkpath(QFileInfo(file()).path());
        writeContent(file(), text);
    }

    QTemporaryDir folder_;
    int test_ = 0; ///< Each has a file of its own: Qt reads one anew by its size and time alone.

  private Q_SLOTS:
    void cleanup() {
        Habits::ofUser().leave();
        ++test_;
    }
};

void HabitsTest::whatIsRememberedIsReadAnew() {
    const QMap<QString, int> widths{{u"EmpNo"_s, 81}, {u"EmpName"_s, 120}};
    Habits habits;
    habits.keepIn(file());
    habits.setZoom(175);
    habits.setColumnWidths(u"Form3.TDBGrid1(0)"_s, widths);
    habits.setColumnWidths(u"Form3.TDBGrid1(1)"_s, widths);
    habits.setColumnWidths(u"Form3.TDBGrid1(1)"_s, {});
    Habits read;
    read.keepIn(file());
    QCOMPARE(read.zoom(), 175);
    QCOMPARE(read.columnWidths(u"Form3.TDBGrid1(0)"_s), widths);
    QCOMPARE(read.columnWidths(u"Form3.TDBGrid1(1)"_s), (QMap<QString, int>()));
    QCOMPARE(QDir(QFileInfo(file()).path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{u"habits.ini"_s}); // no temporary file stays
}

void HabitsTest::theFileOfAUserLiesAmongHisSettings() {
    const QByteArray before = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder_.path()));
    QCOMPARE(Habits::userFile(), folder_.filePath(u"pontrel/habits.ini"_s));
    before.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", before);
}

void HabitsTest::aProcessThatNamesNoFileWritesNone() {
    Habits::ofUser().setZoom(200);
    QCOMPARE(Habits::ofUser().zoom(), 200);
    QVERIFY(!QFile::exists(file()));
    Habits::ofUser().leave();
    QCOMPARE(Habits::ofUser().zoom(), 100);
}

void HabitsTest::missingHabitsAreTheDefaults() {
    Habits habits;
    habits.keepIn(file());
    QCOMPARE(habits.zoom(), 100);
    QCOMPARE(habits.columnWidths(u"Form3.TDBGrid1(0)"_s), (QMap<QString, int>()));
    QVERIFY(!QFile::exists(file())); // reading makes none
}

void HabitsTest::aDamagedFileMeansDefaultsAndIsMended_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addRow("empty") << QByteArray();
    QTest::addRow("no lines of the kind") << QByteArray("\x01\x02[[[\n=====\nzoom\n]]");
    QTest::addRow("nulls") << QByteArray(4000, '\0');
    QTest::addRow("values of another kind")
        << QByteArray("[General]\nzoom=large\n[columns]\nForm3.Grid=EmpNo EmpNo:x :\n");
    QTest::addRow("lists and empty values") << QByteArray("[General]\nzoom=1, 2\ncolumns=\n");
    QTest::addRow("a number beyond all bounds") << QByteArray("[General]\nzoom=99999999999999999999\n");
    QTest::addRow("not UTF-8") << QByteArray("[General]\nzoom=\xff\xfe\xfd\n");
}

void HabitsTest::aDamagedFileMeansDefaultsAndIsMended() {
    QFETCH(const QByteArray, text);
    write(text);
    Habits habits;
    habits.keepIn(file());
    QCOMPARE(habits.zoom(), 100);
    QCOMPARE(habits.columnWidths(u"Form3.Grid"_s).value(u"EmpNo"_s, -1), -1);
    habits.setZoom(150);
    Habits read;
    read.keepIn(file());
    QCOMPARE(read.zoom(), 150);
}

void HabitsTest::aPlaceThatCannotBeWrittenIsNoError_data() {
    QTest::addColumn<QString>("path");
    QTest::addRow("a folder that cannot be made") << u"/proc/pontrel/habits.ini"_s;
    QTest::addRow("below a file") << u"/etc/passwd/pontrel/habits.ini"_s;
    QTest::addRow("a file of the system") << u"/proc/version"_s;
}

void HabitsTest::aPlaceThatCannotBeWrittenIsNoError() {
    QFETCH(const QString, path);
    Habits habits;
    habits.keepIn(path);
    QCOMPARE(habits.zoom(), 100);
    habits.setZoom(150);
    QCOMPARE(habits.zoom(), 150); // for this run
    Habits read;
    read.keepIn(path);
    QCOMPARE(read.zoom(), 100);
}

void HabitsTest::whatIsNoFileIsLeftAlone() {
    QVERIFY(QDir().mkpath(file()));
    Habits habits;
    habits.keepIn(file());
    habits.setZoom(150);
    QCOMPARE(habits.zoom(), 150);
    QVERIFY(QDir(file()).exists());
    QVERIFY(QDir(file()).removeRecursively());
    const QByteArray large = "[General]\nzoom=150\n" + QByteArray(2'000'000, ';');
    write(large);
    habits.keepIn(file());
    QCOMPARE(habits.zoom(), 100);
    habits.setZoom(200);
    QCOMPARE(bytes(), large);
}

void HabitsTest::anotherProgramsHabitsStay() {
    Habits first;
    first.keepIn(file());
    Habits second;
    second.keepIn(file());
    first.setZoom(125);
    second.setColumnWidths(u"Form3.Grid"_s, {{u"EmpNo"_s, 90}});
    Habits read;
    read.keepIn(file());
    QCOMPARE(read.zoom(), 125);
    QCOMPARE(read.columnWidths(u"Form3.Grid"_s), (QMap<QString, int>{{u"EmpNo"_s, 90}}));
}

void HabitsTest::widthsOutOfReasonAreDropped() {
    Habits habits;
    habits.setValue(u"columns/Form3.Grid"_s, u"A:19 B:20 C:4000 D:4001 E:-60 F:60.5 G:60:70 H"_s);
    QCOMPARE(habits.columnWidths(u"Form3.Grid"_s), (QMap<QString, int>{{u"B"_s, 20}, {u"C"_s, 4000}}));
}

void HabitsTest::anotherFileTakesThePlaceOfWhatIsRemembered() {
    Habits habits;
    habits.setZoom(150);
    habits.keepIn(file());
    QCOMPARE(habits.zoom(), 100);
    habits.setZoom(175);
    ++test_;
    habits.keepIn(file());
    QCOMPARE(habits.zoom(), 100);
    ++test_;
    QVERIFY(QDir().mkpath(file())); // no file at all
    habits.setZoom(200);
    habits.keepIn(file());
    QCOMPARE(habits.zoom(), 100);
}

void HabitsTest::aFileOfAnotherKindByItsSizeIsLeftAlone() {
    const QByteArray large = "[General]\nzoom=150\nrest=" + QByteArray(1'000'000, 'x') + '\n';
    write(large);
    Habits habits;
    habits.keepIn(file());
    QCOMPARE(habits.zoom(), 100);
    habits.setZoom(175);
    QCOMPARE(habits.zoom(), 175); // for this run
    QVERIFY(bytes() == large);
    // One that has become so since it was read.
    write("[General]\nzoom=125\n");
    habits.keepIn(file());
    QCOMPARE(habits.zoom(), 125);
    write(large);
    habits.setZoom(200);
    QVERIFY(bytes() == large);
}

int main(int argc, char** argv) {
    return runTests<HabitsTest>(argc, argv);
}

#include "HabitsTest.moc"
