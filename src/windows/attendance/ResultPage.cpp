#include "windows/attendance/ResultPage.h"

#include "app/ActionKeys.h"
#include "app/CodeNames.h"
#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/IFrmQuery.h"
#include "app/WindowRegistry.h"
#include "store/DataSource.h"
#include "store/StatementText.h"
#include "windows/attendance/DayJudgement.h"
#include "windows/attendance/SlotFaults.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The places that the lists take of the page's height.
constexpr int ResultsShare = 5;
constexpr int SmallGridsShare = 3;
/// Just wide enough for whole leave note numbers here and whole reasons there, beside their scroll bars.
constexpr int LeaveShare = 256;
constexpr int WriteOffsShare = 296;

const QString LateEarlyHint = u"當日最後一次遲到或早退的位置：\n"
                              u"0 無，1 上午上班遲到，2 上午下班早退，3 下午上班遲到，4 下午下班早退"_s;

GridColumn withFault(GridColumn column, std::function<QString(const GridRow&)> fault) {
    column.fault = std::move(fault);
    return column;
}

/// The column of the time of a position.
GridColumn timeColumn(int position, const QString& caption, int width, const QString& hint = {}) {
    return withFault({caption, u"Time%1"_s.arg(position), width, Qt::AlignLeft, {}, hint},
                     [position](const GridRow& row) { return positionFault(row, position); });
}

/// Where there is no room for its whole name, which a hint then tells.
GridColumn narrowTimeColumn(int position) {
    return timeColumn(position, isWayIn(position) ? u"上班"_s : u"下班"_s, 39, positionName(position));
}

GridColumn wideTimeColumn(int position) {
    return timeColumn(position, positionName(position), 56);
}

} // namespace

ResultPage::ResultPage(const Look& look, const FollowingRows& following, AttendanceNames& names)
    : AttendancePage(look.tab, look.table, names), look_(look), following_(following) {}

void ResultPage::makeControls(TDBGrid* results) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Margin, Margin, Margin, Margin);
    rows->setSpacing(Margin);
    rows->addWidget(results, ResultsShare);
    results->setEmptyText(look_.emptyText);
    addJudgement(*results);
    rows->addLayout(makeSmallGrids(), SmallGridsShare);
    struct Entry {
        QString caption;
        int module; ///< To which the button leads; 0 where to none.
    };
    const std::array<Entry, ButtonCount> entries = {{{u"假單管理"_s, 4},
                                                     {u"註銷管理"_s, 5},
                                                     {u"加班管理"_s, 6},
                                                     {u"查詢"_s, 0},
                                                     {u"報表管理"_s, 7},
                                                     {look_.ownCaption, 0}}};
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Margin);
    for (int index = 0; index < ButtonCount; ++index) {
        const Entry& entry = entries.at(static_cast<std::size_t>(index));
        QPushButton* button = makeButton(indexed(u"CmdCtrl"_s, look_.firstButton + index), entry.caption);
        button->setEnabled(entry.module == 0 || hasModuleWindow(entry.module));
        buttons->addWidget(button, 1);
        if (index == Query)
            giveKey(*button, ActionKey::Query);
        else if (index == Reports)
            giveKey(*button, ActionKey::Print);
        onEvent(button, &QPushButton::clicked, this, [this, index] { CmdCtrl_Click(index); });
    }
    rows->addLayout(buttons);
}

void ResultPage::addJudgement(TDBGrid& results) {
    auto* judge = new QAction(u"當日判讀"_s, this);
    judge->setObjectName(u"ActJudge"_s);
    judge->setShortcut(Qt::Key_F9);
    judge->setAutoRepeat(false);
    onEvent(judge, &QAction::triggered, this, [this] { judgeDay(); });
    // The page takes the key while it is in front, wherever the keyboard is; a menu of the list asks the
    // list.
    addAction(judge);
    results.addAction(judge);
}

void ResultPage::judgeDay() {
    DataSource& results = source();
    if (results.isEmpty() || results.recordset().AbsolutePosition() < 0)
        return;
    const Value UseDate = results.recordset().field(u"UseDate"_s);
    if (!UseDate.isNull())
        DayJudgement::ask(window(), results.recordset().field(u"EmpNo"_s).joined(), UseDate.toDate(),
                          results.recordset().field(u"TimeNo"_s).joined(),
                          look_.table == u"Atte02" ? DayList::Results : DayList::Exceptions);
}

QLayout* ResultPage::makeSmallGrids() {
    const auto reason = [this](int position) {
        return named(names().reasons,
                     {positionName(position), u"cnlno%1"_s.arg(position), 53, Qt::AlignLeft, {}});
    };
    TDBGrid* leave = makeGrid(indexed(u"TDBG4"_s, look_.firstSmallGrid), u"請假記錄"_s,
                              {{u"假單編號"_s, u"BusNo"_s, 86, Qt::AlignLeft, {}},
                               named(names().leaves, {u"假名"_s, u"HoliNo"_s, 53, Qt::AlignLeft, {}}),
                               {u"開始"_s, u"BegTime"_s, 36, Qt::AlignLeft, {}},
                               {u"結束"_s, u"EndTime"_s, 36, Qt::AlignLeft, {}},
                               {u"時數"_s, u"HoliHours"_s, 29, Qt::AlignRight, {}}},
                              *following_.leave);
    TDBGrid* writeOffs = makeGrid(
        indexed(u"TDBG4"_s, look_.firstSmallGrid + 1), u"註銷記錄"_s,
        {{u"註銷日期"_s, u"CnlDate"_s, 68, Qt::AlignLeft, {}}, reason(1), reason(2), reason(3), reason(4)},
        *following_.writeOffs);
    for (TDBGrid* grid : {leave, writeOffs}) {
        grid->setTightCells(true);
        // Over the scroll bar's place where there is none.
        grid->horizontalHeader()->setStretchLastSection(true);
        grid->setAccessibleDescription(u"上表所選員工當日的"_s + grid->accessibleName());
    }
    leave->setEmptyText(u"沒有請假。要補假單請按「假單管理」。"_s);
    writeOffs->setEmptyText(u"沒有註銷。要註銷請按「註銷管理」。"_s);
    auto* small = new QHBoxLayout;
    small->setSpacing(Margin);
    small->addWidget(leave, LeaveShare);
    small->addWidget(writeOffs, WriteOffsShare);
    return small;
}

