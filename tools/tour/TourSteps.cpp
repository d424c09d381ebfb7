#include "tour/TourSteps.h"

#include "app/help/HelpWindow.h"
#include "demo/Demo.h"
#include "store/Format.h"
#include "tour/Output.h"
#include "tour/ProgramFolder.h"
#include "tour/Sights.h"
#include "tour/Tour.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace pontrel::tour {

using namespace Qt::StringLiterals;

namespace {

const QString Worker = u"10019"_s; ///< Who is at the readers on the day of the file.
constexpr int ReadTab = 0;
constexpr int HalfOfTheBar = 55;
constexpr int MonthsOfYear = 12;
constexpr int DaysOfWeek = 7;
constexpr int SecondStartMs = 60'000;

/// The file's entry in the list of the file dialog, be it shown plain or with details. The dialog fills and
/// sorts its list bit by bit; an entry mostly stands still once all are there.
std::optional<Spot> fileEntry(const QWidget& dialog, const QString& fileName, int fileCount) {
    for (const QString& name : {u"listView"_s, u"treeView"_s}) {
        const auto* list = visible<QAbstractItemView>(dialog, name);
        if (!list || list->model()->rowCount(list->rootIndex()) != fileCount)
            continue;
        for (int row = 0; row < fileCount; ++row) {
            const QModelIndex entry = list->model()->index(row, 0, list->rootIndex());
            if (entry.data().toString() == fileName)
                return spotOf(*list, entry);
        }
    }
    return std::nullopt;
}

std::optional<Spot> openButton(const QWidget& front) {
    const auto* dialog = qobject_cast<const QFileDialog*>(&front);
    const auto* buttons = dialog ? dialog->findChild<QDialogButtonBox*>() : nullptr;
    QPushButton* open = buttons ? buttons->button(QDialogButtonBox::Open) : nullptr;
    return open ? std::optional(middleOf(*open)) : std::nullopt;
}

/// A day of the month that the calendar in front shows. The days of the months beside it stand there too, so
/// the days are counted from the first 1.
std::optional<Spot> dayCell(const QWidget& front, int day) {
    const auto* calendar = front.findChild<QCalendarWidget*>();
    const auto* view = calendar ? calendar->findChild<QTableView*>() : nullptr;
    if (!view)
        return std::nullopt;
    int counted = 0;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        for (int column = 0; column < view->model()->columnCount(); ++column) {
            const QModelIndex cell = view->model()->index(row, column);
            if (view->isColumnHidden(column) || (counted == 0 && cell.data().toString() != u"1"))
                continue;
            if (++counted == day)
                return spotOf(*view, cell);
        }
    }
    return std::nullopt;
}

} // namespace

TourSteps::TourSteps(Clerk& clerk, QString pictureFolder)
    : clerk_(clerk)
    , windows_(clerk, current_)
    , pictureFolder_(std::move(pictureFolder))
    , fileName_(demoPunchFiles().front().name)
    , day_(QDate::fromString(fileName_.left(8), u"yyyyMMdd"_s)) {}

void TourSteps::takeAll() {
    seeSetup();
    logIn();
    startTwice();
    openAttendance();
    choosePunchFile();
    readPunchFile();
    showExceptions();
    readHelp();
    chooseDay();
    recalculate();
    queryResults();
    leaveAttendance();
    windows_.visitSystemWindow();
    windows_.keepMasterData();
    windows_.makeRoster(day_.addDays(DaysOfWeek));
    readDayOfNewRoster();
    windows_.keepLeave(day_.addDays(DaysOfWeek));
    windows_.enterOvertime(Worker, day_);
    windows_.printReports(day_, day_.addDays(2 * DaysOfWeek - 1));
    windows_.closeMonth(day_, day_.addDays(2 * DaysOfWeek - 1), u"6000"_s);
    close();
}

