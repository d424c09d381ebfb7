#include "app/controls/TDBMask.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// A window with the mask and a box after it.
struct MaskForm : QWidget {
    TDBMask mask;
    QLineEdit next;
    MaskForm() {
        auto* rows = new QVBoxLayout(this);
        rows->addWidget(&mask);
        rows->addWidget(&next);
        mask.setFocus();
        show();
    }
    [[nodiscard]] bool waitActive() { return QTest::qWaitForWindowActive(this, PatienceMs); }
};

} // namespace

class controlsMaskTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void typedDigitsStandBetweenSlashes();
    void valueIsTheSixPlaces_data();
    void valueIsTheSixPlaces();
    void blankMaskIsTheEmptyText();
    void lettersAreRefused();
    void fullWidthDigitsBecomePlain();
    void inputMethodDigitsBecomePlain();
    void backspaceLeavesItsPlaceBlank();
    void enterMovesOnFromAnIncompleteMask();
    void enterMovesOnFromAFullMask();
    void typingIntoAFullMaskReplacesIt();
    void clickIntoABlankMaskStartsAtTheYear();
    void typingStartsAtTheYearWhereCodeHasSetTheFocus();
    void typingStartsAtTheYearAfterTheMaskWasEmptied();
    void pastedDigitsBecomePlain();
    void changedTellsEachOtherValueOnce();
    void clearTellsAChangeOnlyWhereThereWasText();
    void sevenCharactersBlankItWithoutAChange();
    void typingAfterSevenCharactersIsAChange();
};

void controlsMaskTest::typedDigitsStandBetweenSlashes() {
    MaskForm form;
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"900131"_s);
    QCOMPARE(form.mask.displayText(), u"90/01/31"_s);
    QCOMPARE(form.mask.value(), u"900131"_s);
}

void controlsMaskTest::valueIsTheSixPlaces_data() {
    QTest::addColumn<QString>("set");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("value");
    QTest::newRow("six characters fill it") << u"900131"_s << u"90/01/31"_s << u"900131"_s;
    QTest::newRow("five stand from the left") << u"91205"_s << u"91/20/5_"_s << u"91205"_s;
    QTest::newRow("two are the year") << u"90"_s << u"90/__/__"_s << u"90"_s;
    QTest::newRow("none") << u""_s << u"__/__/__"_s << u""_s;
    QTest::newRow("a blank in the middle keeps its place") << u"9 0131"_s << u"9_/01/31"_s << u"9 0131"_s;
    QTest::newRow("seven blank it") << u"1150131"_s << u"__/__/__"_s << u""_s;
}

void controlsMaskTest::valueIsTheSixPlaces() {
    QFETCH(QString, set);
    TDBMask mask;
    mask.setValue(u"880808"_s);
    mask.setValue(set);
    QTEST(mask.displayText(), "shown");
    QTEST(mask.value(), "value");
}

void controlsMaskTest::blankMaskIsTheEmptyText() {
    const TDBMask mask;
    QVERIFY(mask.value().isEmpty());
    QCOMPARE(mask.displayText(), u"__/__/__"_s);
}

void controlsMaskTest::lettersAreRefused() {
    MaskForm form;
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"9a0 /-1"_s);
    QCOMPARE(form.mask.value().remove(u' '), u"901"_s);
}

void controlsMaskTest::fullWidthDigitsBecomePlain() {
    MaskForm form;
    QVERIFY(form.waitActive());
    for (const QChar digit : u"９００１３１"_s) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(digit));
        QCoreApplication::sendEvent(&form.mask, &press);
    }
    QCOMPARE(form.mask.value(), u"900131"_s);
}

void controlsMaskTest::inputMethodDigitsBecomePlain() {
    MaskForm form;
    QVERIFY(form.waitActive());
    QInputMethodEvent commit;
    commit.setCommitString(u"９００１３１"_s);
    QCoreApplication::sendEvent(&form.mask, &commit);
    QCOMPARE(form.mask.value(), u"900131"_s);
}

void controlsMaskTest::backspaceLeavesItsPlaceBlank() {
    MaskForm form;
    QVERIFY(form.waitActive());
    form.mask.setValue(u"900131"_s);
    QTest::keyClick(&form.mask, Qt::Key_Home);
    QTest::keyClick(&form.mask, Qt::Key_Right);
    QTest::keyClick(&form.mask, Qt::Key_Backspace);
    QCOMPARE(form.mask.displayText(), u"_0/01/31"_s);
    QCOMPARE(form.mask.value(), u" 00131"_s);
}

void controlsMaskTest::enterMovesOnFromAnIncompleteMask() {
    MaskForm form;
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"900"_s);
    QTest::keyClick(&form.mask, Qt::Key_Return);
    QVERIFY(form.next.hasFocus());
    QCOMPARE(form.mask.value(), u"900"_s);
}

