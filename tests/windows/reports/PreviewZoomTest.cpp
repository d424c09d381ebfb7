#include "app/Habits.h"
#include "windows/reports/PreviewFixture.h"

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// The view of a preview as it is on a screen of that ratio.
QImage pictureOf(QWidget& view, double ratio) {
    QImage picture((QSizeF(view.size()) * ratio).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    view.render(&picture);
    picture.setDevicePixelRatio(1);
    return picture;
}

/// How much ink lies on the paper, in pixels of the page at its own size.
double inkOn(const QImage& picture, double ratio) {
    double ink = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb point = picture.pixel(x, y);
            const bool isGrey = qRed(point) == qGreen(point) && qGreen(point) == qBlue(point);
            if (isGrey) // neither the ground around the page nor its edge is
                ink += (255 - qRed(point)) / 255.0;
        }
    }
    return ink / (ratio * ratio);
}

} // namespace

/// The zoom of a preview beside that of the program.
class PreviewZoomTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void keysOfThePreviewAreItsOwn();
    void pagesAreSharpAtEveryZoomOfTheProgram_data();
    void pagesAreSharpAtEveryZoomOfTheProgram();
    void theGroundAroundThePaperIsDarkOnADarkDesktop();
};

void PreviewZoomTest::keysOfThePreviewAreItsOwn() {
    PreviewFixture fixture;
    fixture.open();
    const double before = fixture.pages().zoom();
    QTest::keyClick(fixture.preview().windowHandle(), Qt::Key_Plus, Qt::ControlModifier);
    const double larger = fixture.pages().zoom();
    QVERIFY(larger > before);
    QTest::keyClick(fixture.preview().windowHandle(), Qt::Key_Minus, Qt::ControlModifier);
    QVERIFY(fixture.pages().zoom() < larger);
    QTest::keyClick(fixture.preview().windowHandle(), Qt::Key_0, Qt::ControlModifier);
    const double now = fixture.pages().zoom(); // the whole page is seen
    QVERIFY(now < before);
    QVERIFY(!fixture.preview().findChild<QLabel*>(u"Notice"_s));
    QCOMPARE(Habits::ofUser().value(u"zoom"_s), QString());
    // The main window behind it has the program's.
    fixture.mainWindow().activateWindow();
    QTest::keyClick(fixture.mainWindow().windowHandle(), Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(Habits::ofUser().zoom(), 125);
    QCOMPARE(fixture.pages().zoom(), now);
    Habits::ofUser().leave();
}

void PreviewZoomTest::pagesAreSharpAtEveryZoomOfTheProgram_data() {
    QTest::addColumn<double>("ratio");
    for (const double ratio : {1.25, 1.5, 1.75, 2.0, 2.5, 3.0})
        QTest::addRow("%d percent", qRound(ratio * 100)) << ratio;
}

void PreviewZoomTest::pagesAreSharpAtEveryZoomOfTheProgram() {
    QFETCH(const double, ratio);
    PreviewFixture fixture;
    fixture.open();
    QWidget& view = *fixture.pages().viewport();
    // A page at half its size has letters of a few pixels, with strokes a whole pixel wide. More pixels make
    // them as fine as they should be; the same letters merely enlarged would have more ink instead.
    fixture.pages().setZoom(50);
    const double plain = inkOn(pictureOf(view, 1), 1);
    const double finer = inkOn(pictureOf(view, ratio), ratio);
    QVERIFY(finer > plain / 2);
    QVERIFY2(finer < 0.95 * plain, qPrintable(u"%1 in place of %2"_s.arg(finer).arg(plain)));
}

void PreviewZoomTest::theGroundAroundThePaperIsDarkOnADarkDesktop() {
    PreviewFixture fixture;
    fixture.open();
    QWidget& view = *fixture.pages().viewport();
    const QPoint beside(3, 3); // in the gap above the first page
    const QColor light = pictureOf(view, 1).pixelColor(beside);
    QPalette dark = fixture.pages().palette();
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    fixture.pages().setPalette(dark);
    const QImage picture = pictureOf(view, 1);
    QVERIFY(picture.pixelColor(beside).lightness() < light.lightness() / 2);
    // The paper is paper.
    QCOMPARE(picture.pixelColor(view.width() / 2, 30), QColor(Qt::white));
}

int main(int argc, char** argv) {
    return runTests<PreviewZoomTest>(argc, argv);
}

#include "PreviewZoomTest.moc"
