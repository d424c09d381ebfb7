#include "tour/Output.h"
#include "tour/Sights.h"
#include "tour/WindowSteps.h"

#include "app/DatePair.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTabWidget>

// What a clerk prints and saves at the end of a month, without a mouse.

namespace pontrel::tour {

using namespace Qt::StringLiterals;

namespace {

constexpr int MostPresses = 80; ///< More than a window has controls or pages.

} // namespace

void WindowSteps::closeMonth(QDate first, QDate last, const QString& UnitNo) {
    const auto typeMonth = [&](int tab) {
        replace(u"Mk%1(0)"_s.arg(tab), DatePair::maskText(first));
        replace(u"Mk%1(1)"_s.arg(tab), DatePair::maskText(last));
    };
    current_ = u"closing the month"_s;
    open(7, u"Form7"_s);

    turnToPage(u"勤惰報表"_s);
    reach(u"Option3(0)"_s);
    clerk_.press(Qt::Key_Down, Qt::NoModifier, 3);
    typeMonth(3);
    replace(u"Combo3(2)"_s, UnitNo);
    replace(u"Combo3(3)"_s, UnitNo);
    saveReport(u"C04 員工出勤異常表"_s, u"r17-unit-C04"_s);

    turnToPage(u"請假報表"_s);
    typeMonth(4);
    saveReport(u"D01 員工差假統計表"_s, u"r18-statistics-D01"_s);
    reach(u"Option4(0)"_s);
    clerk_.press(Qt::Key_Right);
    clerk_.press(Qt::Key_Down);
    saveReport(u"D05 抽查總表"_s, u"r19-inspection-D05"_s);

    turnToPage(u"註銷報表"_s);
    typeMonth(5);
    saveReport(u"E01 單位員工註銷次數統計表"_s, u"r20-counts-E01"_s);

    turnToPage(u"加班報表"_s);
    reach(u"Option6(0)"_s);
    clerk_.press(Qt::Key_Down, Qt::NoModifier, 3);
    typeMonth(6);
    saveReport(u"F04 單位加班時數統計表"_s, u"r21-hours-F04"_s);

    reach(u"Cmd6(1)"_s);
    clerk_.press(Qt::Key_Space);
    awaitIdle();
    print(u"Saved five reports of the month as PDF and spreadsheet."_s);
}

void WindowSteps::turnToPage(const QString& caption) {
    current_ = u"turning to the tab %1 by keyboard"_s.arg(caption);
    for (int press = 0; press < MostPresses; ++press) {
        const auto present = [](const QWidget& front) {
            const auto* tabs = visible<QTabWidget>(front, u"SSTab1"_s);
            return tabs ? std::optional(tabs->tabText(tabs->currentIndex())) : std::nullopt;
        };
        const auto page = clerk_.see<QString>(u"a page"_s, present);
        if (page == caption)
            return;
        clerk_.press(Qt::Key_Tab, Qt::ControlModifier);
        clerk_.seeThat(u"the next page"_s, [&](const QWidget& front) {
            const std::optional<QString> now = present(front);
            return now && now != page;
        });
    }
    throw StepFailed{u"Ctrl+Tab does not lead to the tab %1."_s.arg(caption)};
}

void WindowSteps::reach(const QString& control) {
    clerk_.awaitKeyboard();
    for (int press = 0; press < MostPresses; ++press) {
        const QWidget* focused = nullptr;
        QString name;
        clerk_.seeThat(u"a control with the focus"_s, [&](const QWidget& front) {
            focused = front.focusWidget();
            name = focused ? focused->objectName() : QString();
            return focused != nullptr;
        });
        if (name == control)
            return;
        clerk_.press(Qt::Key_Tab);
        clerk_.seeThat(u"the control behind %1"_s.arg(name),
                       [&](const QWidget& front) { return front.focusWidget() != focused; });
    }
    throw StepFailed{u"Tab does not lead to %1."_s.arg(control)};
}

void WindowSteps::replace(const QString& control, const QString& text) {
    reach(control);
    clerk_.type(text);
}

void WindowSteps::saveReport(const QString& title, const QString& picture) {
    current_ = u"saving %1"_s.arg(title);
    clerk_.pressShortcut(Qt::Key_P, Qt::ControlModifier);
    awaitPreview(title);
    for (const auto& [key, ending] : {std::pair{Qt::Key_S, u".pdf"_s}, std::pair{Qt::Key_E, u".xlsx"_s}}) {
        clerk_.pressShortcut(key, Qt::ControlModifier);
        clerk_.awaitWindow(u"CommonDialog1"_s);
        clerk_.press(Qt::Key_Return);
        const QString path = QDir(QCoreApplication::applicationDirPath()).filePath(title + ending);
        clerk_.seeThat(u"that %1 is saved"_s.arg(path), [&path](const QWidget& front) {
            return textOf(front, u"LblStatus"_s) == u"已存成 %1"_s.arg(path);
        });
        if (QFileInfo(path).size() == 0)
            throw StepFailed{u"%1 is empty."_s.arg(path)};
    }
    clerk_.takePicture(picture);
    clerk_.pressShortcut(Qt::Key_Escape);
    awaitReportWindow();
}

} // namespace pontrel::tour
