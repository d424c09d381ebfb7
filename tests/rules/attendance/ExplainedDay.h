#pragma once

#include "Opening.h"

#include "rules/attendance/DaySentences.h"

#include <memory>

namespace pontrel::test {

/// An opening whose employee 00001 has a day that is calculated and explained.
class ExplainedDay {
  protected:
    inline static const QDate& Day = Opening::Day;

    /// An empty store for the next test.
    void reset() {
        if (!opening_)
            opening_ = std::make_unique<Opening>();
        it().store.clear();
    }
    Opening& it() { return *opening_; }

    void punch(const QString& times) {
        for (const QString& time : times.split(u' ', Qt::SkipEmptyParts))
            addPunch(it().database(), QStringLiteral("00001"), Day,
                     QTime::fromString(time, QStringLiteral("hh:mm")));
    }
    /// A punch of the day in the table of punches.
    void keepPunch(QTime time, const QString& classCode = QStringLiteral("255")) {
        insertRow(it().database(), QStringLiteral("Atte01"),
                  {{u"EmpNo", u"00001"},
                   {u"UseDate", Day},
                   {u"UseTime", time},
                   {u"class", classCode},
                   {u"ReaderID", u"001"}});
    }
    void changeSlot(const QString& assignments) {
        it().database().execute(QStringLiteral("Update Base04 Set ") + assignments +
                                QStringLiteral(" Where TimeNo = 'A'"));
    }
    DayAccount explain(const QString& TimeNo = QStringLiteral("A"), DayList list = DayList::Exceptions) {
        return explainDay(it().store.path(), QStringLiteral("00001"), Day, TimeNo, list);
    }
    static QStringList told(const DayAccount& account) {
        QStringList sentences;
        for (const DayStep& step : account.steps)
            sentences += sentenceOf(step);
        return sentences;
    }
    static QStringList remarks(const DayAccount& account) {
        QStringList sentences;
        for (const DayRemark& remark : account.remarks)
            sentences += sentenceOf(remark);
        return sentences;
    }
    static QStringList section(const DayAccount& account, const QString& heading) {
        for (const DaySection& each : sectionsOf(account))
            if (each.heading == heading)
                return each.lines;
        return {};
    }
    /// A slot with the settings, its employee and his punches, calculated.
    DayAccount explainAfter(const QString& slot, const QString& punches) {
        addSlot(it().database(), QStringLiteral("A"), fieldsOf(slot));
        it().addRostered(QStringLiteral("00001"));
        punch(punches);
        (void)it().calculate();
        return explain();
    }

  private:
    std::unique_ptr<Opening> opening_;
};

} // namespace pontrel::test
