#pragma once

#include "app/CodeNames.h"
#include "app/GridForm.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>

namespace pontrel::test {

/// A list with a column of every kind: codes with names, dates, times, numbers, check marks, texts.
struct ListForm : GridForm {
    PromptAnswers answers;
    TranslationList names;
    QTemporaryDir folder;

    ListForm() {
        setWindowTitle(QStringLiteral("加班/清單"));
        names.add(QStringLiteral("007"), QStringLiteral("王小明"));
        grid.setColumns({{QStringLiteral("員工碼"), QStringLiteral("EmpNo"), 60},
                         named(names, {QStringLiteral("姓名"), QStringLiteral("EmpNo"), 60}),
                         {QStringLiteral("日期"), QStringLiteral("OverDate"), 60},
                         {QStringLiteral("開始"), QStringLiteral("BegTime"), 40},
                         {QStringLiteral("時數"), QStringLiteral("OverHours"), 40, Qt::AlignRight},
                         {QStringLiteral("補休"), QStringLiteral("Rest"), 40},
                         {QStringLiteral("備註"), QStringLiteral("Memo"), 120},
                         {QStringLiteral("輸入時間"), QStringLiteral("TransDate"), 106}});
        resize(700, 300);
    }

    void openOvertime() { open(QStringLiteral("Over01")); }

    void addOvertime(const Fields& fields) { insertRow(store.database(), QStringLiteral("Over01"), fields); }

    /// A row with everything, one that has only what must be there, and one with what troubles files.
    void addThree() {
        addOvertime({{u"EmpNo", u"007"},
                     {u"OverDate", QDate(2026, 1, 5)},
                     {u"BegTime", QTime(18, 5, 30)},
                     {u"OverHours", 3},
                     {u"Rest", true},
                     {u"Memo", u"趕工"},
                     {u"TransDate", QDateTime(QDate(2026, 1, 6), QTime(9, 30))}});
        addOvertime({{u"EmpNo", u"0010"}});
        addOvertime({{u"EmpNo", u"=1+1"},
                     {u"OverDate", QDate(1899, 5, 1)},
                     {u"BegTime", QTime(0, 0)},
                     {u"OverHours", -12},
                     {u"Memo", u"他說\"好\", 再\n來\t\U00020BB7"},
                     {u"TransDate", QDateTime(QDate(1850, 12, 31), QTime(23, 59))}});
    }

    /// The files of the folder, hidden ones included.
    [[nodiscard]] QStringList files() const {
        return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    /// The menu that is open, or null.
    [[nodiscard]] static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    /// Opens the menu by the keyboard and presses that entry.
    void choose(const QString& entry) {
        grid.setFocus();
        QTest::keyClick(&grid, Qt::Key_Menu);
        QMenu* open = menu();
        QVERIFY(open);
        auto* action = open->findChild<QAction*>(entry);
        QVERIFY2(action, qPrintable(entry));
        QVERIFY(action->isEnabled());
        QTest::mouseClick(open, Qt::LeftButton, Qt::NoModifier, open->actionGeometry(action).center());
        QTRY_VERIFY_WITH_TIMEOUT(menu() == nullptr, PatienceMs);
    }

    /// What the clipboard holds, after something else has been put there and the routine has run.
    [[nodiscard]] static QString copiedBy(const std::function<void()>& routine) {
        QGuiApplication::clipboard()->setText(QStringLiteral("(before)"));
        routine();
        return QGuiApplication::clipboard()->text();
    }
};

} // namespace pontrel::test
