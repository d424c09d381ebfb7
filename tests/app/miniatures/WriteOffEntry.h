#pragma once

#include "app/miniatures/Miniature.h"

namespace pontrel::test {

using namespace Qt::StringLiterals;

/// A write-off entry: five code boxes from one table, each of which asks for its lookup and keeps the focus,
/// and a query whose result the next refresh drops.
class WriteOffEntry : public Miniature {
  public:
    WriteOffEntry()
        : Miniature({.index = 0, .caption = u"註銷明細"_s, .table = u"Canc02"_s, .bar = wholeBarWithBack()}) {
        reasons << addCode(row(0, LookupKind::QFrmEmpNO, u"EmpNo"_s, u"Label4(96)"_s));
        for (int reason = 1; reason <= 4; ++reason)
            reasons << addCode(row(reason, LookupKind::QFrmCnlNo, u"CnlNo%1"_s.arg(reason),
                                   indexed(u"Label40"_s, 8 - reason)));
        setFirstField(&reasons.constFirst()->box());
        stack(reasons, {day.mask, day.date, account}, makeGrid(u"TDBG1(0)"_s));
    }
    RecordRules rules() override {
        return {.alsoWithRows = {BarAction::Query},
                .alsoWithoutRows = {BarAction::Query},
                .leftAlone = {BarAction::Back},
                .printTab = 4};
    }
    RecordSteps steps() override {
        return {.afterAdd = [this] { startRow(); }, .query = [this] { query(); }};
    }

  private:
    static CodeBoxRow row(int index, LookupKind kind, const QString& column, const QString& label) {
        return {.number = index + 1,
                .kind = kind,
                .box = indexed(u"Text5"_s, index),
                .search = indexed(u"Search"_s, index + 5),
                .label = label,
                .column = column,
                .spokenName = column,
                .check = CodeCheck::Leaving,
                .refusal = CodeRefusal::LookupAndFocus,
                .afterSearch = LookupKey::Tab};
    }
    void startRow() {
        account->setText(gAccount);
        for (CodeBox* reason : reasons.mid(1))
            reason->clearName();
    }
    void query() {
        IFrmQuery::ask(window());
        if (const auto statement = queryStatement(u"Canc02"_s, u"CnlDate"_s, UnitQuery::None))
            source().setRecordSource(*statement);
        source().Refresh();
        source().setRecordSource(table());
    }

    QList<CodeBox*> reasons;
    DateFields day = addDate(1, u"註銷日期"_s, u"CnlDate"_s, SilentDatePair);
    QLabel* account = fields().shown(u"Label4(0)"_s, u"Account"_s);
};

} // namespace pontrel::test
