#include "app/controls/Colors.h"
#include "support/Contrast.h"
#include "support/Patience.h"
#include "windows/attendance/Form3Exceptions.h"
#include "windows/attendance/Form3Fixture.h"

#include <QHelpEvent>
#include <QToolTip>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// The columns of the positions and of "遲到.早退" among the exceptions.
const QList<int> Places{4, 5, 6, 7, 8};
const QString Exceptions = u"TDBG3(0)"_s;
const QString Results = u"TDBG3(1)"_s;

Fields allPunched() {
    return {{u"Time1", QTime(8, 0)},  {u"FT1", true}, {u"Time2", QTime(12, 0)}, {u"FT2", true},
            {u"Time3", QTime(13, 0)}, {u"FT3", true}, {u"Time4", QTime(17, 0)}, {u"FT4", true}};
}

Fields with(Fields fields, const Fields& more) {
    return fields << more;
}

/// A day, and what its positions and its mark of lateness say in the list of exceptions.
struct Day4 {
    const char* name;
    Fields fields;
    QStringList faults;
};

QList<Day4> days() {
    const QString none;
    const auto missing = [](const QString& position) { return position + u"沒有打卡，也沒有請假或註銷"_s; };
    const QString shortMorning = u"上午上班到下班 3 小時 59 分鐘，未滿 4 小時，差 1 分鐘"_s;
    const QString late = u"上午上班遲到 5 分鐘（自緩衝時間過後算起）"_s;
    const QString early = u"下午下班早退 12 分鐘"_s;
    Fields brief = allPunched();
    brief[2] = {u"Time2", QTime(11, 59)};
    Fields reversed = allPunched();
    reversed[2] = {u"Time2", QTime(4, 1)};
    return {
        {"nothing wrong", allPunched(), {none, none, none, none, none}},
        {"nothing stored", {}, {none, none, none, none, none}},
        {"the morning missing",
         missingMorning(),
         {missing(u"上午上班"_s), missing(u"上午下班"_s), none, none, none}},
        {"late and early, the last alone at fault",
         with(allPunched(),
              {{u"Delay1", 5}, {u"Earlier4", 12}, {u"DelayF", 4}, {u"F4", true}, {u"Expt", true}}),
         {late, none, none, early, early}},
        {"early before noon, late after it",
         with(allPunched(),
              {{u"Earlier2", 3}, {u"Delay3", 1}, {u"DelayF", 3}, {u"F3", true}, {u"Expt", true}}),
         {none, u"上午下班早退 3 分鐘"_s, u"下午上班遲到 1 分鐘（自緩衝時間過後算起）"_s, none,
          u"下午上班遲到 1 分鐘（自緩衝時間過後算起）"_s}},
        {"within the cushion", with(allPunched(), {{u"Cushion1", 4}}), {none, none, none, none, none}},
        {"a morning too short",
         with(brief, {{u"Expt", true}}),
         {shortMorning, shortMorning, none, none, none}},
        {"a way out before the way in, whose size counts",
         with(reversed, {{u"Expt", true}}),
         {shortMorning, shortMorning, none, none, none}},
        {"a short morning that leave excuses",
         with(brief, {{u"Expt", true}, {u"FH2", true}}),
         {none, none, none, none, none}},
        {"a short morning that is no exception", brief, {none, none, none, none, none}},
        {"minutes and marks that are null",
         with(allPunched(), {{u"Delay1", Value()}, {u"DelayF", Value()}, {u"F1", false}}),
         {none, none, none, none, none}},
    };
}

struct Faults : Form3Fixture {
    void openOn(const Fields& fields) {
        addSlot(database(), u"A"_s);
        addEmployee(database(), u"10001"_s, {{u"EmpName", u"王小明"}});
        addException(database(), u"10001"_s, Day, fields);
        open();
        clickTab(2);
    }
    [[nodiscard]] QModelIndex cell(const QString& grid, int column) const {
        return at<TDBGrid>(grid).model()->index(0, column);
    }
    /// What the tooltip shows over a cell.
    [[nodiscard]] QString tip(const QString& grid, int column) const {
        const auto& list = at<TDBGrid>(grid);
        const QPoint place = list.visualRect(cell(grid, column)).center();
        QToolTip::hideText();
        (void)QTest::qWaitFor([] { return !QToolTip::isVisible(); }, PatienceMs);
        QHelpEvent event(QEvent::ToolTip, place, list.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list.viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }
    [[nodiscard]] QImage picture(int column) const {
        const auto& list = at<TDBGrid>(Exceptions);
        return list.viewport()->grab(list.visualRect(cell(Exceptions, column))).toImage();
    }
};

QPalette themed(const QColor& base, const QColor& text) {
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    return palette;
}

double contrastOf(const QColor& one, const QColor& other) {
    QImage both(2, 1, QImage::Format_RGB32);
    both.setPixelColor(0, 0, one);
    both.setPixelColor(1, 0, other);
    return contrastIn(both, both.rect());
}

} // namespace

/// The lists of exceptions and results say of each position what is wrong with it.
class Form3FaultsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void eachPositionTellsItsFault_data();
    void eachPositionTellsItsFault();
    void theResultsTellTheWholeDay();
    void aFaultIsTintedAndMarked();
    void theMarkStaysInTheRowSelected();
    void tintAndMarkAreLegibleInEveryTheme_data();
    void tintAndMarkAreLegibleInEveryTheme();
    void assistiveTechnologyHearsIt();
};

