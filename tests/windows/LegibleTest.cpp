#include "windows/Reading.h"
#include "windows/Walk.h"

#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

/// Whatever is shown can be read, also where it can only be read.
class LegibleTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void contrastIsMeasured();
    void textsOfWindowsAreLegible_data() { addEveryWindow(); }
    void textsOfWindowsAreLegible();
    void textsOfDialogsAreLegible_data() { addEveryDialog(); }
    void textsOfDialogsAreLegible();
    void keysThatAreOffAreToldFromThoseThatAreOn();
};

void LegibleTest::contrastIsMeasured() {
    QWidget window;
    window.setGeometry(0, 0, 200, 40);
    QLabel label(u"可以讀"_s, &window);
    label.setGeometry(10, 10, 100, 20);
    window.show();
    const auto measured = [&](const QColor& text, const QColor& ground) {
        QPalette colors = window.palette();
        colors.setColor(QPalette::WindowText, text);
        colors.setColor(QPalette::Window, ground);
        window.setPalette(colors);
        return contrastIn(window.grab().toImage(), shownTexts(window).constFirst().place);
    };
    QVERIFY(std::abs(measured(Qt::black, Qt::white) - 21.0) < 0.5);
    QVERIFY(std::abs(measured(QColor(0x76, 0x76, 0x76), Qt::white) - 4.54) < 0.3);
    QVERIFY(measured(QColor(0xbe, 0xbe, 0xbe), QColor(0xef, 0xef, 0xef)) < 1.8);
    QCOMPARE(measured(Qt::white, Qt::white), 1.0);
}

void LegibleTest::textsOfWindowsAreLegible() {
    QFETCH(const std::size_t, window);
    Walk walk;
    Window& form = walk.open(window);
    Reading reading(form);
    int edits = 0;
    const auto read = [&](const QString& place, bool isEdit) {
        edits += isEdit;
        reading.read(place);
    };
    inEveryState(form, read, &walk.answers);
    QCOMPARE(walk.answers.trouble(), QString());
    if (form.objectName() != u"Form8"_s) // which has nothing but buttons
        QVERIFY(reading.enabledTexts() > 4);
    // A window whose rows can be edited was read in both states. The fields of a report depend on its option.
    QCOMPARE(reading.disabledTexts() > 4, edits > 0 || form.objectName() == u"Form7"_s);
    QVERIFY2(reading.pale().isEmpty(), qPrintable(reading.pale()));
}

void LegibleTest::textsOfDialogsAreLegible() {
    QFETCH(const std::size_t, dialog);
    Walk walk;
    QString pale;
    walk.show(dialog, [&pale](QWidget& shown) {
        Reading reading(shown);
        reading.read(shown.objectName());
        pale = reading.pale();
    });
    QCOMPARE(walk.answers.trouble(), QString());
    QVERIFY2(pale.isEmpty(), qPrintable(pale));
}

void LegibleTest::keysThatAreOffAreToldFromThoseThatAreOn() {
    Walk walk;
    const Window& form = walk.open(0);
    auto& caps = control<QLabel>(form, u"StbTool(3)"_s);
    const auto contrast = [&](bool on) {
        caps.setEnabled(on);
        return contrastIn(caps.grab().toImage(), caps.rect().adjusted(3, 3, -3, -3));
    };
    QVERIFY(contrast(true) > 3 * contrast(false));
}

int main(int argc, char** argv) {
    return runTests<LegibleTest>(argc, argv);
}

#include "LegibleTest.moc"
