#pragma once

#include "app/GridTexts.h"
#include "app/LookupFixture.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "store/Clock.h"
#include "support/WindowFixture.h"

#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>

namespace pontrel::test {

/// Presses a button of the attendance window, which is opened on that tab, to go to another module; returns
/// its caption.
inline QString leaveAttendanceBy(int tab, const QString& button) {
    OpenToolWindow(3);
    control<QTabWidget>(*moduleWindow(3), QStringLiteral("SSTab1")).setCurrentIndex(tab);
    auto& jump = control<QPushButton>(*moduleWindow(3), button);
    const QString caption = jump.text();
    click(jump);
    return caption;
}

/// A module window of the program in which nothing has been looked up yet, with what such windows share:
/// lists, date pairs, lookups, the dialogs of a query. A clock that a fixture sets goes with it.
class ModuleFixture : public WindowFixture {
  public:
    [[nodiscard]] TDBMask& mask(int index) const {
        return at<TDBMask>(QStringLiteral("TDBMask1(%1)").arg(index));
    }
    [[nodiscard]] TDBDate& date(int index) const {
        return at<TDBDate>(QStringLiteral("TDBDate1(%1)").arg(index));
    }
    /// Types the places into the mask in place of what it holds, the focus on it.
    void typeDate(int index, const QString& places) {
        type(QStringLiteral("TDBMask1(%1)").arg(index), places);
    }
    /// What shownRows() tells of a grid.
    [[nodiscard]] QStringList shown(const QString& grid) const { return shownRows(at<TDBGrid>(grid)); }
    [[nodiscard]] QStringList captions(const QString& grid) const { return shownCaptions(at<TDBGrid>(grid)); }
    [[nodiscard]] QStringList entriesOf(const QString& list) const {
        const auto& entries = at<QListWidget>(list);
        QStringList texts;
        for (int entry = 0; entry < entries.count(); ++entry)
            texts << entries.item(entry)->text();
        return texts;
    }
    /// The numbers of employees in both lists of a batch.
    [[nodiscard]] QString counts() const {
        return label(QStringLiteral("Label3(0)")) + u'/' + label(QStringLiteral("Label3(1)"));
    }
    /// A click on the entry of that number, from 0.
    void clickEntry(const QString& list, int row) {
        auto& entries = at<QListWidget>(list);
        QTest::mouseClick(entries.viewport(), Qt::LeftButton, Qt::NoModifier,
                          entries.visualItemRect(entries.item(row)).center());
    }

    /// The date dialog comes next: types the six places and presses OK.
    void expectDate(const QString& places) {
        answers.expect(QStringLiteral("FrmI1Date"), [places](QWidget& dialog) {
            QTest::keyClicks(&control<TDBMask>(dialog, QStringLiteral("TDBMask1(0)")), places);
            click(control(dialog, QStringLiteral("Command1(0)")));
        });
    }
    void expectDateCancelled() {
        answers.expectClick(QStringLiteral("FrmI1Date"), QStringLiteral("Command1(1)"));
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

  protected:
    explicit ModuleFixture(int module) : WindowFixture(module) { forget(); }
    /// For the module window that is open, whichever.
    ModuleFixture() : WindowFixture([] { return anyModuleWindow(); }) { forget(); }
    ~ModuleFixture() {
        clock::setSource({});
        forget();
    }

  private:
    static Window* anyModuleWindow() {
        for (int module = 1; module <= 8; ++module) {
            if (Window* window = moduleWindow(module))
                return window;
        }
        return nullptr;
    }
    static void forget() {
        clearPicks();
        gQueryKind = 0;
    }
};

} // namespace pontrel::test
