#include "app/MDI.h"
#include "app/Toolbar.h"
#include "app/controls/Colors.h"
#include "app/controls/TDBDate.h"
#include "windows/Reading.h"
#include "windows/Walk.h"

#include <QCalendarWidget>
#include <QTableView>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// As a dark desktop has them that leaves some to the style, and whose texts that are off are pale.
QPalette darkDesktop() {
    QPalette palette = QApplication::style()->standardPalette();
    palette.setColor(QPalette::Window, QColor(0x2a, 0x2e, 0x32));
    palette.setColor(QPalette::Base, QColor(0x1b, 0x1e, 0x20));
    palette.setColor(QPalette::Button, QColor(0x31, 0x36, 0x3b));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
    palette.setColor(QPalette::ToolTipBase, QColor(0x31, 0x36, 0x3b));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::HighlightedText, QPalette::ToolTipText}) {
        palette.setColor(role, QColor(0xfc, 0xfc, 0xfc));
        palette.setColor(QPalette::Disabled, role, QColor(0x62, 0x6c, 0x76));
    }
    for (const auto role : {QPalette::Window, QPalette::Base})
        palette.setColor(QPalette::Disabled, role, QColor(0x31, 0x36, 0x3b));
    return palette;
}

struct Theme {
    const char* title;
    std::function<QPalette()> palette;
};

const std::vector<Theme>& themes() {
    static const std::vector<Theme> all = {
        {"as usual", [] { return QApplication::style()->standardPalette(); }},
        {"dark desktop", darkDesktop},
        {"dark without colours", colors::darkPalette},
        {"white on black", [] { return colors::highContrastPalette(true); }},
        {"black on white", [] { return colors::highContrastPalette(false); }},
    };
    return all;
}

} // namespace

/// On dark desktops and on those of high contrast whatever is shown can be read as well.
class ThemesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { QApplication::setPalette(QPalette()); }

    void windowsAreLegible_data();
    void windowsAreLegible();
    void dialogsAreLegible_data();
    void dialogsAreLegible();
    void calendarsAreLegible_data() { addThemes(); }
    void calendarsAreLegible();
    void lookupButtonsFollowTheColours_data() { addThemes(); }
    void lookupButtonsFollowTheColours();

  private:
    static void addThemes() {
        QTest::addColumn<std::size_t>("theme");
        for (std::size_t theme = 0; theme < themes().size(); ++theme)
            QTest::addRow("%s", themes().at(theme).title) << theme;
    }
    static void put(std::size_t theme) {
        QApplication::setPalette(colors::readable(themes().at(theme).palette()));
    }
};

void ThemesTest::windowsAreLegible_data() {
    QTest::addColumn<std::size_t>("theme");
    QTest::addColumn<std::size_t>("window");
    registerWindows();
    const auto windows = everyWindow();
    for (std::size_t theme = 0; theme < themes().size(); ++theme) {
        for (std::size_t window = 0; window < windows.size(); ++window)
            QTest::addRow("%s, %s", themes().at(theme).title, qPrintable(windows.at(window).title))
                << theme << window;
    }
}

void ThemesTest::windowsAreLegible() {
    QFETCH(const std::size_t, theme);
    QFETCH(const std::size_t, window);
    put(theme);
    Walk walk;
    Window& form = walk.open(window);
    Reading reading(form);
    const auto read = [&](const QString& place, bool) {
        reading.read(place);
        reading.readButtonsAndGrids(place);
    };
    inEveryState(form, read, &walk.answers);
    QCOMPARE(walk.answers.trouble(), QString());
    QVERIFY(reading.buttonsAndRowsRead() >= 4);
    QVERIFY2(reading.pale().isEmpty(), qPrintable(reading.pale()));
    // The toolbar's one button that is lit.
    int lit = 0;
    for (auto* button : gMDI->Tb().findChildren<QAbstractButton*>()) {
        if (!button->isEnabledTo(&gMDI->Tb()))
            continue;
        ++lit;
        const double contrast = contrastIn(button->grab().toImage(), button->rect().adjusted(4, 4, -4, -4));
        QVERIFY2(contrast >= LeastOfFigures, qPrintable(QString::number(contrast)));
    }
    QCOMPARE(lit, 1);
}

