#pragma once

#include "app/GridTexts.h"
#include "app/LookupFixture.h"
#include "app/Module1.h"
#include "app/Window.h"
#include "app/controls/TDBGrid.h"
#include "app/controls/TDBMask.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/TestStore.h"

#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

namespace pontrel::test {

/// The attendance window open over a store of its own, with everything that a test does to it and sees on it.
class Form3Fixture {
  public:
    TestStore store;
    PromptAnswers answers;

    /// Shows the main window and opens the attendance window by its toolbar button's routine.
    void open() {
        shell_ = std::make_unique<Shell>(store);
        OpenToolWindow(3);
    }

    [[nodiscard]] Database& database() { return store.database(); }

    /// The middle one of the three days of addPunches().
    inline static const QDate PunchDay{2001, 3, 5};
    /// Two employees and four punches of three days.
    void addPunches() {
        addEmployee(database(), QStringLiteral("10001"), {{u"EmpName", u"王小明"}});
        addEmployee(database(), QStringLiteral("10002"), {{u"EmpName", u"陳美惠"}});
        addReadPunch(database(), QStringLiteral("10001"), {2001, 3, 4}, QTime(8, 1));
        addReadPunch(database(), QStringLiteral("10001"), PunchDay, QTime(17, 2, 30));
        addReadPunch(database(), QStringLiteral("10002"), PunchDay, QTime(7, 58));
        addReadPunch(database(), QStringLiteral("10001"), {2001, 3, 6}, QTime(8, 3));
    }
    [[nodiscard]] MDI& mainWindow() { return shell_->window(); }
    [[nodiscard]] bool isOpen() const { return moduleWindow(3) != nullptr; }
    [[nodiscard]] Window& form() const { return *moduleWindow(3); }

    template<typename Control = QWidget>
    [[nodiscard]] Control& at(const QString& name) const {
        return control<Control>(form(), name);
    }
    [[nodiscard]] QPushButton& button(const QString& name) const { return at<QPushButton>(name); }
    [[nodiscard]] QTabWidget& tabs() const { return at<QTabWidget>(QStringLiteral("SSTab1")); }
    [[nodiscard]] QString panel(int index) const {
        return at<QLabel>(QStringLiteral("StbTool(%1)").arg(index)).text();
    }

    void press(const QString& name) { click(button(name)); }

    /// Clicks the tab as a mouse does.
    void clickTab(int index) {
        QTabBar* bar = tabs().tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
    }

    /// The date dialog comes next: types the six places and presses OK.
    void expectDate(const QString& places) {
        answers.expect(QStringLiteral("FrmI1Date"), [places](QWidget& dialog) {
            QTest::keyClicks(&control<TDBMask>(dialog, QStringLiteral("TDBMask1(0)")), places);
            click(control(dialog, QStringLiteral("Command1(0)")));
        });
    }
    /// The dialog of query options comes next: chooses the kind and presses OK.
    void expectKind(int kind) {
        answers.expect(QStringLiteral("IFrmQuery"), [kind](QWidget& dialog) {
            click(control(dialog, QStringLiteral("Option1(%1)").arg(kind)));
            click(control(dialog, QStringLiteral("Command1(0)")));
        });
    }
    /// The lookup comes next: chooses its row of that number, from 0, and presses OK.
    void expectPick(const QString& lookup, int row) {
        answers.expect(lookup, [row](QWidget& dialog) {
            clickRow(dialog, row);
            clickOk(dialog);
        });
    }
    void expectDateCancelled() {
        answers.expectClick(QStringLiteral("FrmI1Date"), QStringLiteral("Command1(1)"));
    }

    /// What shownRows() tells of a grid.
    [[nodiscard]] QStringList shown(const QString& grid) const { return shownRows(at<TDBGrid>(grid)); }
    [[nodiscard]] QStringList captions(const QString& grid) const { return shownCaptions(at<TDBGrid>(grid)); }
    /// What the current page shows cut: buttons and column captions without room for their text, and grids of
    /// which some columns lie out of view.
    [[nodiscard]] QStringList cutTexts() const {
        QStringList cut;
        for (const QPushButton* each : form().findChildren<QPushButton*>()) {
            if (each->isVisible() && each->width() < each->sizeHint().width())
                cut << each->text();
        }
        for (const TDBGrid* grid : form().findChildren<TDBGrid*>()) {
            if (!grid->isVisible())
                continue;
            for (int column = 0; column < grid->model()->columnCount(); ++column) {
                const QString caption = grid->model()->headerData(column, Qt::Horizontal).toString();
                if (grid->columnWidth(column) <
                    grid->fontMetrics().horizontalAdvance(caption) + CaptionMargin)
                    cut << caption;
            }
            if (grid->horizontalHeader()->length() > grid->viewport()->width())
                cut << grid->objectName();
        }
        return cut;
    }
    [[nodiscard]] int currentRow(const QString& grid) const { return at<TDBGrid>(grid).currentIndex().row(); }

  private:
    static constexpr int CaptionMargin = 4;

    std::unique_ptr<Shell> shell_;
};

} // namespace pontrel::test