void ResultPage::CmdCtrl_Click(int button) {
    switch (button) {
    case LeaveNotes:
        Q_EMIT jump(4, 2);
        return;
    case WriteOffs:
        Q_EMIT jump(5, 1);
        return;
    case Overtime:
        Q_EMIT jump(6, -1);
        return;
    case Query:
        query();
        return;
    case Reports:
        Q_EMIT jump(7, 2);
        return;
    default:
        ownButtonClicked();
    }
}

void ResultPage::query() {
    IFrmQuery::ask(this);
    show(
        queryStatement(look_.table, u"UseDate"_s, UnitQuery::ByDayAndUnit).value_or(source().RecordSource()));
    showRowsOfResult();
}

void ResultPage::bindFollowers() {
    following_.leave->setRecordSource(u"Holi04"_s);
    following_.writeOffs->setRecordSource(u"Canc02"_s);
    for (DataSource* rows : {following_.leave, following_.writeOffs}) {
        rows->Refresh();
        rows->MoveLastAndFirst();
    }
    showRowsOfResult();
}

void ResultPage::followRow() {
    if (!isRunning())
        showRowsOfResult();
}

void ResultPage::showRowsOfResult() {
    DataSource& results = source();
    // Without a current row the small grids keep what they hold.
    if (results.isEmpty() || results.recordset().AbsolutePosition() < 0)
        return;
    const QString EmpNo = results.recordset().field(u"EmpNo"_s).joined();
    const QString UseDate = results.recordset().field(u"UseDate"_s).joined();
    if (EmpNo.isEmpty() && UseDate.isEmpty())
        return;
    following_.leave->setRecordSource(u"Select * from Holi04 Where EmpNo ="_s + textLiteral(EmpNo) +
                                      u"     and HoliDate ="_s + dateLiteral(UseDate));
    following_.leave->Refresh();
    following_.writeOffs->setRecordSource(u"Select * from Canc02 Where EmpNo ="_s + textLiteral(EmpNo) +
                                          u"     and CnlDate ="_s + dateLiteral(UseDate));
    following_.writeOffs->Refresh();
}

ExceptionPage::ExceptionPage(int tab, const FollowingRows& following, AttendanceNames& shown)
    : ResultPage({tab, u"Atte03"_s, 0, 0, u"重新計算"_s,
                  u"沒有異常記錄。讀入打卡檔後，當日的異常會列在這裡；也可按「查詢」另選條件。"_s},
                 following, shown) {
    makeControls(makeGrid(
        u"TDBG3(0)"_s, u"異常記錄"_s,
        {{u"出勤日期"_s, u"UseDate"_s, 70, Qt::AlignLeft, {}},
         {u"員工碼"_s, u"EmpNo"_s, 42, Qt::AlignLeft, {}},
         named(names().employees, {u"姓名"_s, u"empno"_s, 46, Qt::AlignLeft, {}}),
         {u"時段"_s, u"TimeNo"_s, 30, Qt::AlignLeft, {}},
         narrowTimeColumn(1),
         narrowTimeColumn(2),
         narrowTimeColumn(3),
         narrowTimeColumn(4),
         withFault({u"遲到.早退"_s, u"DelayF"_s, 58, Qt::AlignRight, {}, LateEarlyHint}, lateEarlyFault),
         {u"時間一"_s, u"T1"_s, 42, Qt::AlignLeft, {}},
         {u"時間二"_s, u"T2"_s, 42, Qt::AlignLeft, {}},
         {u"逾時(分)"_s, u"Cushion3"_s, 50, Qt::AlignRight, {}}},
        source()));
}

QDate ExceptionPage::currentDay() const {
    if (source().isEmpty() || source().recordset().AbsolutePosition() < 0)
        return {};
    const Value day = source().recordset().field(u"UseDate"_s);
    return day.isNull() ? QDate() : day.toDate();
}

AttendanceQueryPage::AttendanceQueryPage(int tab, const FollowingRows& following, AttendanceNames& shown)
    : ResultPage(
          {tab, u"Atte02"_s, 2, 6, u"離開"_s, u"沒有勤惰記錄。請先讀入打卡檔，或按「查詢」另選條件。"_s},
          following, shown) {
    makeControls(makeGrid(u"TDBG3(1)"_s, u"勤惰記錄"_s,
                          {{u"出勤日期"_s, u"UseDate"_s, 72, Qt::AlignLeft, {}},
                           {u"員工碼"_s, u"EmpNo"_s, 50, Qt::AlignLeft, {}},
                           named(names().employees, {u"姓名"_s, u"empno"_s, 66, Qt::AlignLeft, {}}),
                           {u"時段"_s, u"TimeNo"_s, 32, Qt::AlignLeft, {}},
                           wideTimeColumn(1),
                           wideTimeColumn(2),
                           wideTimeColumn(3),
                           wideTimeColumn(4),
                           withFault({u"異常"_s, u"Expt"_s, 34, Qt::AlignLeft, {}}, dayFault),
                           {u"逾時(分)"_s, u"Cushion3"_s, 54, Qt::AlignRight, {}}},
                          source()));
}

} // namespace pontrel
