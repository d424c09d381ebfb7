#include "app/GridForm.h"
#include "support/Patience.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

/// Which rows a grid reads: those in sight, whatever is done in it.
class controlsGridReadingTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void noKeyReadsMoreThanTheRowsInSight_data();
    void noKeyReadsMoreThanTheRowsInSight();
    void noCommittedTextReadsARow();
    void noScrollReadsMoreThanTheRowsInSight();
    void aColumnIsFittedToTheRowsInSight();
    void readsOnlyTheRowsInView();
    void atTheEndTheRowThatIsCutOffIsReadToo();
};

void controlsGridReadingTest::noKeyReadsMoreThanTheRowsInSight_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    const auto add = [](const char* name, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::newRow(name) << int(key) << int(modifiers);
    };
    add("a letter", Qt::Key_X);
    add("a letter with Shift", Qt::Key_Z, Qt::ShiftModifier);
    add("a digit that no row begins with", Qt::Key_9);
    add("a digit that each begins with", Qt::Key_0);
    add("a sign", Qt::Key_Asterisk);
    add("Space", Qt::Key_Space);
    add("Enter", Qt::Key_Return);
    add("Escape", Qt::Key_Escape);
    add("F2", Qt::Key_F2);
    add("Down", Qt::Key_Down);
    add("Right", Qt::Key_Right);
    add("Page Down", Qt::Key_PageDown);
    add("Page Up", Qt::Key_PageUp);
    add("Home", Qt::Key_Home);
    add("End", Qt::Key_End);
    add("the last row", Qt::Key_End, Qt::ControlModifier);
    add("the first row", Qt::Key_Home, Qt::ControlModifier);
    add("Down with Shift", Qt::Key_Down, Qt::ShiftModifier);
    add("all", Qt::Key_A, Qt::ControlModifier);
    add("copy", Qt::Key_C, Qt::ControlModifier);
}

void controlsGridReadingTest::noKeyReadsMoreThanTheRowsInSight() {
    QFETCH(const int, key);
    QFETCH(const int, modifiers);
    GridForm form;
    form.addPunches(5000);
    form.open();
    form.source.moveTo(2500);
    form.grid.setFocus();
    form.grid.grab();
    const qint64 before = form.rowsRead();
    QVERIFY(before >= form.rowsInSight() - 3);
    const int row = form.currentRow();
    QTest::keyClick(&form.grid, static_cast<Qt::Key>(key), static_cast<Qt::KeyboardModifiers>(modifiers));
    form.grid.grab();
    QCoreApplication::processEvents();
    QVERIFY2(
        form.rowsReadSince(before) <= form.rowsInSight(),
        qPrintable(u"%1 rows read, %2 in sight"_s.arg(form.rowsReadSince(before)).arg(form.rowsInSight())));
    if (key >= Qt::Key_Space && key < Qt::Key_Escape)
        QCOMPARE(form.currentRow(), row); // what is typed moves nothing
}

void controlsGridReadingTest::noCommittedTextReadsARow() {
    GridForm form;
    form.addPunches(5000);
    form.open();
    form.grid.setFocus();
    form.grid.grab();
    const qint64 before = form.rowsRead();
    for (const QString& text : {u"王"_s, u"９"_s, u"004999"_s, u"x"_s})
        form.commit(text);
    QCOMPARE(form.rowsReadSince(before), 0);
    QCOMPARE(form.currentRow(), 0);
}

void controlsGridReadingTest::noScrollReadsMoreThanTheRowsInSight() {
    GridForm form;
    form.addPunches(5000);
    form.open();
    form.grid.grab();
    QScrollBar& bar = *form.grid.verticalScrollBar();
    for (const int place : {2500, bar.maximum(), 10, 0}) {
        const qint64 before = form.rowsRead();
        bar.setValue(place);
        form.grid.grab();
        QCoreApplication::processEvents();
        QVERIFY2(form.rowsReadSince(before) <= form.rowsInSight(), qPrintable(QString::number(place)));
    }
    const qint64 before = form.rowsRead();
    bar.setValue(1000);
    form.grid.grab();
    QVERIFY(form.rowsReadSince(before) > 0); // what came into sight was read, so that the counter counts
    const qint64 turned = form.rowsRead();
    turnWheel(*form.grid.viewport(), false);
    form.grid.grab();
    QVERIFY(bar.value() > 1000);
    QVERIFY(form.rowsReadSince(turned) <= form.rowsInSight());
}

/// A double click on the line beside a caption.
void controlsGridReadingTest::aColumnIsFittedToTheRowsInSight() {
    GridForm form;
    form.addPunches(5000);
    form.open();
    form.source.moveTo(2500);
    form.grid.grab();
    const qint64 before = form.rowsRead();
    const QPoint line(form.grid.columnViewportPosition(1) - 1, form.grid.horizontalHeader()->height() / 2);
    QTest::mouseDClick(form.grid.horizontalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, line);
    QVERIFY(form.grid.columnWidth(0) != 80);
    QVERIFY2(form.rowsReadSince(before) <= form.rowsInSight(),
             qPrintable(QString::number(form.rowsReadSince(before))));
}

void controlsGridReadingTest::readsOnlyTheRowsInView() {
    GridForm form;
    form.addPunches(5000);
    // The rows beyond the view are gone before anything asks for them: what was read by then is what shows.
    form.source.setRecordSource(u"Atte01"_s);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form, PatienceMs));
    form.source.Refresh();
    form.grid.grab();
    form.store.database().execute(u"delete * from Atte01"_s);
    QCOMPARE(form.grid.model()->rowCount(), 5000);
    QCOMPARE(form.text(0, 0), u"000001"_s);
    QCOMPARE(form.text(5, 0), u"000006"_s);
    QCOMPARE(form.text(2500, 0), QString());
    QCOMPARE(form.text(4999, 0), QString());
}

void controlsGridReadingTest::atTheEndTheRowThatIsCutOffIsReadToo() {
    GridForm form;
    form.addPunches(5000);
    form.open();
    // A height at which the first row in sight is cut off.
    const int section = form.grid.verticalHeader()->defaultSectionSize();
    form.resize(form.width(), form.height() + section / 2 - form.grid.viewport()->height() % section);
    form.source.MoveLast();
    form.grid.grab();
    QTRY_COMPARE_WITH_TIMEOUT(form.grid.viewport()->height() % section, section / 2, PatienceMs);
    const int cutOff = form.grid.rowAt(0);
    QVERIFY(cutOff > 0 && form.grid.rowViewportPosition(cutOff) < 0);
    QVERIFY(cutOff < form.grid.verticalScrollBar()->value());
    // Reading it is all that is asked for now: painting reads nothing.
    auto& model = static_cast<TDBGridModel&>(*form.grid.model());
    model.setPainting(true);
    QCOMPARE(form.text(cutOff, 0), u"%1"_s.arg(cutOff + 1, 6, 10, QChar(u'0')));
    model.setPainting(false);
    QVERIFY(!model.takeMissed());
}

int main(int argc, char** argv) {
    return runTests<controlsGridReadingTest>(argc, argv);
}

#include "controlsGridReadingTest.moc"
