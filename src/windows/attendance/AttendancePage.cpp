#include "windows/attendance/AttendancePage.h"

#include "app/CodeNames.h"
#include "app/ControlNames.h"
#include "app/controls/Buttons.h"
#include "rules/Session.h"
#include "store/DataSource.h"

#include <QPushButton>
#include <QScopedValueRollback>

namespace pontrel {

using namespace Qt::StringLiterals;

void AttendanceNames::read() {
    Database& database = sharedDatabase();
    readNames(employees, database, EmployeeNames);
    readNames(leaves, database, LeaveTypeNames);
    readNames(reasons, database, WriteOffReasonNames);
}

AttendancePage::AttendancePage(int tab, const QString& table, AttendanceNames& names)
    : table_(table), names_(names), source_(new DataSource(this)) {
    source_->setObjectName(indexed(u"Data1"_s, tab));
    source_->setDatabaseName(storePath());
    // The end of an import runs that of the exceptions as it is, also where its page was never opened.
    source_->setRecordSource(table);
}

void AttendancePage::bind() {
    const QScopedValueRollback running(running_, true);
    source_->setRecordSource(table_);
    runAndStandFirst();
    bindFollowers();
}

void AttendancePage::show(const QString& selection) {
    const QScopedValueRollback running(running_, true);
    source_->setRecordSource(selection);
    runAndStandFirst();
}

void AttendancePage::run() {
    names_.read();
    source_->Refresh();
}

void AttendancePage::runAndStandFirst() {
    run();
    source_->MoveLastAndFirst();
}

TDBGrid* AttendancePage::makeGrid(const QString& name, const QString& spokenName,
                                  std::vector<GridColumn> columns, DataSource& source) {
    auto* grid = new TDBGrid(this);
    grid->setObjectName(name);
    grid->setAccessibleName(spokenName);
    grid->setColumns(std::move(columns));
    grid->setSource(&source);
    return grid;
}

QPushButton* AttendancePage::makeButton(const QString& name, const QString& caption) {
    return pontrel::makeButton(this, name, caption);
}

std::vector<GridColumn> AttendancePage::punchColumns() const {
    return {{u"員工碼"_s, u"EmpNo"_s, 90, Qt::AlignLeft, {}},
            named(names_.employees, {u"姓名"_s, u"empno"_s, 130, Qt::AlignLeft, {}}),
            {u"打卡日期"_s, u"UseDate"_s, 104, Qt::AlignLeft, {}},
            {u"打卡時間"_s, u"UseTime"_s, 80, Qt::AlignLeft, {}},
            {u"班別"_s, u"class"_s, 66, Qt::AlignLeft, {}},
            {u"機號"_s, u"ReaderId"_s, 66, Qt::AlignLeft, {}}};
}

} // namespace pontrel
