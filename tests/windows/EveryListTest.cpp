#include "rules/attendance/DailyCalculation.h"
#include "rules/writeoff/WriteOffCounts.h"
#include "support/CsvText.h"
#include "support/Dump.h"
#include "support/FakeHost.h"
#include "support/Patience.h"
#include "windows/Walk.h"

#include "app/controls/TDBGridModel.h"

#include <QClipboard>
#include <QDir>
#include <QMenu>
#include <QRegularExpression>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// Those that the example has no rows for: nobody with an exception has leave or a write-off on that day. The
/// tab beside has the same lists.
const QStringList EmptyLists{u"Form3/異常處理 TDBG4(0)"_s, u"Form3/異常處理 TDBG4(1)"_s};

QMenu* openMenu() {
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

/// Opens a list's menu by the keyboard and presses that entry; whether there was one.
bool choose(TDBGrid& grid, const QString& entry) {
    QTest::keyClick(&grid, Qt::Key_F10, Qt::ShiftModifier);
    QMenu* menu = openMenu();
    auto* action = menu ? menu->findChild<QAction*>(entry) : nullptr;
    if (!action || !action->isEnabled())
        return false;
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
    return true;
}

/// The cells of a row as they are seen, a check mark by the word that is said of it ahead of its fault.
QStringList seenRow(const TDBGrid& grid, int row) {
    QStringList cells;
    for (int column = 0; column < grid.model()->columnCount(); ++column) {
        const QModelIndex cell = grid.model()->index(row, column);
        const bool isMark = cell.data(Qt::CheckStateRole).isValid();
        const QString text = cell.data(isMark ? Qt::AccessibleTextRole : Qt::DisplayRole).toString();
        const QString fault = cell.data(TDBGridModel::FaultRole).toString();
        cells << (isMark && !fault.isEmpty() ? QString(text).remove(u' ' + fault) : text);
    }
    return cells;
}

/// Where a list that follows another one has no rows, goes down that one until it has some.
void fill(const TDBGrid& grid, const QWidget& window) {
    for (TDBGrid* other : window.findChildren<TDBGrid*>()) {
        for (int row = 0; grid.model()->rowCount() == 0 && row < other->model()->rowCount(); ++row) {
            if (other->isVisible() && other != &grid)
                other->setCurrentIndex(other->model()->index(row, 0));
        }
    }
}

/// The sort of what a cell holds, by its value and by what stands there: words may stand in place of a value.
enum class Sort { Nothing, Text, Number, Date, Time, DateTime };

Sort sortOfCell(const Value& value, const QString& seen) {
    const auto looksLike = [&seen](const QString& pattern) {
        return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(seen).hasMatch();
    };
    const QString day = u"\\d{4}/\\d{1,2}/\\d{1,2}"_s;
    const QString time = u"\\d\\d:\\d\\d"_s;
    if (seen.isEmpty())
        return Sort::Nothing;
    switch (value.type()) {
    case ColumnType::Unknown:
    case ColumnType::Text:
    case ColumnType::Boolean:
        return Sort::Text;
    case ColumnType::Date:
    case ColumnType::Time:
    case ColumnType::DateTime:
        return looksLike(day)                 ? Sort::Date
               : looksLike(time)              ? Sort::Time
               : looksLike(day + u' ' + time) ? Sort::DateTime
                                              : Sort::Text;
    default:
        return looksLike(u"-?\\d+(\\.\\d+)?"_s) ? Sort::Number : Sort::Text;
    }
}

/// What a cell of a saved spreadsheet holds, and the text that a list shows of such a thing.
std::pair<Sort, QString> readCell(const SheetCell& cell) {
    if (cell.isText)
        return {Sort::Text, cell.content};
    const double number = cell.content.toDouble();
    const auto days = static_cast<qint64>(std::floor(number));
    const QString day = QDate(1899, 12, 30).addDays(days).toString(u"yyyy/M/d"_s);
    const auto second = static_cast<int>(std::lround((number - static_cast<double>(days)) * 24 * 60 * 60));
    const QString time = QTime(0, 0).addSecs(second).toString(u"hh:mm"_s);
    if (cell.format == u"yyyy/mm/dd" && second == 0)
        return {Sort::Date, day};
    if (cell.format == u"hh:mm" && days == 0)
        return {Sort::Time, time};
    if (cell.format == u"yyyy/mm/dd hh:mm")
        return {Sort::DateTime, day + u' ' + time};
    if (cell.format.isEmpty())
        return {Sort::Number, QString::number(number)};
    return {Sort::Nothing, cell.content + u" shown by "_s + cell.format};
}

/// "B2", or "AD2" behind the column Z; counted from 0.
QString cellName(int row, int column) {
    constexpr int Letters = 26;
    const QString ahead = column < Letters ? QString() : QString(QChar(u'A' + column / Letters - 1));
    return ahead + QChar(u'A' + column % Letters) + QString::number(row + 1);
}

/// What a spreadsheet holds otherwise than the list shows it; empty where it is the list.
QStringList differencesFrom(const TDBGrid& grid, const QString& path) {
    QStringList faults;
    if (sheetOf(path, 1).value(0) != u"frozen at A2")
        faults << u"the captions are not frozen"_s;
    QHash<QString, SheetCell> cells = cellsOf(path);
    const auto compare = [&](int row, int column, Sort sort, const QString& seen) {
        const QString name = cellName(row, column);
        const bool isThere = cells.contains(name);
        const auto [found, text] = isThere ? readCell(cells.take(name)) : std::pair(Sort::Nothing, QString());
        if (found != sort || text != seen)
            faults << u"%1 holds %2 (%3) for %4 (%5)"_s.arg(name, text)
                          .arg(static_cast<int>(found))
                          .arg(seen)
                          .arg(static_cast<int>(sort));
    };
    const TDBGridModel& rows = grid.rows();
    for (int column = 0; column < rows.columnCount(); ++column) {
        const QString caption = rows.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        compare(0, column, caption.isEmpty() ? Sort::Nothing : Sort::Text, caption);
    }
    for (int row = 0; row < rows.rowCount(); ++row) {
        const QStringList seen = seenRow(grid, row);
        const std::vector<Value> values = rows.readRows(row, 1).at(0);
        for (int column = 0; column < rows.columnCount(); ++column) {
            const int place = rows.placeOf(column);
            const Value value = place < 0 ? Value() : values.at(static_cast<std::size_t>(place));
            compare(row + 1, column, sortOfCell(value, seen.at(column)), seen.at(column));
        }
    }
    if (!cells.isEmpty())
        faults << u"more than the list: "_s + QStringList(cells.keys()).join(u' ');
    return faults;
}

/// The captions and all rows.
QList<QStringList> seenLines(const TDBGrid& grid) {
    QStringList captions;
    for (int column = 0; column < grid.model()->columnCount(); ++column)
        captions << grid.model()->headerData(column, Qt::Horizontal).toString();
    QList<QStringList> lines{captions};
    for (int row = 0; row < grid.model()->rowCount(); ++row)
        lines << seenRow(grid, row);
    return lines;
}

/// The example organisation after its two weeks: its punches and results, and the write-offs of one counted.
void makeStore(TestStore& store) {
    fillWithDemo(store);
    FakeHost host(&store.database());
    DailyCalculation calculation(store.database(), host);
    for (const DemoPunchFile& file : demoPunchFiles()) {
        host.punchFile = store.punchFolder() + u'/' + file.name;
        calculation.ReadPunchFile();
        if (!calculation.finished())
            qFatal("a punch file was not read");
    }
    const QString writtenOff =
        rowsOfSelection(store.database(), u"select EmpNo from Canc02 where isnull(CnlNo1) = False"_s).at(0);
    CountWriteOffs(store.database(), writtenOff, {2010, 1, 1}, {2010, 3, 31});
}

/// Every list of the program, in windows and dialogs.
class Lists {
  public:
    explicit Lists(PromptAnswers& answers) : answers_(answers) {}

    void look(QWidget& window, const QString& place) {
        for (TDBGrid* grid : window.findChildren<TDBGrid*>()) {
            if (!grid->isVisible())
                continue;
            ++seen_;
            const QString name = place + u' ' + grid->objectName();
            fill(*grid, window);
            grid->setFocus();
            const int row = grid->currentIndex().row();
            menuByMouse(*grid, name);
            copyRow(*grid, name);
            exportText(*grid, name);
            exportTable(*grid, name);
            if (grid->currentIndex().row() != row)
                faults_ << name + u": another row is current"_s;
        }
    }

    [[nodiscard]] int seen() const { return seen_; }
    [[nodiscard]] QString told() const { return faults_.join(u'\n'); }
    [[nodiscard]] const QStringList& proposals() const { return proposals_; }

  private:
    /// Over the second row: the first one stays.
    void menuByMouse(TDBGrid& grid, const QString& name) {
        QWidget* window = grid.window();
        const QRect second = grid.visualRect(grid.model()->index(1, 0));
        const QPoint place = second.isValid() ? second.center() : QPoint(5, 5);
        QTest::mouseClick(window->windowHandle(), Qt::RightButton, Qt::NoModifier,
                          grid.viewport()->mapTo(window, place));
        QMenu* menu = openMenu();
        if (!menu || menu->objectName() != u"GridMenu")
            faults_ << name + u": no menu by the mouse"_s;
        if (menu)
            menu->close();
    }

    void copyRow(TDBGrid& grid, const QString& name) {
        QGuiApplication::clipboard()->setText(u"(before)"_s);
        QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
        const int row = grid.currentIndex().row();
        const QString expected = row < 0 ? u"(before)"_s : seenRow(grid, row).join(u'\t');
        if (QGuiApplication::clipboard()->text() != expected)
            faults_ << name + u": copied is "_s + QGuiApplication::clipboard()->text();
    }

    /// Exports by that entry of the menu; the path of the file.
    QString exportBy(TDBGrid& grid, const QString& entry, const QString& ending, const QString& name) {
        const QString path = folder_.filePath(u"%1."_s.arg(seen_) + ending);
        answers_.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
            auto& box = control<QLineEdit>(dialog, u"fileNameEdit"_s);
            const QString proposal = box.text();
            if (proposal.size() < 5 || !proposal.endsWith(u'.' + ending) || proposal.contains(u'&'))
                faults_ << name + u": proposed is "_s + proposal;
            proposals_ << proposal;
            box.setText(path);
            QTest::keyClick(&box, Qt::Key_Return);
        });
        answers_.expectMsgBox();
        if (!choose(grid, entry))
            faults_ << name + u": no export"_s;
        return path;
    }

    void exportText(TDBGrid& grid, const QString& name) {
        const QList<QStringList> lines = csvOf(exportBy(grid, u"ActExportCsv"_s, u"csv"_s, name));
        if ((lines.size() < 2) != EmptyLists.contains(name))
            faults_ << name + u": %1 lines in all"_s.arg(lines.size());
        if (lines != seenLines(grid))
            faults_ << name + u": another table in the file"_s;
    }

    void exportTable(TDBGrid& grid, const QString& name) {
        const QString path = exportBy(grid, u"ActExportSheet"_s, u"xlsx"_s, name);
        for (const QString& each : differencesFrom(grid, path))
            faults_ << name + u": "_s + each;
    }

    PromptAnswers& answers_;
    QTemporaryDir folder_;
    int seen_ = 0;
    QStringList faults_;
    QStringList proposals_;
};

} // namespace

