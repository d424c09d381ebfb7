#pragma once

#include "app/Lookup.h"
#include "app/controls/TDBGrid.h"
#include "rules/Session.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/TestStore.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace pontrel::test {

/// The shared values of the lookups, as they stand before any was opened.
inline void clearPicks() {
    for (QString* pick : {&gPickEmpNo, &gPickUnitNo, &gPickTitleNo, &gPickClsNo, &gPickWorkNo, &gPickSuitNo,
                          &gPickTimeNo, &gPickHoliNo, &gPickCnlNo})
        pick->clear();
}

/// The rows of a lookup's list, the texts of their columns between bars.
[[nodiscard]] inline QStringList listOf(const QWidget& dialog) {
    const QAbstractItemModel* model = control<TDBGrid>(dialog, QStringLiteral("TDBGrid2")).model();
    QStringList rows;
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model->columnCount(); ++column)
            cells << model->index(row, column).data().toString();
        rows << cells.join(u'|');
    }
    return rows;
}

[[nodiscard]] inline QStringList listCaptionsOf(const QWidget& dialog) {
    const QAbstractItemModel* model = control<TDBGrid>(dialog, QStringLiteral("TDBGrid2")).model();
    QStringList captions;
    for (int column = 0; column < model->columnCount(); ++column)
        captions << model->headerData(column, Qt::Horizontal).toString();
    return captions;
}

[[nodiscard]] inline QString labelOf(const QWidget& dialog, int index) {
    return control<QLabel>(dialog, QStringLiteral("Label%1").arg(index)).text();
}

/// What the labels show of the current row: code and name between a bar.
[[nodiscard]] inline QString currentOf(const QWidget& dialog) {
    return labelOf(dialog, 3) + u'|' + labelOf(dialog, 4);
}

/// Moves the list to the row of that number, from 0, by a click on it.
inline void clickRow(const QWidget& dialog, int row) {
    auto& grid = control<TDBGrid>(dialog, QStringLiteral("TDBGrid2"));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                      grid.visualRect(grid.model()->index(row, 1)).center());
}

inline void clickOk(const QWidget& dialog) {
    click(control(dialog, QStringLiteral("Command1(0)")));
}

inline void clickCancel(const QWidget& dialog) {
    click(control(dialog, QStringLiteral("Command1(1)")));
}

/// The main window idle over a store of its own, from which lookups are opened.
class LookupFixture {
  public:
    TestStore store;
    PromptAnswers answers;

    LookupFixture() : shell_(store) { clearPicks(); }
    ~LookupFixture() { clearPicks(); }
    LookupFixture(const LookupFixture&) = delete;
    LookupFixture& operator=(const LookupFixture&) = delete;

    [[nodiscard]] Database& database() { return store.database(); }
    [[nodiscard]] MDI& window() { return shell_.window(); }

    /// Opens the lookup and lets the action answer it.
    void ask(LookupKind kind, PromptAnswers::Action action) {
        answers.expect(lookupTexts(kind).name, std::move(action));
        Lookup::ask(kind, &window());
    }

  private:
    Shell shell_;
};

} // namespace pontrel::test