void ThemesTest::dialogsAreLegible_data() {
    QTest::addColumn<std::size_t>("theme");
    QTest::addColumn<std::size_t>("dialog");
    const auto dialogs = everyDialog();
    for (std::size_t theme = 0; theme < themes().size(); ++theme) {
        for (std::size_t dialog = 0; dialog < dialogs.size(); ++dialog)
            QTest::addRow("%s, %s", themes().at(theme).title, qPrintable(dialogs.at(dialog).title))
                << theme << dialog;
    }
}

void ThemesTest::dialogsAreLegible() {
    QFETCH(const std::size_t, theme);
    QFETCH(const std::size_t, dialog);
    put(theme);
    Walk walk;
    QString pale;
    int count = 0;
    walk.show(dialog, [&](QWidget& shown) {
        Reading reading(shown);
        reading.read(shown.objectName());
        reading.readButtonsAndGrids(shown.objectName());
        pale = reading.pale();
        count = reading.buttonsAndRowsRead();
    });
    QCOMPARE(walk.answers.trouble(), QString());
    QVERIFY(count > 0);
    QVERIFY2(pale.isEmpty(), qPrintable(pale));
}

void ThemesTest::calendarsAreLegible() {
    QFETCH(const std::size_t, theme);
    put(theme);
    Walk walk;
    const Window& roster = walk.open(1);
    // The month with the days off of the demonstration.
    const auto& days = control<QTableView>(roster, u"Days"_s);
    QCoreApplication::processEvents();
    const QImage month = days.viewport()->grab().toImage();
    int seen = 0;
    for (int row = 0; row < days.model()->rowCount(); ++row) {
        for (int column = 0; column < days.model()->columnCount(); ++column) {
            const QModelIndex day = days.model()->index(row, column);
            if (day.data().toString().isEmpty())
                continue;
            ++seen;
            QVERIFY2(contrastIn(month, days.visualRect(day).adjusted(4, 4, -4, -4)) >= LeastOfFigures,
                     qPrintable(day.data().toString()));
        }
    }
    QVERIFY(seen >= 28);
    // One that has dropped down: every day of every week, other months' as well.
    TDBDate date(gMDI);
    date.setObjectName(u"date"_s);
    date.show();
    date.showPopup();
    auto& calendar = control<QCalendarWidget>(date, u"Calendar"_s);
    auto& view = control<QTableView>(calendar, u"qt_calendar_calendarview"_s);
    QCoreApplication::processEvents();
    const QImage weeks = view.viewport()->grab().toImage();
    for (int row = 1; row < view.model()->rowCount(); ++row) {
        for (int column = 0; column < view.model()->columnCount(); ++column) {
            const QModelIndex day = view.model()->index(row, column);
            if (view.visualRect(day).isEmpty())
                continue;
            const double contrast = contrastIn(weeks, view.visualRect(day).adjusted(2, 2, -2, -2));
            QVERIFY2(contrast >= LeastOfFigures,
                     qPrintable(u"%1: %2"_s.arg(day.data().toString()).arg(contrast)));
        }
    }
    date.hidePopup();
}

void ThemesTest::lookupButtonsFollowTheColours() {
    QFETCH(const std::size_t, theme);
    QWidget window;
    auto* button = makeSearchButton(&window, u"search"_s, u"查詢"_s);
    button->setGeometry(0, 0, 30, 24);
    window.resize(100, 30);
    window.show();
    put(theme); // also while the window is there
    QCoreApplication::processEvents();
    QVERIFY(contrastIn(button->grab().toImage(), button->rect().adjusted(6, 4, -6, -4)) >= LeastContrast);
}

int main(int argc, char** argv) {
    return runTests<ThemesTest>(argc, argv);
}

#include "ThemesTest.moc"