void TourSteps::seeSetup() {
    current_ = u"looking at the set-up"_s;
    clerk_.awaitWindow(u"SetupDialog"_s);
    clerk_.takePicture(u"00-setup"_s);
    clerk_.click(u"CmdCancel"_s);
}

void TourSteps::logIn() {
    current_ = u"logging in"_s;
    clerk_.awaitWindow(u"frmLogin"_s);
    clerk_.takePicture(u"01-login"_s);
    clerk_.click(u"txtUserName"_s);
    clerk_.type(DemoAccount);
    clerk_.click(u"txtPassword"_s);
    clerk_.type(DemoPassword);
    clerk_.seeThat(u"the account and the password in their boxes"_s, [](const QWidget& front) {
        const auto* account = visible<QLineEdit>(front, u"txtUserName"_s);
        const auto* password = visible<QLineEdit>(front, u"txtPassword"_s);
        return account && account->text() == DemoAccount && password &&
               password->displayText() == QString(DemoPassword.size(), u'*');
    });
    clerk_.takePicture(u"02-login-typed"_s);
    clerk_.click(u"cmdOK"_s);
    windows_.awaitIdle();
    clerk_.takePicture(u"03-main-window"_s);
    print(u"Logged in as %1."_s.arg(DemoAccount));
}

void TourSteps::startTwice() {
    current_ = u"starting the program a second time"_s;
    QProcess second;
    second.setProcessChannelMode(QProcess::ForwardedChannels);
    second.start(QCoreApplication::applicationFilePath(), {argumentOf(Part::SecondStart), pictureFolder_});
    if (!second.waitForFinished(SecondStartMs) || second.exitStatus() != QProcess::NormalExit ||
        second.exitCode() != 0)
        throw StepFailed{u"the second start did not end as it should."_s};
    windows_.awaitIdle();
    print(u"A second start was refused."_s);
}

void TourSteps::takeSecondStart() {
    current_ = u"reading the message of the second start"_s;
    clerk_.awaitMessage(u"Pontrel"_s, u"本程式執行中！"_s);
    clerk_.takePicture(u"04-second-start"_s);
    clerk_.acknowledge();
}

void TourSteps::openAttendance() {
    current_ = u"opening the attendance window"_s;
    clerk_.click(u"Tb(3)"_s);
    clerk_.seeThat(u"the attendance window on its first page, without punches"_s, [](const QWidget& front) {
        const auto* tabs = visible<QTabWidget>(front, u"SSTab1"_s);
        return front.windowTitle() == u"出勤管理" && visible<QWidget>(front, u"Form3"_s) && tabs &&
               tabs->currentIndex() == ReadTab && rowsOf(front, u"TDBG1"_s) == 0;
    });
    clerk_.takePicture(u"05-attendance-empty"_s);
}

void TourSteps::chooseFile(const QString& fileName) {
    current_ = u"choosing the punch file"_s;
    clerk_.click(u"CtrlCmd0(0)"_s);
    clerk_.awaitWindow(u"CommonDialog1"_s);
    clerk_.clickUntil(
        u"the file %1, chosen in the list,"_s.arg(fileName),
        [&fileName](const QWidget& front) {
            return fileEntry(front, fileName, static_cast<int>(demoPunchFiles().size()));
        },
        [&fileName](const QWidget& front) {
            const auto* name = visible<QLineEdit>(front, u"fileNameEdit"_s);
            return name && name->text() == fileName;
        });
}

void TourSteps::choosePunchFile() {
    clerk_.watchProgress(u"07-reading"_s, HalfOfTheBar);
    chooseFile(fileName_);
    clerk_.takePicture(u"06-choose-file"_s);
    clerk_.click(u"the button that opens the file"_s, openButton);
}

