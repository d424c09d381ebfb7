#pragma once

#include "app/CodeCombo.h"
#include "app/Events.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "store/Clock.h"
#include "support/WindowFixture.h"
#include "windows/reports/Cr1.h"
#include "windows/reports/Previews.h"

#include <QDir>
#include <QListWidget>
#include <QRadioButton>

namespace pontrel::test {

/// The options of each tab.
inline constexpr std::array<int, 6> OptionCounts{11, 3, 10, 6, 4, 4};

/// Lays the program's templates out in a program folder.
inline void layOutTemplates(const QString& programFolder) {
    const QDir templates(QStringLiteral(PONTREL_REPORTS));
    const QDir folder(programFolder);
    bool laidOut = folder.mkdir(QStringLiteral("report"));
    const auto names = templates.entryList({QStringLiteral("*.rpt")}, QDir::Files);
    for (const QString& name : names)
        laidOut = laidOut &&
                  QFile::copy(templates.filePath(name), folder.filePath(QStringLiteral("report/") + name));
    if (!laidOut || names.size() != 38)
        qFatal("the templates cannot be laid out");
}

/// Leave types or write-off reasons "00", "01" and on.
inline void addCodes(Database& database, const QString& table, int count) {
    const bool isLeave = table == QStringLiteral("Holi01");
    Stage stage(database);
    for (int number = 0; number < count; ++number)
        insertRow(database, table,
                  {{isLeave ? QStringLiteral("HoliNo") : QStringLiteral("CnlNo"),
                    QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'))},
                   {isLeave ? QStringLiteral("HoliType") : QStringLiteral("CnlName"),
                    QStringLiteral("事由%1").arg(number)}});
    stage.finish();
}

/// The report window, on a morning in March 2010.
class Form7Fixture : public WindowFixture {
  public:
    Form7Fixture() : WindowFixture(7) {
        clock::setSource([] { return QDateTime(QDate(2010, 3, 9), QTime(10, 11)); });
        layOutTemplates(store.folder());
    }
    ~Form7Fixture() {
        qDeleteAll(previews());
        clock::setSource({});
    }

    void showIdle() { showMainWindow(); }
    void open(int tab = 0) {
        openModule(7);
        if (tab != 0)
            clickTab(tab);
    }

    [[nodiscard]] Cr1& report() const {
        auto* found = form().findChild<Cr1*>(QStringLiteral("Cr1"));
        if (!found)
            qFatal("the window has no report control");
        return *found;
    }
    [[nodiscard]] QString formula() const { return report().selectionFormula.text; }
    /// The name of the template of the last print.
    [[nodiscard]] QString file() const { return QFileInfo(report().reportFileName).fileName(); }
    /// What the preview that was opened last was given by name; ends the test where there is not just one.
    [[nodiscard]] QString named(const QString& name) const {
        return preview().document().names().value(name, QStringLiteral("not given"));
    }
    [[nodiscard]] static ReportPreview& preview() {
        if (previews().size() != 1)
            qFatal("%d previews are open", static_cast<int>(previews().size()));
        return *previews().constFirst();
    }
    static void closePreviews() { qDeleteAll(previews()); }

    /// A control of a tab's array, such as "Combo", tab 2 and 4 for "Combo3(4)".
    template<typename Control = QWidget>
    [[nodiscard]] Control& of(const QString& array, int tab, int index) const {
        return at<Control>(QStringLiteral("%1%2(%3)").arg(array).arg(tab + 1).arg(index));
    }
    [[nodiscard]] QRadioButton& option(int tab, int index) const {
        return of<QRadioButton>(QStringLiteral("Option"), tab, index);
    }
    [[nodiscard]] CodeCombo& combo(int tab, int index) const {
        return of<CodeCombo>(QStringLiteral("Combo"), tab, index);
    }
    [[nodiscard]] TDBMask& mask(int tab, int index) const {
        return of<TDBMask>(QStringLiteral("Mk"), tab, index);
    }
    [[nodiscard]] TDBDate& date(int tab, int index) const {
        return of<TDBDate>(QStringLiteral("TDBD"), tab, index);
    }
    /// The leave types, or with the other tab the write-off reasons.
    [[nodiscard]] QListWidget& list(int tab) const {
        return at<QListWidget>(tab == 3 ? QStringLiteral("List1") : QStringLiteral("List2"));
    }

    void choose(int tab, int index) { click(option(tab, index)); }
    void print(int tab) { click(of(QStringLiteral("Cmd"), tab, 0)); }
    void setPeriod(int tab, QDate first, QDate last) {
        date(tab, 0).setDate(first);
        date(tab, 1).setDate(last);
    }
    void selectOnly(int tab, const QList<int>& entries) {
        list(tab).clearSelection();
        for (const int entry : entries)
            list(tab).item(entry)->setSelected(true);
    }

    /// The dialogs that have come: title, text and buttons.
    [[nodiscard]] QStringList seen() const {
        QStringList dialogs;
        for (const SeenPrompt& prompt : answers.seen())
            dialogs << QStringList{prompt.title, prompt.text, prompt.buttons.join(u'/')}.join(u'|');
        return dialogs;
    }

    /// What is enabled on a tab: the masks with their dates, the boxes, the list; and what is shown, its
    /// caption and the punch marks.
    [[nodiscard]] QString fields(int tab) const {
        QString state = QStringLiteral("M");
        for (int index = 0; index < (tab == 0 ? 4 : 2); ++index) {
            if (mask(tab, index).isEnabled() != date(tab, index).isEnabled())
                qFatal("a mask and its date differ");
            state += mask(tab, index).isEnabled() ? QString::number(index) : QStringLiteral(".");
        }
        state += QStringLiteral(" C");
        for (int index = 0; index < comboCount(tab); ++index)
            state += combo(tab, index).isEnabled() ? QString::number(index) : QStringLiteral(".");
        if (tab == 3 || tab == 4) {
            state += list(tab).isEnabled() ? QStringLiteral(" L") : QString();
            const auto& caption =
                *list(tab).parentWidget()->findChild<QLabel*>(QStringLiteral("ListCaption"));
            state += caption.isVisible() ? u' ' + caption.text() : QString();
        }
        if (tab == 2) {
            if (at(QStringLiteral("FrameTS")).isVisible() !=
                at(QStringLiteral("PunchMarkCaption")).isVisible())
                qFatal("the punch marks and their caption differ");
            state += at(QStringLiteral("FrameTS")).isVisible() ? QStringLiteral(" marks") : QString();
        }
        return state;
    }
    [[nodiscard]] static int comboCount(int tab) {
        return std::array{7, 4, 6, 6, 5, 6}.at(static_cast<std::size_t>(tab));
    }
};

} // namespace pontrel::test
