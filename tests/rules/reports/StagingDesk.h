#pragma once

#include "rules/reports/Staging.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/TestStore.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace pontrel::test {

inline const QDate First(2010, 3, 1);
inline const QDate Last(2010, 3, 31);
inline const QDate Today(2010, 6, 15);

/// Reasons 01 to 03 and one of three characters; employees 00001 and 00002 in unit 0100, 00003 in 0200, and
/// 00004, who has left.
class Desk {
  public:
    Desk() {
        for (const auto& [code, name] :
             {std::pair{u"01", u"忘記刷卡"}, {u"02", u"卡片遺失"}, {u"03", u"卡鐘故障"}, {u"123", u"三碼"}})
            insertRow(database(), QStringLiteral("Canc01"), {{u"CnlNo", code}, {u"CnlName", name}});
        addEmployee(database(), QStringLiteral("00001"), {{u"UnitNo", u"0100"}, {u"WorkNo", u"0001"}});
        addEmployee(database(), QStringLiteral("00002"), {{u"UnitNo", u"0100"}, {u"WorkNo", u"0002"}});
        addEmployee(database(), QStringLiteral("00003"), {{u"UnitNo", u"0200"}, {u"WorkNo", u"0001"}});
        addEmployee(database(), QStringLiteral("00004"),
                    {{u"UnitNo", u"0100"}, {u"WorkNo", u"0001"}, {u"LeaveDate", QDate(2010, 5, 1)}});
    }

    Database& database() { return store_.database(); }
    [[nodiscard]] const TestStore& store() const { return store_; }

    void writeOff(const char16_t* EmpNo, QDate day, const char16_t* first, const char16_t* second = u"",
                  const char16_t* third = u"", const char16_t* fourth = u"") {
        addWriteOff(database(), QString::fromUtf16(EmpNo), day, QString::fromUtf16(first),
                    QString::fromUtf16(second), QString::fromUtf16(third), QString::fromUtf16(fourth));
    }

    std::vector<NamedValue> prepare(const ReportChoice& choice) {
        return prepareReport(database(), choice, Today);
    }

    /// The rows as another connection reads them.
    [[nodiscard]] QStringList committed(const QString& table) const {
        const std::unique_ptr<Database> other = store_.connect();
        return rowsOf(*other, table);
    }

  private:
    TestStore store_;
};

[[nodiscard]] inline ReportChoice choiceOf(QStringView code) {
    const Report& report = *findReport(code);
    ReportChoice choice = defaultChoice(report.tab, report.option);
    choice.dates = {First, Last};
    for (const QString& reason : {QStringLiteral("01 忘記刷卡"), QStringLiteral("02 卡片遺失"),
                                  QStringLiteral("03 卡鐘故障"), QStringLiteral("123 三碼")})
        choice.list.push_back({reason, true});
    return choice;
}

[[nodiscard]] inline QString count(const char16_t* EmpNo, const char16_t* CnlNo, int times, int upTimes = 0) {
    return QStringLiteral("%1|2010-03-01|2010-03-31|%2|%3|%4")
        .arg(QString::fromUtf16(EmpNo), QString::fromUtf16(CnlNo))
        .arg(times)
        .arg(upTimes);
}

[[nodiscard]] inline QStringList texts(const std::vector<NamedValue>& values) {
    QStringList all;
    for (const NamedValue& value : values)
        all += QStringLiteral("%1 %2").arg(value.index).arg(value.text);
    return all;
}

inline void select(ReportChoice& choice, const QList<int>& positions) {
    for (std::size_t index = 0; index < choice.list.size(); ++index)
        choice.list[index].selected = positions.contains(static_cast<int>(index));
}

} // namespace pontrel::test