void TourSteps::readPunchFile() {
    current_ = u"reading the punch file"_s;
    clerk_.awaitMessage(u"警告訊息"_s, formatDate(day_, u"yyyy/mm/dd"_s) + u"資料已轉入成功!!"_s);
    clerk_.takePicture(u"08-read"_s);
    clerk_.acknowledge();
    const int punches = seePunches();
    clerk_.takePicture(u"09-punches"_s);
    if (!clerk_.progressSeen())
        throw StepFailed{u"the progress bar did not pass half of its way in sight."_s};
    print(u"Read %1: %2 punches."_s.arg(fileName_).arg(punches));
}

int TourSteps::seePunches() {
    return clerk_.see<int>(u"the punches of the day"_s, [](const QWidget& front) {
        const int rows = rowsOf(front, u"TDBG1"_s);
        return rows > 0 ? std::optional(rows) : std::nullopt;
    });
}

DayTable TourSteps::exceptions() {
    const DayTable table = clerk_.see<DayTable>(
        u"the exceptions of the day"_s, [](const QWidget& front) -> std::optional<DayTable> {
            const auto* grid = visible<QTableView>(front, u"TDBG3(0)"_s);
            if (!grid || grid->model()->rowCount() == 0)
                return std::nullopt;
            return readTable(*grid->model());
        });
    checkDay(table);
    return table;
}

void TourSteps::checkDay(const DayTable& table) const {
    const qsizetype column = table.captions.indexOf(u"出勤日期"_s);
    if (column < 0)
        throw StepFailed{u"the grid of exceptions has no column for the day."_s};
    for (const QStringList& row : table.rows) {
        if (row.at(column) != shortDate(day_))
            throw StepFailed{
                u"among the exceptions of %1 there is one of %2."_s.arg(shortDate(day_), row.at(column))};
    }
}

void TourSteps::showExceptions() {
    current_ = u"looking at the exceptions"_s;
    windows_.chooseTab(u"SSTab1"_s, u"異常處理"_s);
    exceptions_ = exceptions();
    clerk_.takePicture(u"10-exceptions"_s);
    print(QString());
    print(u"%1 異常處理: %2"_s.arg(shortDate(day_)).arg(exceptions_.rows.size()));
    const QStringList lines = aligned(exceptions_);
    for (const QString& line : lines)
        print(line);
    print(QString());
}

void TourSteps::readHelp() {
    current_ = u"reading the help"_s;
    clerk_.press(Qt::Key_F1);
    clerk_.awaitWindow(u"HelpWindow"_s);
    clerk_.seeThat(u"what the help says about the exceptions"_s, [](const QWidget& front) {
        const auto* help = qobject_cast<const HelpWindow*>(&front);
        return help && help->place() == HelpPlace{u"attendance.md"_s, u"異常處理"_s};
    });
    clerk_.takePicture(u"h01-help"_s);
    clerk_.click(u"TxtFind"_s);
    clerk_.type(u"F1"_s);
    clerk_.seeThat(u"a place with F1 in it"_s,
                   [](const QWidget& front) { return textOf(front, u"LblFound"_s).startsWith(u'第'); });
    clerk_.takePicture(u"h02-help-search"_s);
    clerk_.press(Qt::Key_Escape);
    clerk_.awaitWindow(u"MDI"_s);
    clerk_.awaitKeyboard(); // a click that comes ahead of the desktop's turn to the window is lost
}

