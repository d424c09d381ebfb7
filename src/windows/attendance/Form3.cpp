#include "windows/attendance/Form3.h"

#include "app/FrmI1Date.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/controls/StatusBar.h"
#include "app/controls/TabPages.h"
#include "store/DataSource.h"
#include "store/Format.h"
#include "store/StatementText.h"

#include <QDir>
#include <QProgressBar>
#include <QScopedValueRollback>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

const QDate CancelDate(2038, 1, 1);

/// What each page's source shows when the page is bound.
const std::array<QString, 4> TabTables{u"Atte01"_s, u"Atte01"_s, u"Atte03"_s, u"Atte02"_s};

} // namespace

void Form3::registerWindow() {
    registerModuleWindow(3, [](QWidget* parent) { return new Form3(parent); });
}

Form3::Form3(QWidget* parent) : TabbedWindow(parent, u"Form3"_s, u"出勤管理"_s) {
    makeControls();
    connectControls();
}

Form3::~Form3() = default;

void Form3::onLoad() {
    OpenDB();
    AttendanceHost& host = *this;
    calculation_ = std::make_unique<DailyCalculation>(sharedDatabase(), host);
    openTrapped([this] { bindTab(); });
}

void Form3::onUnload() {
    CloseDB();
    UnlockToolbar();
}

void Form3::SSTab1_Click() {
    tabBound_ = false;
    // Unlike a failed load this leaves gOpenFailed alone: the window has opened.
    trapRead([this] { bindTab(); });
}

void Form3::bindTab() {
    if (tabBound_)
        return;
    const int tab = SSTab1->currentIndex();
    DataSource& source = *Data1.at(static_cast<std::size_t>(tab));
    const QScopedValueRollback binding(binding_, true);
    source.setRecordSource(TabTables.at(static_cast<std::size_t>(tab)));
    refreshSource(source);
    if (tab == ExceptionTab || tab == AttendanceQueryTab) {
        Data3[1]->setRecordSource(u"Holi04"_s);
        Data3[2]->setRecordSource(u"Canc02"_s);
        for (DataSource* rows : {Data3[1], Data3[2]}) {
            rows->Refresh();
            rows->MoveLastAndFirst();
        }
        showRowsOfResult();
    }
    showCounter();
    tabBound_ = true;
}

void Form3::showCounter() {
    const Recordset& rows = Data1.at(static_cast<std::size_t>(SSTab1->currentIndex()))->recordset();
    StbTool->showCounter(rows.AbsolutePosition(), rows.RecordCount());
}

void Form3::runSource(DataSource& source) {
    // With the names as they are now, which the grids show in place of the codes.
    readNames();
    source.Refresh();
}

void Form3::refreshSource(DataSource& source) {
    runSource(source);
    source.MoveLastAndFirst();
}

void Form3::readNames() {
    const auto read = [](TranslationList& names, const QString& statement) {
        const Rows rows = sharedDatabase().select(statement);
        names.clear();
        for (const auto& row : rows)
            names.add(row.at(0).joined(), row.at(1).joined());
    };
    read(employeeNames_, u"SELECT EmpNo, EmpName   From Base06 "_s);
    read(leaveNames_, u"SELECT HoliNo, HoliType   From Holi01 "_s);
    read(reasonNames_, u"SELECT CnlNo, CnlName   From Canc01 "_s);
}

void Form3::Data1_Reposition(int index) {
    DataSource& source = *Data1.at(static_cast<std::size_t>(index));
    if (calculation_ && calculation_->ImportRunning())
        StbTool->setText(1, u"執行狀況："_s);
    else
        StbTool->showCounter(source.recordset().AbsolutePosition(), source.recordset().RecordCount());
    if (index == SSTab1->currentIndex() && !binding_)
        showRowsOfResult();
}

