#include "app/Habits.h"
#include "app/Printers.h"
#include "app/Zoom.h"
#include "app/help/HelpWindow.h"
#include "support/OwnScreen.h"
#include "windows/EveryWindow.h"
#include "windows/reports/PreviewFixture.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QScreen>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString WalkOption = u"--walk"_s;
/// Of a usual frame, which the zoom leaves alone.
constexpr int CaptionHeight = 32;

/// What of a window lies on its screen: "whole", or how large it is and what there is.
QString placeOf(const QWidget& window) {
    const QRect screen = window.screen()->availableGeometry();
    const QSize size = window.size() + QSize(0, CaptionHeight * 100 / zoom::inForce());
    if (size.width() <= screen.width() && size.height() <= screen.height() &&
        screen.contains(window.geometry()))
        return u"whole"_s;
    return u"%1 x %2 at %3, %4 of %5 x %6"_s.arg(size.width())
        .arg(size.height())
        .arg(window.x())
        .arg(window.y())
        .arg(screen.width())
        .arg(screen.height());
}

/// Tells of everything that opens over the main window where it lies.
int walk(const QString& habits, char** arguments) {
    Habits::ofUser().keepIn(habits);
    const auto application = zoom::startApplication(arguments);
    writeLine(u"zoom %1"_s.arg(zoom::inForce()));
    PreviewFixture fixture({}, 1);
    const auto look = [](const QWidget& window) {
        writeLine(window.objectName() + u": "_s + placeOf(window));
    };
    const auto lookAndClose = [look](QWidget& dialog) {
        look(dialog);
        closeDialog(dialog);
    };
    for (const EveryDialog& each : everyDialog()) {
        fixture.answers.expect(each.objectName, lookAndClose);
        each.show();
    }
    // A month that stands in six weeks, and a day with the button for its other row.
    const QDate day(2001, 9, 30);
    for (const QString& TimeNo : {u"A"_s, u"B"_s})
        insertRow(fixture.store.database(), u"Atte02"_s,
                  {{u"EmpNo", u"10001"}, {u"UseDate", day}, {u"TimeNo", TimeNo}});
    fixture.answers.expect(u"DayJudgement"_s, lookAndClose);
    DayJudgement::ask(&fixture.mainWindow(), u"10001"_s, day);
    fixture.answers.expect(u"CommonDialog1"_s, lookAndClose);
    (void)chooseFile(fixture.folder.path(), u"Text (*.txt)"_s);
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, &fixture.mainWindow());
    if (QPrinterInfo::availablePrinters().isEmpty())
        fixture.answers.expectMsgBox();
    fixture.answers.expect(u"PrintDialog"_s, lookAndClose);
    (void)askForPrinter(dialog);
    HelpWindow::open({u"index.md"_s});
    look(*HelpWindow::current());
    look(fixture.open());
    writeLine(u"trouble: "_s + fixture.answers.trouble());
    return 0;
}

} // namespace

/// On screens that are small for the zoom, whatever opens has room: its buttons are all in sight.
class SmallScreenTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void everythingLiesOnTheScreen_data();
    void everythingLiesOnTheScreen();
};

void SmallScreenTest::everythingLiesOnTheScreen_data() {
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<int>("zoom");
    const auto row = [](QSize screen, int zoom) {
        QTest::addRow("%d x %d at %d percent", screen.width(), screen.height(), zoom) << screen << zoom;
    };
    row({800, 600}, 100);
    // Common screens less a panel, each with the largest zoom that has room there.
    row({1366, 728}, 100);
    row({1366, 728}, 150);
    row({1280, 984}, 200);
    row({1920, 1040}, 200);
    row({2560, 1400}, 250);
}

void SmallScreenTest::everythingLiesOnTheScreen() {
    QFETCH(const QSize, screen);
    QFETCH(const int, zoom);
    const QTemporaryDir folder;
    const QString habits = folder.filePath(u"habits.ini"_s);
    Habits kept;
    kept.keepIn(habits);
    kept.setZoom(zoom);
    QProcess process;
    process.setProcessEnvironment(environmentOfScreen(folder.path(), screen));
    process.start(QCoreApplication::applicationFilePath(), {WalkOption, habits});
    QVERIFY(process.waitForFinished(PatienceMs));
    const QStringList lines =
        QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    QStringList expected{u"zoom %1"_s.arg(zoom)};
    for (const EveryDialog& each : everyDialog())
        expected += each.objectName + u": whole"_s;
    for (const QString& name :
         {u"DayJudgement"_s, u"CommonDialog1"_s, u"PrintDialog"_s, u"HelpWindow"_s, u"ReportPreview"_s})
        expected += name + u": whole"_s;
    expected += u"trouble: "_s;
    QCOMPARE(lines, expected);
}

int main(int argc, char** argv) {
    if (argc == 3 && QString::fromLocal8Bit(argv[1]) == WalkOption)
        return walk(QString::fromLocal8Bit(argv[2]), argv);
    return runTests<SmallScreenTest>(argc, argv);
}

#include "SmallScreenTest.moc"