void TourSteps::chooseDay() {
    current_ = u"choosing the day in the calendar"_s;
    clerk_.click(u"CmdCtrl(5)"_s);
    clerk_.awaitWindow(u"FrmI1Date"_s);
    const QDate shown = clerk_.see<QDate>(
        u"the dialog with the label 重算日期 and a day"_s, [](const QWidget& front) -> std::optional<QDate> {
            const auto* date = visible<QComboBox>(front, u"TDBDate1(0)"_s);
            const auto today = date ? parseDateTime(date->currentText()) : std::nullopt;
            if (!today || textOf(front, u"Label1"_s) != u"重算日期")
                return std::nullopt;
            return today->date;
        });
    clerk_.takePicture(u"11-day"_s);

    // By years and months to the month of the file, then the day itself in the calendar.
    clerk_.press(Qt::Key_Tab);
    const int months = (shown.year() - day_.year()) * MonthsOfYear + shown.month() - day_.month();
    const Qt::Key key = months > 0 ? Qt::Key_PageUp : Qt::Key_PageDown;
    clerk_.press(key, Qt::ControlModifier, std::abs(months) / MonthsOfYear);
    clerk_.press(key, Qt::NoModifier, std::abs(months) % MonthsOfYear);
    clerk_.press(Qt::Key_F4);
    clerk_.seeThat(u"the calendar at the month of the file"_s, [this](const QWidget& front) {
        const auto* calendar = front.findChild<QCalendarWidget*>();
        return calendar && calendar->yearShown() == day_.year() && calendar->monthShown() == day_.month();
    });
    clerk_.takePicture(u"12-calendar"_s);
    clerk_.click(u"the day %1 in the calendar"_s.arg(day_.day()),
                 [this](const QWidget& front) { return dayCell(front, day_.day()); });
    clerk_.seeThat(u"the day in the date dialog"_s, [this](const QWidget& front) {
        const auto* date = visible<QComboBox>(front, u"TDBDate1(0)"_s);
        return front.objectName() == u"FrmI1Date" && date &&
               date->currentText() == formatDate(day_, u"yyyy/mm/dd"_s);
    });
    clerk_.takePicture(u"13-day-chosen"_s);
}

void TourSteps::recalculate() {
    current_ = u"recalculating the day"_s;
    clerk_.click(u"Command1(0)"_s);
    clerk_.awaitMessage(u"警告訊息"_s, shortDate(day_) + u"異常處理已完成!!"_s);
    clerk_.takePicture(u"14-recalculated"_s);
    clerk_.acknowledge();
    // Nothing was entered for the day in between, so the same exceptions stand there again.
    DayTable again = exceptions();
    clerk_.takePicture(u"15-exceptions-again"_s);
    DayTable before = exceptions_;
    std::sort(again.rows.begin(), again.rows.end());
    std::sort(before.rows.begin(), before.rows.end());
    if (again != before)
        throw StepFailed{u"the exceptions are others after the recalculation:\n"_s +
                         aligned(again).join(u'\n')};
    print(u"Recalculated %1: the same exceptions."_s.arg(shortDate(day_)));
}

void TourSteps::leaveAttendance() {
    current_ = u"leaving the attendance window"_s;
    clerk_.click(u"StbTool(8)"_s);
    windows_.awaitIdle();
}

void TourSteps::queryResults() {
    current_ = u"querying the exceptions of one employee"_s;
    const QString EmpNo = exceptions_.rows.front().at(exceptions_.captions.indexOf(u"員工碼"_s));
    clerk_.click(u"CmdCtrl(3)"_s);
    clerk_.awaitWindow(u"IFrmQuery"_s);
    clerk_.click(u"the kind 員工查詢"_s, [](const QWidget& front) -> std::optional<Spot> {
        auto* kind = visible<QRadioButton>(front, u"Option1(3)"_s);
        return kind ? std::optional(Spot{kind, QPoint(10, kind->height() / 2)}) : std::nullopt;
    });
    clerk_.takePicture(u"60-query-kinds"_s);
    clerk_.click(u"Command1(0)"_s);
    clerk_.awaitWindow(u"QFrmEmpNO"_s);
    clerk_.click(u"Text1"_s);
    clerk_.type(EmpNo);
    clerk_.seeThat(u"the employee in the lookup"_s,
                   [&EmpNo](const QWidget& front) { return textOf(front, u"Label3"_s) == EmpNo; });
    clerk_.click(u"Command1(0)"_s);
    clerk_.seeThat(u"the exceptions of the employee"_s, [&EmpNo](const QWidget& front) {
        const auto* grid = visible<QTableView>(front, u"TDBG3(0)"_s);
        return grid && grid->model()->rowCount() == 1 &&
               grid->model()->index(0, 1).data().toString() == EmpNo;
    });
    clerk_.takePicture(u"61-exception-of-one"_s);
    explainException();

    current_ = u"looking up the punches of one employee"_s;
    windows_.chooseTab(u"SSTab1"_s, u"記錄查詢"_s);
    clerk_.click(u"Text1"_s);
    clerk_.type(EmpNo);
    clerk_.press(Qt::Key_Return);
    clerk_.seeThat(u"the name of the employee"_s,
                   [](const QWidget& front) { return !textOf(front, u"Label3"_s).isEmpty(); });
    clerk_.takePicture(u"62-punches-of-one"_s);
    windows_.chooseTab(u"SSTab1"_s, u"勤惰查詢"_s);
    clerk_.seeThat(u"the results"_s, [](const QWidget& front) { return rowsOf(front, u"TDBG3(1)"_s) > 0; });
    clerk_.takePicture(u"63-results"_s);
}

