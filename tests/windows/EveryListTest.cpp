#include "support/CsvText.h"
#include "support/Patience.h"
#include "windows/Walk.h"

#include "app/controls/TDBGrid.h"

#include <QClipboard>
#include <QDir>
#include <QMenu>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

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

/// The cells of a row as they are seen, a check mark by the word that is said of it.
QStringList seenRow(const TDBGrid& grid, int row) {
    QStringList cells;
    for (int column = 0; column < grid.model()->columnCount(); ++column) {
        const QModelIndex cell = grid.model()->index(row, column);
        const bool isMark = cell.data(Qt::CheckStateRole).isValid();
        cells << cell.data(isMark ? Qt::AccessibleTextRole : Qt::DisplayRole).toString();
    }
    return cells;
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
            grid->setFocus();
            const int row = grid->currentIndex().row();
            menuByMouse(*grid, name);
            copyRow(*grid, name);
            exportAll(*grid, name);
            if (grid->currentIndex().row() != row)
                faults_ << name + u": another row is current"_s;
        }
    }

    [[nodiscard]] int seen() const { return seen_; }
    [[nodiscard]] int rows() const { return rows_; }
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

    void exportAll(TDBGrid& grid, const QString& name) {
        const QString path = folder_.filePath(u"%1.csv"_s.arg(seen_));
        answers_.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
            auto& box = control<QLineEdit>(dialog, u"fileNameEdit"_s);
            proposals_ << box.text();
            box.setText(path);
            QTest::keyClick(&box, Qt::Key_Return);
        });
        answers_.expectMsgBox();
        if (!choose(grid, u"ActExportCsv"_s)) {
            faults_ << name + u": no export"_s;
            return;
        }
        const QList<QStringList> lines = csvOf(path);
        rows_ += static_cast<int>(lines.size()) - 1;
        if (lines != seenLines(grid))
            faults_ << name + u": another table in the file"_s;
    }

    PromptAnswers& answers_;
    QTemporaryDir folder_;
    int seen_ = 0;
    int rows_ = 0;
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
    Walk walk;
    Window& form = walk.open(window);
    const QString name = form.objectName();
    Lists lists(walk.answers);
    onEveryPage(form, name, [&](const QString& place) { lists.look(form, place); });
    QVERIFY2(lists.told().isEmpty(), qPrintable(lists.told()));
    QCOMPARE(walk.answers.trouble(), QString());
    const QMap<QString, int> least{{u"Form1"_s, 6}, {u"Form2"_s, 1}, {u"Form3"_s, 4}, {u"Form4"_s, 5},
                                   {u"Form5"_s, 3}, {u"Form6"_s, 2}, {u"FrmPsw"_s, 0}};
    QVERIFY2(lists.seen() >= least.value(name), qPrintable(QString::number(lists.seen())));
    QVERIFY(lists.rows() > 0 || least.value(name) == 0);
    for (const QString& proposal : lists.proposals())
        QVERIFY2(proposal.size() > 5 && proposal.endsWith(u".csv") && !proposal.contains(u'&'),
                 qPrintable(proposal));
}

void EveryListTest::listsOfDialogsLeaveTheProgram() {
    QFETCH(const std::size_t, dialog);
    Walk walk;
    Lists lists(walk.answers);
    walk.show(dialog, [&lists](QWidget& shown) { lists.look(shown, shown.objectName()); });
    QVERIFY2(lists.told().isEmpty(), qPrintable(lists.told()));
    QCOMPARE(walk.answers.trouble(), QString());
    const bool isLookup = dialog <= static_cast<std::size_t>(LookupKind::QFrmEmpNO);
    QCOMPARE(lists.seen(), isLookup ? 1 : 0);
    QCOMPARE(lists.rows() > 0, isLookup);
    if (isLookup)
        QCOMPARE(lists.proposals(),
                 QStringList{lookupTexts(static_cast<LookupKind>(dialog)).title + u".csv"_s});
}

int main(int argc, char** argv) {
    return runTests<EveryListTest>(argc, argv);
}

#include "EveryListTest.moc"
