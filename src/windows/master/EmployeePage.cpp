#include "windows/master/EmployeePage.h"

#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/Lookup.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TabPages.h"
#include "rules/NoDate.h"
#include "rules/Session.h"
#include "store/DataSource.h"
#include "store/Format.h"
#include "store/StatementText.h"

#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>

#include <cmath>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int FirstMonths = 8;
constexpr int LastMonths = 11;
constexpr int MonthsOfYear = 12;

/// The grants, and the labels of what is left of them.
constexpr std::array<std::pair<int, int>, 4> LeftLabels = {{{13, 0}, {14, 1}, {25, 4}, {26, 5}}};

} // namespace

RecordRules EmployeePage::rules() {
    return {.alsoWithRows = {BarAction::Query},
            .deleteEnd = DeleteEnd::First,
            .deleteRefused = u"此員工已有加班/請假資料,無法刪除!"_s};
}

RecordSteps EmployeePage::steps() {
    return {.afterAdd =
                [this] {
                    clearMasks();
                    clearNames();
                },
            .focusFirst =
                [this] {
                    // On a page in sight: an edit may have been left on another one.
                    SSTab2->setCurrentIndex(0);
                    text6(0).setFocus();
                },
            .beforeSave =
                [this] {
                    putSentinels();
                    return SaveStep::Save;
                },
            .afterSave = [this] { endSave(); },
            .query = [this] { query(); }};
}

void EmployeePage::connectControls(FormState& form) {
    for (int index = 0; index < TextCount; ++index) {
        if (index < FirstCode || index >= FirstMonths)
            onEvent(&text6(index), &QLineEdit::textChanged, this, [this, index, &form] {
                form.mark = 0; // CodeMiss
                Text6_Change(index);
            });
    }
    for (int index = FirstMonths; index <= LastMonths; ++index)
        form.watch.onLostFocus(&text6(index), [this] { takeMonths(); });
    for (QLineEdit* carrier : Text7)
        onEvent(carrier, &QLineEdit::textChanged, this, [this] { Text7_Change(); });
}

void EmployeePage::Text6_Change(int index) {
    for (const auto& [grant, left] : LeftLabels) {
        if (index == grant)
            Label25.at(static_cast<std::size_t>(left))->setText(text6(index).text());
    }
}

void EmployeePage::takeMonths() {
    const auto months = [this](int years) {
        const double total =
            leadingNumber(text6(years).text()) * MonthsOfYear + leadingNumber(text6(years + 1).text());
        return QString::number(Value(total).toInt16());
    };
    const QString broken = months(FirstMonths);
    const QString military = months(FirstMonths + 2);
    const QScopedValueRollback guard(MonthsGuard, true);
    Text7[0]->setText(broken);
    Text7[1]->setText(military);
}

void EmployeePage::Text7_Change() {
    showMonths(0);
    showMonths(1);
}

void EmployeePage::showMonths(int carrier) {
    const double months = leadingNumber(Text7.at(static_cast<std::size_t>(carrier))->text());
    QLineEdit& yearBox = text6(FirstMonths + 2 * carrier);
    QLineEdit& monthBox = text6(FirstMonths + 2 * carrier + 1);
    if (months <= 0) {
        // Deliberate: also while the boxes themselves are being copied.
        yearBox.setText(u"0"_s);
        monthBox.setText(u"0"_s);
    } else if (!MonthsGuard) {
        yearBox.setText(QString::number(static_cast<qint64>(months / MonthsOfYear)));
        monthBox.setText(QString::number(Value(months).toInteger() % MonthsOfYear));
    }
}

void EmployeePage::putSentinels() {
    if (source().editMode() != EditMode::Edit)
        return;
    // Deliberate: the fourth date is left out of this.
    for (std::size_t index = 0; index + 1 < dates_.size(); ++index) {
        if (!dates_.at(index).date->date().isValid())
            dates_.at(index).date->setDate(NoDate);
    }
}

void EmployeePage::endSave() {
    // Deliberate: whoever really has that date loses it here, in any row.
    for (const QString& column : {u"LeaveDate"_s, u"Birth"_s, u"ArriveDate"_s})
        sharedDatabase().execute(u"Update Base06 Set "_s + column + u"= null Where "_s + column + u" ="_s +
                                 dateLiteral(NoDate));
    const qint64 saved = source().recordset().LastModified();
    source().MoveNext();
    source().setBookmark(saved);
    SSTab2->setCurrentIndex(0);
}

void EmployeePage::query() {
    Lookup::ask(LookupKind::QFrmEmpNO, window());
    source().FindFirst(u"empno ="_s + textLiteral(gPickEmpNo));
}

} // namespace pontrel
