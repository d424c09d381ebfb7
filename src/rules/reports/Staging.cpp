#include "rules/reports/Staging.h"

#include "store/RunTimeError.h"
#include "store/StatementForm.h"
#include "store/StatementText.h"

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The positions of the reasons' list that the statements speak of: one less than it may have.
constexpr qsizetype ReasonsCompared = 30;
constexpr int Places = 4;

QString between(const QString& low, const QString& high) {
    return u" between "_s + textLiteral(low) + u" and "_s + textLiteral(high);
}

/// Three comparisons with the reasons at the position and behind it.
QString threeReasons(const QString& column, const QStringList& codes, qsizetype position) {
    const QString equals = column + u"  = "_s;
    return equals + textLiteral(codes[position]) + u"  or "_s + equals + textLiteral(codes[position + 1]) +
           u" or "_s + equals + textLiteral(codes[position + 2]);
}

QString reasonCondition(const QString& column, const QStringList& codes) {
    QStringList comparisons;
    for (qsizetype position = 0; position < ReasonsCompared; position += 3)
        comparisons += threeReasons(column, codes, position);
    return u'(' + comparisons.join(u"      or "_s) + u')';
}

/// Runs for one print.
class Preparing {
  public:
    Preparing(Database& database, const ReportChoice& choice, QDate today)
        : database_(database), choice_(choice), today_(today) {}

    std::vector<NamedValue> run(const Report& report) {
        switch (report.preparation) {
        case Preparation::None:
            break;
        case Preparation::Headcount:
            return {countHeads()};
        case Preparation::EmployeeSums:
            return sumEmployee();
        case Preparation::WriteOffCounts:
        case Preparation::WriteOffDetail:
            stageWriteOffs(report);
            break;
        }
        return {};
    }

  private:
    [[nodiscard]] QString combo(qsizetype index) const { return choice_.combos.value(index); }
    [[nodiscard]] QDate first() const { return choice_.dates[0]; }
    [[nodiscard]] QDate last() const { return choice_.dates[1]; }

    NamedValue countHeads() {
        // Deliberate: the third condition takes the units of the tab of write-offs.
        const Rows counted = database_.select(
            u"Select count(empno) as cnt from Base06  Where Base06.UnitNo "_s + between(combo(2), combo(3)) +
            u" and Base06.WorkNo"_s + between(combo(4), combo(5)) + u" and Base06.UnitNo"_s +
            between(choice_.writeOffUnits[0], choice_.writeOffUnits[1]) +
            u" and isnull(Base06.LeaveDate) = true "_s);
        return namedValue(named::Att, counted.at(0, 0).joined());
    }

    std::vector<NamedValue> sumEmployee() {
        std::vector<NamedValue> values;
        for (const auto& [index, sum] : {std::pair{named::Cushion, u"Cushion1+Cushion3"_s},
                                         {named::Delay, u"Delay1+Delay3"_s},
                                         {named::Earlier, u"Earlier2+Earlier4"_s},
                                         {named::Absent, u"Absent"_s}}) {
            const Rows summed = database_.select(
                u"Select Sum("_s + sum + u") as cnt from Atte02  Where EmpNo  = "_s + textLiteral(combo(0)) +
                u"      and UseDate between "_s + dateLiteral(first()) + u" and "_s + dateLiteral(last()));
            // A sum over no rows is null, which joins as nothing.
            values.push_back(namedValue(index, summed.at(0, 0).joined()));
        }
        values.push_back(namedValue(named::Employee, employee()));
        return values;
    }

    /// Code and name, so that paper says whose it is where no record does; the code alone of nobody.
    [[nodiscard]] QString employee() {
        const Rows found =
            database_.select(u"Select EmpNo, EmpName from Base06 Where EmpNo = "_s + textLiteral(combo(0)));
        return found.count() == 0 ? combo(0) : found.at(0, 0).joined() + u' ' + found.at(0, 1).joined();
    }

    void stageWriteOffs(const Report& report) {
        const QStringList codes = selectedCodes(choice_.list, MostWriteOffReasons);
        runStage(database_, [&] {
            if (report.preparation == Preparation::WriteOffDetail) {
                stageDetail(codes);
                return;
            }
            const bool addsUp = report.code == u"E04"_s;
            stageCounts(codes, addsUp);
            // Deliberate: the text of the box is joined as it stands.
            if (report.code == u"E03"_s)
                database_.execute(u"delete * from View01  Where CnlTimes < "_s + combo(4));
            else if (addsUp)
                database_.execute(u"delete * from View01  Where (CnlTimes = 0 and AddUpTimes = 0 ) "_s);
            else
                database_.execute(u"delete * from View01  Where CnlTimes = 0"_s);
        });
    }

    void stageCounts(const QStringList& codes, bool addsUp) {
        database_.execute(u"delete * from View01"_s);
        const Rows reasons =
            database_.select(u"SELECT CnlNo From Canc01  Where "_s + reasonCondition(u"CnlNo"_s, codes));
        for (const auto& reason : reasons)
            for (const auto& employee : employeesWith(reason.at(0).joined()))
                stageCount(employee.at(0).joined(), reason.at(0).joined(), addsUp);
    }