void controlsMaskTest::enterMovesOnFromAFullMask() {
    MaskForm form;
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"900131"_s);
    QTest::keyClick(&form.mask, Qt::Key_Enter);
    QVERIFY(form.next.hasFocus());
}

void controlsMaskTest::typingIntoAFullMaskReplacesIt() {
    MaskForm form;
    QVERIFY(form.waitActive());
    form.mask.setValue(u"900131"_s);
    form.next.setFocus();
    QTest::keyClick(&form.next, Qt::Key_Tab, Qt::ShiftModifier);
    QVERIFY(form.mask.hasFocus());
    QTest::keyClicks(&form.mask, u"880215"_s);
    QCOMPARE(form.mask.value(), u"880215"_s);
}

void controlsMaskTest::clickIntoABlankMaskStartsAtTheYear() {
    MaskForm form;
    QVERIFY(form.waitActive());
    form.next.setFocus();
    QTest::mouseClick(&form.mask, Qt::LeftButton, Qt::NoModifier, form.mask.rect().center());
    QTest::keyClicks(&form.mask, u"900131"_s);
    QCOMPARE(form.mask.value(), u"900131"_s);
}

void controlsMaskTest::typingStartsAtTheYearWhereCodeHasSetTheFocus() {
    MaskForm form;
    QVERIFY(form.waitActive());
    form.next.setFocus();
    form.mask.setText(u"90/01/31"_s);
    form.mask.setFocus();
    QTest::keyClicks(&form.mask, u"880215"_s);
    QCOMPARE(form.mask.value(), u"880215"_s);
}

void controlsMaskTest::typingStartsAtTheYearAfterTheMaskWasEmptied() {
    MaskForm form;
    QVERIFY(form.waitActive());
    form.mask.setValue(u"900131"_s);
    form.mask.setValue(QString());
    QTest::keyClicks(&form.mask, u"880215"_s);
    QCOMPARE(form.mask.value(), u"880215"_s);
    form.mask.clear();
    QTest::keyClicks(&form.mask, u"900131"_s);
    QCOMPARE(form.mask.value(), u"900131"_s);
}

void controlsMaskTest::pastedDigitsBecomePlain() {
    MaskForm form;
    QVERIFY(form.waitActive());
    QApplication::clipboard()->setText(u"９０/０１/３１"_s);
    QTest::keySequence(&form.mask, QKeySequence::Paste);
    QCOMPARE(form.mask.value(), u"900131"_s);
    QCOMPARE(form.mask.displayText(), u"90/01/31"_s);
}

void controlsMaskTest::changedTellsEachOtherValueOnce() {
    MaskForm form;
    QVERIFY(form.waitActive());
    const QSignalSpy changes(&form.mask, &TDBMask::changed);
    QTest::keyClicks(&form.mask, u"900131"_s);
    QCOMPARE(changes.count(), 6);
    form.mask.setValue(u"900131"_s);
    QCOMPARE(changes.count(), 6);
    form.mask.setValue(u"900201"_s);
    QCOMPARE(changes.count(), 7);
}

void controlsMaskTest::clearTellsAChangeOnlyWhereThereWasText() {
    TDBMask mask;
    const QSignalSpy changes(&mask, &TDBMask::changed);
    mask.clear();
    QCOMPARE(changes.count(), 0);
    mask.setValue(u"900131"_s);
    mask.clear();
    QCOMPARE(changes.count(), 2);
    QVERIFY(mask.value().isEmpty());
}

void controlsMaskTest::sevenCharactersBlankItWithoutAChange() {
    TDBMask mask;
    mask.setValue(u"900131"_s);
    const QSignalSpy changes(&mask, &TDBMask::changed);
    mask.setValue(u"1150131"_s);
    QCOMPARE(changes.count(), 0);
    QVERIFY(mask.value().isEmpty());
    QCOMPARE(mask.displayText(), u"__/__/__"_s);
}

void controlsMaskTest::typingAfterSevenCharactersIsAChange() {
    MaskForm form;
    QVERIFY(form.waitActive());
    form.mask.setValue(u"900131"_s);
    form.mask.setValue(u"1150131"_s);
    const QSignalSpy changes(&form.mask, &TDBMask::changed);
    form.mask.setCursorPosition(0);
    QTest::keyClicks(&form.mask, u"900131"_s);
    QCOMPARE(changes.count(), 6);
    QCOMPARE(form.mask.value(), u"900131"_s);
}

int main(int argc, char** argv) {
    return pontrel::test::runTests<controlsMaskTest>(argc, argv);
}

#include "controlsMaskTest.moc"