void TourSteps::explainException() {
    current_ = u"explaining the exception"_s;
    clerk_.press(Qt::Key_F9);
    clerk_.awaitWindow(u"DayJudgement"_s);
    const auto sentences = [](const QWidget& front) {
        const auto* text = visible<QPlainTextEdit>(front, u"DaySentences"_s);
        return text ? text->toPlainText() : QString();
    };
    clerk_.seeThat(u"why the day is an exception"_s,
                   [&](const QWidget& front) { return sentences(front).contains(u"當日列為異常"); });
    clerk_.takePicture(u"d01-day-judgement"_s);
    clerk_.press(Qt::Key_Left);
    clerk_.seeThat(u"the day before"_s, [this](const QWidget& front) {
        return textOf(front, u"DayTitle"_s).startsWith(shortDate(day_.addDays(-1)));
    });
    clerk_.takePicture(u"d02-day-before"_s);
    clerk_.click(u"CmdDay(3)"_s);
    clerk_.awaitWindow(u"MDI"_s);
}

void TourSteps::readDayOfNewRoster() {
    current_ = u"reading a day on the new roster"_s;
    const QDate day = day_.addDays(DaysOfWeek);
    clerk_.click(u"Tb(3)"_s);
    chooseFile(day.toString(u"yyyyMMdd"_s) + u".txt"_s);
    clerk_.click(u"the button that opens the file"_s, openButton);
    clerk_.awaitMessage(u"警告訊息"_s, formatDate(day, u"yyyy/mm/dd"_s) + u"資料已轉入成功!!"_s);
    clerk_.acknowledge();
    windows_.chooseTab(u"SSTab1"_s, u"異常處理"_s);
    // The new employee has a roster and no punches, and the highest code.
    clerk_.click(u"the list of exceptions"_s, [](const QWidget& front) -> std::optional<Spot> {
        const auto* grid = visible<QTableView>(front, u"TDBG3(0)"_s);
        return grid ? spotOf(*grid, grid->model()->index(0, 0)) : std::nullopt;
    });
    clerk_.press(Qt::Key_End, Qt::ControlModifier);
    clerk_.seeThat(u"the new employee among the exceptions"_s, [](const QWidget& front) {
        const auto* grid = visible<QTableView>(front, u"TDBG3(0)"_s);
        return grid && cellWith(*grid, WindowSteps::NewEmployee).has_value();
    });
    clerk_.takePicture(u"64-new-roster"_s);
    print(u"Read %1 on the new roster: %2 is missed."_s.arg(shortDate(day), WindowSteps::NewEmployee));
    windows_.answerByLeave(WindowSteps::NewEmployee, day);
    windows_.answerByWriteOff(day);
    leaveAttendance();
}

void TourSteps::close() {
    current_ = u"closing the main window"_s;
    clerk_.closeWindow();
}

} // namespace pontrel::tour