    /// Who has that reason on any day. Deliberate: the dates play no part here.
    [[nodiscard]] Rows employeesWith(const QString& reason) {
        const QString CnlNo = textLiteral(reason);
        return database_.select(u"Select distinct Canc02.EmpNo from Canc02 ,Base06  where Canc02.EmpNo"_s +
                                between(combo(0), combo(1)) + u"   and Base06.UnitNo"_s +
                                between(combo(2), combo(3)) +
                                u"   and isnull(Base06.LeaveDate) = true    and Base06.EmpNo = Canc02.EmpNo "
                                "   and (CnlNo1 ="_s +
                                CnlNo + u" or CnlNo2 = "_s + CnlNo + u" or CnlNo3 ="_s + CnlNo +
                                u" or CnlNo4 ="_s + CnlNo + u')');
    }

    void stageCount(const QString& EmpNo, const QString& CnlNo, bool addsUp) {
        static const StatementForm insert(
            u"Insert Into View01(EmpNo,BegDate,EndDate,CnlNo) Values('e',#2001/1/1#,#2001/1/1#,'c')"_s);
        static const StatementForm addTimes(
            u"Update View01 Set CnlTimes = CnlTimes + 1 Where EmpNo = 'e'     and CnlNo = 'c'"_s);
        static const StatementForm addUp(
            u"Update View01 Set AddUpTimes = AddUpTimes + 1 Where EmpNo = 'e'     and CnlNo = 'c'"_s);
        // An empty date breaks the statement that it is joined into.
        for (const QDate date : {first(), last()})
            (void)dateLiteral(date);
        database_.execute(insert, std::array{Value(EmpNo), Value(first()), Value(last()), Value(CnlNo)});
        for (int place = 0; place < Places; ++place) {
            // A day that names the reason in two places counts twice.
            database_.execute(addTimes,
                              std::array{countOf(place, first(), EmpNo, CnlNo), Value(EmpNo), Value(CnlNo)});
            // Deliberate: from the January of today's year, whatever year is asked for.
            if (addsUp)
                database_.execute(addUp, std::array{countOf(place, QDate(today_.year(), 1, 1), EmpNo, CnlNo),
                                                    Value(EmpNo), Value(CnlNo)});
        }
    }

    [[nodiscard]] Value countOf(int place, QDate since, const QString& EmpNo, const QString& CnlNo) {
        const auto form = [](int number) {
            return StatementForm(
                u"SELECT count(*) as CnlTimes   From Canc02   where CnlDate between  "
                "#2001/1/1# and #2001/1/1#     and EmpNo = 'e'     and CnlNo%1 = 'c'"_s.arg(number));
        };
        static const std::array forms{form(1), form(2), form(3), form(4)};
        const std::array values{Value(since), Value(last()), Value(EmpNo), Value(CnlNo)};
        return database_.select(forms.at(static_cast<std::size_t>(place)), values).at(0, 0);
    }

    void stageDetail(const QStringList& codes) {
        database_.execute(u"delete * from View03"_s);
        const QString insert =
            u"Insert Into View03(EmpNo, CnlDate, CnlNo1, CnlNo2, CnlNo3, CnlNo4)"
            " Select Canc02.EmpNo,Canc02.CnlDate,Canc02.CnlNo1,Canc02.CnlNo2,Canc02.CnlNo3,Canc02.CnlNo4 "
            "   From Base06,Canc02  where Canc02.EmpNo"_s +
            between(combo(0), combo(1)) + u"   and Base06.UnitNo"_s + between(combo(2), combo(3)) +
            u"   and Canc02.CnlDate between  "_s + dateLiteral(first()) + u" and "_s + dateLiteral(last()) +
            u"   and isnull(Base06.LeaveDate) = true    and Base06.EmpNo = Canc02.EmpNo    and "_s +
            anyPlace(codes);
        // Deliberate: with a reason selected, empty texts are compared as well, and so meet the places that a
        // batch left empty. With none selected nothing is printed.
        const auto isSelected = [](const QString& code) { return !code.isEmpty(); };
        if (std::any_of(codes.begin(), codes.begin() + ReasonsCompared, isSelected))
            database_.execute(insert);
        for (int place = 1; place <= Places; ++place) {
            const QString column = u"CnlNo"_s + QString::number(place);
            database_.execute(u"Update View03,Canc01 set "_s + column +
                              u" =Canc01.CnlName  Where Canc01.CnlNo = View03."_s + column + u' ');
        }
    }

    /// That a reason stands in one of the four places.
    [[nodiscard]] static QString anyPlace(const QStringList& codes) {
        QStringList conditions;
        for (int place = 1; place <= Places; ++place)
            conditions += reasonCondition(u"CnlNo"_s + QString::number(place), codes);
        return u'(' + conditions.join(u"      or "_s) + u')';
    }

    Database& database_;
    const ReportChoice& choice_;
    QDate today_;
};

} // namespace

std::vector<NamedValue> prepareReport(Database& database, const ReportChoice& choice, QDate today) {
    const Report* report = findReport(choice.tab, choice.option);
    if (report == nullptr)
        return {};
    // Both lists are read ahead of what is done, also where the report does without them.
    if (choice.tab == ReportTab::Leave)
        (void)selectedCodes(choice.list, MostLeaveTypes);
    return Preparing(database, choice, today).run(*report);
}

} // namespace pontrel
