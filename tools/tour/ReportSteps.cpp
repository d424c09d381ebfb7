#include "tour/Output.h"
#include "tour/Sights.h"
#include "tour/WindowSteps.h"

#include "app/DatePair.h"

#include <QGuiApplication>
#include <QRadioButton>

// The report window and the previews of some of its reports.

namespace pontrel::tour {

using namespace Qt::StringLiterals;

void WindowSteps::printReports(QDate first, QDate last) {
    current_ = u"opening the report window"_s;
    open(7, u"Form7"_s);
    clerk_.takePicture(u"r01-basic"_s);
    chooseReport(u"Option1(9)"_s);
    clerk_.takePicture(u"r02-basic-of-employees"_s);
    printReport(u"Option1(10)"_s, u"A11 單位別員工基本資料表"_s, u"r03-preview-a11"_s);

    turnToReports(u"排班報表"_s, 2, first, last);
    clerk_.takePicture(u"r04-roster"_s);
    printReport(u"Option2(1)"_s, u"B02 單位員工排班表"_s, u"r05-preview-B02"_s);

    turnToReports(u"勤惰報表"_s, 3, first, last);
    clerk_.takePicture(u"r06-attendance"_s);
    chooseReport(u"Option3(4)"_s);
    clerk_.takePicture(u"r07-attendance-exceptions"_s);
    printReport(u"Option3(4)"_s, u"C05 單位出勤異常表"_s, u"r08-preview-C05"_s);

    turnToReports(u"請假報表"_s, 4, first, last);
    clerk_.takePicture(u"r09-leave"_s);
    printReport(u"Option4(3)"_s, u"D04 單位差假明細表"_s, u"r10-preview-D04"_s);
    chooseReport(u"Option4(5)"_s);
    clerk_.takePicture(u"r11-leave-of-one"_s);

    turnToReports(u"註銷報表"_s, 5, first, last);
    clerk_.takePicture(u"r12-write-offs"_s);
    printReport(u"Option5(0)"_s, u"E01 單位員工註銷次數統計表"_s, u"r13-preview-E01"_s);
    chooseReport(u"Option5(2)"_s);
    clerk_.takePicture(u"r14-write-offs-times"_s);

    turnToReports(u"加班報表"_s, 6, first, last);
    clerk_.takePicture(u"r15-overtime"_s);
    printReport(u"Option6(1)"_s, u"F02 單位員工加班統計表"_s, u"r16-preview-F02"_s);
    clerk_.click(u"Cmd6(1)"_s);
    awaitIdle();
    print(u"Printed six reports."_s);
}

void WindowSteps::turnToReports(const QString& caption, int number, QDate first, QDate last) {
    current_ = u"turning to the tab %1"_s.arg(caption);
    chooseTab(u"SSTab1"_s, caption);
    reports_ = number;
    enter(u"Mk%1(0)"_s.arg(number), DatePair::maskText(first));
    enter(u"Mk%1(1)"_s.arg(number), DatePair::maskText(last));
}

void WindowSteps::chooseReport(const QString& option) {
    clerk_.click(option);
    clerk_.seeThat(u"the option %1 chosen"_s.arg(option), [&option](const QWidget& front) {
        const auto* found = visible<QRadioButton>(front, option);
        return found && found->isChecked();
    });
}

void WindowSteps::awaitPreview(const QString& title) {
    clerk_.seeThat(u"the preview %1"_s.arg(title), [&title](const QWidget& front) {
        return front.objectName() == u"ReportPreview" && front.windowTitle() == title;
    });
}

void WindowSteps::printReport(const QString& option, const QString& title, const QString& picture) {
    current_ = u"printing %1"_s.arg(title);
    chooseReport(option);
    clerk_.click(u"Cmd%1(0)"_s.arg(reports_));
    awaitPreview(title);
    clerk_.takePicture(picture);
    clerk_.closeWindow();
    awaitReportWindow();
}

void WindowSteps::awaitReportWindow() {
    clerk_.seeThat(u"the report window again"_s, [](const QWidget& front) {
        // A click that comes ahead of the desktop's turn to the window is lost.
        const bool isActive = front.isActiveWindow() || QGuiApplication::platformName() == u"offscreen";
        return isActive && visible<QWidget>(front, u"Form7"_s);
    });
}

} // namespace pontrel::tour