void Form3FaultsTest::eachPositionTellsItsFault_data() {
    QTest::addColumn<qsizetype>("number");
    for (qsizetype number = 0; number < days().size(); ++number)
        QTest::newRow(days().at(number).name) << number;
}

void Form3FaultsTest::eachPositionTellsItsFault() {
    QFETCH(const qsizetype, number);
    const Day4 day = days().at(number);
    Faults it;
    it.openOn(day.fields);
    QStringList told;
    QStringList tips;
    for (const int column : Places) {
        told << it.cell(Exceptions, column).data(Qt::ToolTipRole).toString();
        tips << it.tip(Exceptions, column);
    }
    QCOMPARE(told, day.faults);
    QCOMPARE(tips, day.faults);
    for (const int column : {0, 1, 2, 3, 9, 10, 11})
        QCOMPARE(it.tip(Exceptions, column), QString());
}

void Form3FaultsTest::theResultsTellTheWholeDay() {
    Faults it;
    it.openOn(with(allPunched(), {{u"Delay1", 5}, {u"Earlier4", 12}, {u"F4", true}, {u"Expt", true}}));
    it.clickTab(3);
    QCOMPARE(it.tip(Results, 4), u"上午上班遲到 5 分鐘（自緩衝時間過後算起）"_s);
    QCOMPARE(it.tip(Results, 5), QString());
    QCOMPARE(it.tip(Results, 7), u"下午下班早退 12 分鐘"_s);
    QCOMPARE(it.tip(Results, 8), u"上午上班遲到 5 分鐘（自緩衝時間過後算起）\n下午下班早退 12 分鐘"_s);
}

void Form3FaultsTest::aFaultIsTintedAndMarked() {
    Faults it;
    it.openOn(missingMorning());
    auto& grid = it.at<TDBGrid>(Exceptions);
    grid.clearSelection(); // the row selected has a ground of its own
    grid.setCurrentIndex({});
    const QImage faulty = it.picture(4);
    const QImage right = it.picture(6);
    const QColor ground = colors::faultGround(grid.palette());
    const QColor base = grid.palette().color(QPalette::Base);
    QVERIFY(ground != base);
    QCOMPARE(faulty.pixelColor(3, faulty.height() / 2), ground);
    QCOMPARE(right.pixelColor(1, 1), base);
    const auto corner = [](const QImage& picture) { return picture.pixelColor(picture.width() - 2, 1); };
    QCOMPARE(corner(faulty), colors::faultMark(grid.palette()));
    QCOMPARE(corner(right), base);
}

void Form3FaultsTest::theMarkStaysInTheRowSelected() {
    Faults it;
    it.openOn(missingMorning());
    const auto& grid = it.at<TDBGrid>(Exceptions);
    QCOMPARE(grid.currentIndex().row(), 0);
    const auto corner = [](const QImage& picture) { return picture.pixelColor(picture.width() - 2, 1); };
    QCOMPARE(corner(it.picture(4)), grid.palette().color(QPalette::HighlightedText));
    QVERIFY(corner(it.picture(6)) != corner(it.picture(4)));
}

void Form3FaultsTest::tintAndMarkAreLegibleInEveryTheme_data() {
    QTest::addColumn<QColor>("base");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << QColor(Qt::white) << QColor(Qt::black);
    QTest::newRow("dark") << QColor(0x1e, 0x1e, 0x1e) << QColor(0xe6, 0xe6, 0xe6);
    QTest::newRow("high contrast, dark") << QColor(Qt::black) << QColor(Qt::yellow);
    QTest::newRow("high contrast, light") << QColor(Qt::white) << QColor(0, 0, 0x80);
    QTest::newRow("pale text") << QColor(Qt::white) << QColor(0x70, 0x70, 0x70);
}

void Form3FaultsTest::tintAndMarkAreLegibleInEveryTheme() {
    QFETCH(const QColor, base);
    QFETCH(const QColor, text);
    const QPalette palette = themed(base, text);
    QVERIFY(contrastOf(colors::faultGround(palette), text) >= 4.5);
    QVERIFY(contrastOf(colors::faultGround(palette), colors::faultMark(palette)) >= 3);
}

void Form3FaultsTest::assistiveTechnologyHearsIt() {
    Faults it;
    it.openOn(with(allPunched(), {{u"Delay1", 5}, {u"DelayF", 1}, {u"F1", true}, {u"Expt", true}}));
    QCOMPARE(it.cell(Exceptions, 4).data(Qt::AccessibleTextRole).toString(),
             u"08:00 上午上班遲到 5 分鐘（自緩衝時間過後算起）"_s);
    QCOMPARE(it.cell(Exceptions, 5).data(Qt::AccessibleTextRole).toString(), u"12:00"_s);
    QCOMPARE(it.cell(Results, 8).data(Qt::AccessibleTextRole).toString(), QString());
    it.clickTab(3);
    QCOMPARE(it.cell(Results, 8).data(Qt::AccessibleTextRole).toString(),
             u"是 上午上班遲到 5 分鐘（自緩衝時間過後算起）"_s);
}

int main(int argc, char** argv) {
    return runTests<Form3FaultsTest>(argc, argv);
}

#include "Form3FaultsTest.moc"