/// The lists of all windows and dialogs leave the program as they are seen.
class EveryListTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void listsOfWindowsLeaveTheProgram_data() { addEveryWindow(); }
    void listsOfWindowsLeaveTheProgram();
    void listsOfDialogsLeaveTheProgram_data() { addEveryDialog(); }
    void listsOfDialogsLeaveTheProgram();
};

void EveryListTest::listsOfWindowsLeaveTheProgram() {
    QFETCH(const std::size_t, window);
    Walk walk(makeStore);
    Window& form = walk.open(window);
    const QString name = form.objectName();
    Lists lists(walk.answers);
    onEveryPage(form, name, [&](const QString& place) { lists.look(form, place); });
    QVERIFY2(lists.told().isEmpty(), qPrintable(lists.told()));
    QCOMPARE(walk.answers.trouble(), QString());
    const QMap<QString, int> least{{u"Form1"_s, 6}, {u"Form2"_s, 1}, {u"Form3"_s, 4}, {u"Form4"_s, 5},
                                   {u"Form5"_s, 3}, {u"Form6"_s, 2}, {u"FrmPsw"_s, 0}};
    QVERIFY2(lists.seen() >= least.value(name), qPrintable(QString::number(lists.seen())));
}

void EveryListTest::listsOfDialogsLeaveTheProgram() {
    QFETCH(const std::size_t, dialog);
    Walk walk(makeStore);
    Lists lists(walk.answers);
    walk.show(dialog, [&lists](QWidget& shown) { lists.look(shown, shown.objectName()); });
    QVERIFY2(lists.told().isEmpty(), qPrintable(lists.told()));
    QCOMPARE(walk.answers.trouble(), QString());
    const bool isLookup = dialog <= static_cast<std::size_t>(LookupKind::QFrmEmpNO);
    QCOMPARE(lists.seen(), isLookup ? 1 : 0);
    if (isLookup) {
        const QString title = lookupTexts(static_cast<LookupKind>(dialog)).title;
        QCOMPARE(lists.proposals(), (QStringList{title + u".csv"_s, title + u".xlsx"_s}));
    }
}

int main(int argc, char** argv) {
    return runTests<EveryListTest>(argc, argv);
}

#include "EveryListTest.moc"
