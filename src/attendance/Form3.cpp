#include "attendance/Form3.h"

#include "app/FrmI1Date.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/controls/StatusBar.h"
#include "store/DataSource.h"
#include "store/Format.h"

#include <QProgressBar>
#include <QScopedValueRollback>
#include <QTabWidget>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

const QDate CancelDate(2038, 1, 1);

/// The shared connection, which another window's end may have closed.
Database& sharedDatabase() {
    if (!gDatabase)
        throw runTimeError(error::ObjectNotSet);
    return *gDatabase;
}

/// So that the number of rows is known.
void toLastAndFirst(DataSource& source) {
    if (source.isEmpty())
        return;
    source.MoveLast();
    source.MoveFirst();
}

} // namespace

void Form3::registerWindow() {
    registerModuleWindow(3, [](QWidget* parent) { return new Form3(parent); });
}

Form3::Form3(QWidget* parent) : Window(parent) {
    setObjectName(u"Form3"_s);
    setAccessibleName(u"出勤管理"_s);
    makeControls();
    connectControls();
}

Form3::~Form3() = default;

void Form3::onLoad() {
    OpenDB();
    AttendanceHost& host = *this;
    calculation_ = std::make_unique<DailyCalculation>(sharedDatabase(), host);
    bindTab();
}

void Form3::onUnload() {
    CloseDB();
    UnlockToolbar();
}

void Form3::SSTab1_Click() {
    tabBound_ = false;
    bindTab();
}

void Form3::bindTab() {
    if (tabBound_)
        return;
    openTrapped([this] {
        const int tab = SSTab1->currentIndex();
        DataSource* source = Data1.at(static_cast<std::size_t>(tab));
        if (source == nullptr)
            return; // a page without rows
        const QScopedValueRollback binding(binding_, true);
        readNames();
        source->setRecordSource(tab == ExceptionTab ? u"Atte03"_s : u"Atte01"_s);
        refreshSource(*source);
        if (tab == ExceptionTab) {
            Data3[1]->setRecordSource(u"Holi04"_s);
            Data3[2]->setRecordSource(u"Canc02"_s);
            refreshSource(*Data3[1]);
            refreshSource(*Data3[2]);
            showRowsOfException();
        }
        tabBound_ = true;
    });
}

void Form3::refreshSource(DataSource& source) {
    source.Refresh();
    toLastAndFirst(source);
}

void Form3::readNames() {
    const auto read = [](TranslationList& names, const QString& statement) {
        names.clear();
        for (const auto& row : sharedDatabase().select(statement))
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
    if (index == ExceptionTab && !binding_)
        showRowsOfException();
}

void Form3::showRowsOfException() {
    DataSource& exceptions = *Data1[ExceptionTab];
    if (exceptions.isEmpty() || exceptions.recordset().AbsolutePosition() < 0)
        return;
    const QString EmpNo = exceptions.recordset().field(u"EmpNo"_s).joined();
    const QString UseDate = exceptions.recordset().field(u"UseDate"_s).joined();
    if (EmpNo.isEmpty() && UseDate.isEmpty())
        return;
    Data3[1]->setRecordSource(u"Select * from Holi04 Where EmpNo ='"_s + EmpNo + u"'     and HoliDate =#"_s +
                              UseDate + u"#"_s);
    Data3[1]->Refresh();
    Data3[2]->setRecordSource(u"Select * from Canc02 Where EmpNo ='"_s + EmpNo + u"'     and CnlDate =#"_s +
                              UseDate + u"#"_s);
    Data3[2]->Refresh();
}

void Form3::CtrlCmd0_Click(int index) {
    DataSource& punches = *Data1[ReadTab];
    switch (index) {
    case 0:
        calculation_->ReadPunchFile();
        return;
    case 1:
        queryPunches();
        return;
    case 6:
        punches.Refresh();
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
    Data1[ReadTab]->setRecordSource(u"Select * from Atte01  Where UseDate = #"_s + shortDate(gDate1) +
                                    u"# order by usedate desc,empno,UseTime"_s);
    refreshSource(*Data1[ReadTab]);
}

void Form3::purgePunches() {
    // Without a question, and a cancelled dialog purges up to its date as well: both are meant.
    FrmI1Date::ask(this);
    sharedDatabase().execute(u" delete * from Atte01   where UseDate <= #"_s + shortDate(gDate1) + u"#"_s);
    if (!Data1[ReadTab]->isEmpty())
        Data1[ReadTab]->MoveLast();
    Data1[ReadTab]->Refresh();
    tell(shortDate(gDate1) + u"前之打卡資料已清除完畢!!"_s);
}

void Form3::CmdCtrl_Click(int index) {
    switch (index) {
    case 0:
        jumpTo(4, 2);
        return;
    case 1:
        jumpTo(5, 1);
        return;
    case 2:
        jumpTo(6, -1);
        return;
    case 4:
        jumpTo(7, 2);
        return;
    case 5:
        recalculate();
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

void Form3::jumpTo(int module, int tab) {
    unload();
    OpenToolWindow(static_cast<std::int16_t>(module));
    const Window* window = moduleWindow(module);
    auto* tabs = window != nullptr ? window->findChild<QTabWidget*>(u"SSTab1"_s) : nullptr;
    if (tabs != nullptr && tab >= 0)
        tabs->setCurrentIndex(tab);
}

std::optional<QString> Form3::choosePunchFile(const QString& folder) {
    gHandPath = folder; // which the settings' folder dialog leaves behind when it is cancelled
    return chooseFile(folder, u"Text (*.txt)"_s);
}

bool Form3::confirm(const QString& question) {
    return MsgBox(question, ProgramTitle, MsgIcon::None, MsgButtons::YesNo) == MsgAnswer::Yes;
}

void Form3::tell(const QString& message) {
    MsgBox(message, u"警告訊息"_s);
}

void Form3::setPointer(Pointer pointer) {
    setHourglass(pointer == Pointer::Hourglass);
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
    Data1[ReadTab]->Refresh();
    Data1[ReadTab]->setRecordSource(statement);
    Data1[ReadTab]->Refresh();
}

void Form3::refreshExceptions() {
    Data1[ExceptionTab]->Refresh();
}

void Form3::showExceptions(const QString& statement) {
    Data1[ExceptionTab]->setRecordSource(statement);
    Data1[ExceptionTab]->Refresh();
}

} // namespace pontrel
