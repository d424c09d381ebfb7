#include "app/controls/Colors.h"
#include "support/AppSupport.h"

#include <QTabWidget>
#include <QTableView>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

constexpr double Seen =
    1.4; ///< The contrast that a line of the style has at the least, to what lies around it.

/// Whether a line stands somewhere on the way from one point to the other, both in a picture's own pixels.
bool crossesLine(const QImage& picture, QPoint from, QPoint to) {
    const QColor ground = picture.pixelColor(from);
    const int steps = std::max(std::abs(to.x() - from.x()), std::abs(to.y() - from.y()));
    for (int step = 1; step <= steps; ++step) {
        const QPoint place = from + (to - from) * step / steps;
        if (colors::contrast(picture.pixelColor(place), ground) >= Seen)
            return true;
    }
    return false;
}

/// A window as it is on a screen of that ratio.
QImage pictureOf(QWidget& window, double ratio) {
    QImage picture((QSizeF(window.size()) * ratio).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    window.render(&picture);
    return picture;
}

} // namespace

/// What the program's style makes of Qt's.
class ProgramStyleTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void framesAreWholeAtEveryZoom_data();
    void framesAreWholeAtEveryZoom();
    void thePageOfTabsHasItsLeftLine_data() { framesAreWholeAtEveryZoom_data(); }
    void thePageOfTabsHasItsLeftLine();
};

void ProgramStyleTest::framesAreWholeAtEveryZoom_data() {
    QTest::addColumn<double>("ratio");
    for (const double ratio : {1.0, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0})
        QTest::addRow("%d percent", qRound(ratio * 100)) << ratio;
}

void ProgramStyleTest::framesAreWholeAtEveryZoom() {
    QFETCH(const double, ratio);
    // At places on and between pixels.
    for (int offset = 0; offset < 8; ++offset) {
        QWidget window;
        window.resize(120, 100);
        QTableView grid(&window);
        grid.horizontalHeader()->hide();
        grid.verticalHeader()->hide();
        QPalette plain = grid.palette(); // so that nothing but the frame stands out
        plain.setColor(QPalette::Base, window.palette().color(QPalette::Window));
        grid.setPalette(plain);
        grid.setGeometry(10 + offset, 10 + offset, 70 + offset, 60 + offset);
        window.show();
        const QImage picture = pictureOf(window, ratio);
        const auto at = [ratio](QPoint place) { return (QPointF(place) * ratio).toPoint(); };
        const QRect frame = grid.geometry();
        const QPoint middle = frame.center();
        constexpr int Near = 4;
        const auto crosses = [&](QPoint edge, QPoint outward) {
            return crossesLine(picture, at(edge + outward * Near), at(edge - outward * Near));
        };
        QVERIFY2(crosses({frame.left(), middle.y()}, {-1, 0}), qPrintable(u"left %1"_s.arg(offset)));
        QVERIFY2(crosses({frame.right(), middle.y()}, {1, 0}), qPrintable(u"right %1"_s.arg(offset)));
        QVERIFY2(crosses({middle.x(), frame.top()}, {0, -1}), qPrintable(u"top %1"_s.arg(offset)));
        QVERIFY2(crosses({middle.x(), frame.bottom()}, {0, 1}), qPrintable(u"bottom %1"_s.arg(offset)));
    }
}

void ProgramStyleTest::thePageOfTabsHasItsLeftLine() {
    QFETCH(const double, ratio);
    for (int offset = 0; offset < 8; ++offset) {
        QWidget window;
        window.resize(200, 120);
        QTabWidget tabs(&window);
        tabs.addTab(new QWidget(&tabs), u"一"_s);
        tabs.setGeometry(4 + offset, 4, 150, 100);
        window.show();
        const QImage picture = pictureOf(window, ratio);
        const auto at = [ratio](QPoint place) { return (QPointF(place) * ratio).toPoint(); };
        QVERIFY2(crossesLine(picture, at({tabs.x() - 3, 80}), at({tabs.x() + 4, 80})),
                 qPrintable(QString::number(offset)));
    }
}

int main(int argc, char** argv) {
    return runTests<ProgramStyleTest>(argc, argv);
}

#include "ProgramStyleTest.moc"
