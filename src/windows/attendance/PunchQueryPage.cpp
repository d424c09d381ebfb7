#include "windows/attendance/PunchQueryPage.h"

#include "app/Events.h"
#include "app/Lookup.h"
#include "app/Prompts.h"
#include "app/Window.h"
#include "app/controls/LongTexts.h"
#include "rules/ActionHost.h"
#include "rules/Session.h"
#include "store/DataSource.h"
#include "store/StatementText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int CodeBoxWidth = 142; ///< Of ten characters.
constexpr int Gap = 6;

} // namespace

PunchQueryPage::PunchQueryPage(int tab, AttendanceNames& names) : AttendancePage(tab, u"Atte01"_s, names) {
    makeControls();
}

void PunchQueryPage::makeControls() {
    auto* caption = new QLabel(u"員工編號："_s, this);
    caption->setObjectName(u"Label4(0)"_s);
    Text1 = new QLineEdit(this);
    Text1->setObjectName(u"Text1"_s);
    Text1->setAccessibleName(u"員工編號"_s);
    Text1->setFixedWidth(CodeBoxWidth);
    caption->setBuddy(Text1);
    QPushButton* Search = makeSearchButton(this, u"Search"_s, u"查詢員工代碼"_s);
    Label3 = new LongLabel(this);
    Label3->setObjectName(u"Label3"_s);
    TDBG2 = makeGrid(u"TDBG2"_s, u"打卡記錄"_s, punchColumns(), source());
    TDBG2->setEmptyText(u"沒有打卡記錄。請輸入員工編號後按 Enter。"_s);

    auto* code = new QHBoxLayout;
    code->setSpacing(Gap);
    code->addWidget(caption);
    code->addWidget(Text1);
    code->addWidget(Search);
    code->addSpacing(Gap);
    code->addWidget(Label3, 1);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Margin, Margin, Margin, Margin);
    rows->setSpacing(Margin);
    rows->addLayout(code);
    rows->addWidget(TDBG2, 1);

    onEvent(Text1, &QLineEdit::textChanged, this, [this] { Text1_Change(); });
    onEvent(Text1, &QLineEdit::returnPressed, this, [this] { Text1_Enter(); });
    onEvent(Search, &QPushButton::clicked, this,
            [this] { searchCode(LookupKind::QFrmEmpNO, *Text1, LookupKey::Enter); });
}

void PunchQueryPage::Text1_Change() {
    EmpNotFound = false;
    gRecordset = sharedDatabase().openRecordset(u"SELECT EmpName FROM Base06 WHERE EmpNo ="_s +
                                                textLiteral(Text1->text()));
    if (gRecordset.AtEOF())
        EmpNotFound = true; // Deliberate: the label keeps the name found last.
    else
        Label3->setText(gRecordset.field(u"EmpName"_s).joined());
    gRecordset.Close();
}

void PunchQueryPage::Text1_Enter() {
    if (EmpNotFound) {
        MsgBox(u"無此【員工代碼】,請重新輸入"_s, WarningTitle);
        Text1->setFocus();
        Text1->selectAll(); // what is typed next takes its place
        return;
    }
    trapRead([this] { showPunchesOfEmployee(); });
}

void PunchQueryPage::showPunchesOfEmployee() {
    const QString EmpNo = Text1->text();
    source().setRecordSource(u" Select *  From Atte01  Where EmpNo = "_s + textLiteral(EmpNo) +
                             u" Order by UseDate desc,UseTime"_s);
    // The rows first: they come by a connection of their own and show also where the names fail.
    source().Refresh();
    source().MoveLastAndFirst();
    names().read();
    TDBG2->refreshCells();
    gRecordset = sharedDatabase().openRecordset(u"SELECT EmpNo, EmpName   From Base06  Where EmpNo ="_s +
                                                textLiteral(EmpNo));
    // The code as the store spells it. It goes in last: the change reads another set into the shared one.
    const QString code = gRecordset.field(u"EmpNo"_s).joined();
    Label3->setText(gRecordset.field(u"EmpName"_s).joined());
    gRecordset.Close();
    Text1->setText(code);
}

} // namespace pontrel