void Form3::CtrlCmd0_Click(int index) {
    DataSource& punches = *Data1[ReadTab];
    switch (index) {
    case 0:
        calculation_->ReadPunchFile();
        // After an import that ended early what panel 1 shows stays.
        if (calculation_->finished())
            showCounter();
        return;
    case 1:
        queryPunches();
        return;
    case 6:
        runSource(punches);
        return;
    case 7:
        jumpTo(7, 2);
        return;
    case 8:
        unload();
        return;
    case 9:
        purgePunches();
        return;
    default:
        break;
    }
    if (punches.isEmpty())
        return;
    switch (index) {
    case 2:
        punches.MoveFirst();
        return;
    case 3:
        punches.MovePrevious();
        if (punches.recordset().AtBOF())
            punches.MoveFirst();
        return;
    case 4:
        punches.MoveNext();
        if (punches.recordset().AtEOF())
            punches.MoveLast();
        return;
    case 5:
        punches.MoveLast();
        return;
    default:
        return;
    }
}

void Form3::queryPunches() {
    // The date of a cancelled dialog is not tested for, as is meant: it shows an empty day.
    FrmI1Date::ask(this);
    Data1[ReadTab]->setRecordSource(u"Select * from Atte01  Where UseDate = "_s + dateLiteral(gDate1) +
                                    u" order by usedate desc,empno,UseTime"_s);
    refreshSource(*Data1[ReadTab]);
}

void Form3::purgePunches() {
    // Without a question, and a cancelled dialog purges up to its date as well: both are meant.
    FrmI1Date::ask(this);
    sharedDatabase().execute(u" delete * from Atte01   where UseDate <= "_s + dateLiteral(gDate1));
    if (!Data1[ReadTab]->isEmpty())
        Data1[ReadTab]->MoveLast();
    runSource(*Data1[ReadTab]);
    tell(shortDate(gDate1) + u"前之打卡資料已清除完畢!!"_s, WarningTitle);
}

void Form3::CmdCtrl_Click(int index) {
    switch (index) {
    case 0:
    case 6:
        jumpTo(4, 2);
        return;
    case 1:
    case 7:
        jumpTo(5, 1);
        return;
    case 2:
    case 8:
        jumpTo(6, -1);
        return;
    case 3:
        queryResults(ExceptionTab);
        return;
    case 9:
        queryResults(AttendanceQueryTab);
        return;
    case 4:
    case 10:
        jumpTo(7, 2);
        return;
    case 5:
        recalculate();
        return;
    case 11:
        unload();
        return;
    default:
        return;
    }
}

void Form3::recalculate() {
    FrmI1Date::ask(this, u"重算日期"_s);
    if (gDate1 != CancelDate)
        calculation_->Recalculate(gDate1);
}

std::optional<QString> Form3::choosePunchFile(const QString& folder) {
    gHandPath = folder; // which the settings' folder dialog leaves behind when it is cancelled
    // A relative one counts from the program's folder, which can be moved with it.
    const QDir programFolder(QDir::cleanPath(gDbPath + u".."_s));
    return chooseFile(programFolder.absoluteFilePath(folder), u"Text (*.txt)"_s);
}

void Form3::setProgressShown(bool shown) {
    if (shown)
        ProgressBar1->setValue(ProgressBar1->minimum());
    ProgressBar1->setVisible(shown);
}

int Form3::progress() const {
    return ProgressBar1->value();
}

void Form3::setProgress(int value) {
    ProgressBar1->setValue(value);
}

void Form3::showPunches(const QString& statement) {
    Data1[ReadTab]->refreshUnseen(); // the next line but one replaces its rows
    Data1[ReadTab]->setRecordSource(statement);
    runSource(*Data1[ReadTab]);
}

void Form3::refreshExceptions() {
    // The rows of a covered page are read when it is bound, and its counter does not show while an import
    // runs.
    if (SSTab1->currentIndex() == ExceptionTab || !calculation_->ImportRunning())
        runSource(*Data1[ExceptionTab]);
    else
        Data1[ExceptionTab]->refreshUnseen();
}

void Form3::showExceptions(const QString& statement) {
    Data1[ExceptionTab]->setRecordSource(statement);
    runSource(*Data1[ExceptionTab]);
}

} // namespace pontrel
