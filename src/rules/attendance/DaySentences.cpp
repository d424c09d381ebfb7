#include "rules/attendance/DaySentences.h"

#include "rules/attendance/HalfDay.h"
#include "rules/attendance/Positions.h"
#include "rules/attendance/PunchClasses.h"
#include "store/Format.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int MinutesOfDay = 1440;

/// A sentence with places for figures; the table below is in the order of what it is about.
using Pattern = const char16_t*;

constexpr std::array<Pattern, DecisionCount> StepPatterns{
    u"{position}：收 {from} 至 {to} 的打卡{empty}",
    u"依卡數與彈性類別，這個時段不收任何打卡",
    u"當日沒有打卡",
    u"{time} 打卡，列為{position}",
    u"{time} 打卡，列為{position}，但 00:00 不留時間",
    u"{time} 打卡，{position}已有 {earlier}，不再列入",
    u"{time} 打卡，不在任何收卡時間內，不列入",
    u"{time} 是當日第十三次起的打卡，打卡核對表不留",
    u"{time} 是{class}，不列入出勤",
    u"計算時沒有請假",
    u"{position}已有請假",
    u"請假 {code}，{from} 至 {to}，{covers}",
    u"請假 {code}，{from} 至 {to}，{ends}，其後一併視為請假，{covers}",
    u"假別 {code} 起訖所在的{position}{carried}不算請假",
    u"計算時沒有註銷",
    u"{position}已有註銷",
    u"{position}註銷，原因 {code}",
    u"彈性類別「{elasticity}」：判斷{range}的遲到早退",
    u"彈性類別「{elasticity}」：不計遲到早退",
    u"彈性類別「{elasticity}」不能配 {asked}，計算到此中止",
    u"{position}沒有打卡時間，不計分鐘",
    u"{position} {time}，此時段不要求這次打卡，不計分鐘",
    u"{position} {time}，已請假，不計分鐘{kept}",
    u"{position} {time}，已註銷，不計分鐘{kept}",
    u"{position} {time}，記錄上沒有這次打卡，不計分鐘{kept}",
    u"{time} {kind}，不晚於 {standard}，準時",
    u"{time} {kind}，未超過 {standard}＋緩衝 {cushion} 分，逾時 {minutes} 分，不算遲到{half}",
    u"{time} {kind}，超過 {standard}＋緩衝 {cushion} 分，遲到 {minutes} 分{half}",
    u"{time} {kind}，晚於 {standard}，{allowed}，不記分鐘{half}",
    u"{time} {kind}，不早於 {standard}，準時",
    u"{time} {kind}，早於 {standard}，早退 {minutes} 分{half}",
    u"{time} {kind}，早於 {standard}，但未設早退分鐘，不記分鐘",
    u"沒有記下遲到或早退分鐘",
    u"遲到早退記在{position}",
    u"{position}雖{wrong} {minutes} 分，但只記當日最後一次",
    u"{count} 卡不看{position}",
    u"{position}{wrong} {minutes} 分，列為異常",
    u"{position}沒有打卡、請假或註銷，列為異常",
    u"{position}先前已列為異常",
    u"{position}有打卡，不列異常",
    u"{position}已請假，不列異常",
    u"{position}已註銷，不列異常",
    u"上午 {from} 至 {to}{span}，不足 {least} 分，當日列為異常",
    u"上午 {from} 至 {to}{span}，滿 {least} 分",
    u"{cards}的日子不列異常",
    u"當日列為異常",
    u"當日不列異常",
};

constexpr std::array<Pattern, RemarkCount> RemarkPatterns{
    u"當日沒有計算結果",
    u"時段 {text} 已不存在，無法判讀",
    u"班表現在排的是時段 {text}",
    u"班表現在沒有排這一天",
    u"班表現在這一天是休息",
    u"當日另有時段 {text} 的記錄",
    u"找不到當日的打卡記錄，打卡時間以結果所載為準",
    u"打卡記錄在計算之後有變動，以打卡核對表為準",
    u"時段設定在計算之後有變動，以下依現在的設定",
    u"請假、註銷或時段的標準時間在計算之後有變動",
    u"計算在這一天中止：{text}",
    u"這一天不在職，不計算：{text}",
    u"這個時段沒有設的時間，計算時沿用前面的時段，都沒有設的算 00:00：{text}",
    u"打卡核對表在計算之後有變動，以打卡記錄為準",
    u"打卡記錄與結果所載的不同，打卡時間以結果所載為準",
    u"「異常處理」與「勤惰查詢」所載的這一天不同，以下判讀「{text}」的記錄",
    u"當日的打卡：{text}",
};

constexpr std::array<Pattern, 7> RecalculationPatterns{
    u"當日不是異常，重新計算不會改變這一天",
    u"現在重新計算，結果不變",
    u"現在重新計算，仍列在異常處理，但下列各項會改變",
    u"現在重新計算，當日就不再是異常",
    u"現在重新計算，會中途停止：{text}",
    u"現在重新計算，下列各項會改變",
    u"現在重新計算，這一筆會消失，當日只留下列在異常處理的記錄",
};

QString namesOf(unsigned positions) {
    QStringList names;
    for (int position = 1; position <= Positions; ++position)
        if ((positions >> (position - 1) & 1U) != 0)
            names += positionName(position);
    return names.join(u'、');
}

QString coversText(unsigned positions) {
    return positions == 0 ? u"沒有涵蓋任何一次打卡"_s : u"涵蓋"_s + namesOf(positions);
}

QString elasticityName(int kind) {
    return elasticityNames().value(kind, QString::number(kind));
}

/// As the option of the time slots that chooses it.
QString cardsText(int count) {
    return count == 0 ? u"免刷卡"_s : u"%1 卡"_s.arg(count);
}

QString rangeText(int from, int to) {
    unsigned positions = 0;
    for (int position = from; position <= to; ++position)
        positions |= 1U << (position - 1);
    return namesOf(positions);
}

QString allowedText(const DayStep& step) {
    return step.allowance == 0
               ? u"但未設遲到分鐘"_s
               : u"但不在緩衝 %1 分之後的遲到 %2 分之內"_s.arg(step.cushion).arg(step.allowance);
}

/// What of a window no punch can fall in, as punches are those of the day itself.
QString reachText(int from, int to) {
    if (from > to || from >= MinutesOfDay || to < 0)
        return u"（沒有時間落在其中）"_s;
    return from < 0 || to >= MinutesOfDay ? u"（只看當日的打卡）"_s : QString();
}

/// The size of the difference counts, whichever is the later: what goes over midnight is no length.
QString spanText(const DayStep& step) {
    return (step.from <= step.to ? u" 共 %1 分"_s : u"，兩個時刻相差 %1 分（不跨日計算）"_s)
        .arg(step.minutes);
}

QString halfText(int half) {
    return half == 0 ? QString() : half == 1 ? u"（依上午的設定）"_s : u"（依下午的設定）"_s;
}

/// A punch by its class, as one that does not count.
QString classText(const QString& code) {
    if (code.isEmpty())
        return u"沒有班別的打卡"_s;
    return (code == OvertimeClass ? u"加班卡（班別 %1）"_s : u"其他班別的打卡（班別 %1）"_s).arg(code);
}

/// What stands in a place of a pattern.
QString figureOf(const DayStep& step, QStringView place) {
    const std::pair<QStringView, int> minutes[] = {{u"time", step.time},
                                                   {u"standard", step.standard},
                                                   {u"earlier", step.earlier},
                                                   {u"from", step.from},
                                                   {u"to", step.to}};
    for (const auto& [name, minute] : minutes)
        if (place == name)
            return minuteText(minute);
    const std::pair<QStringView, int> numbers[] = {{u"cushion", step.cushion},
                                                   {u"minutes", step.minutes},
                                                   {u"count", step.count},
                                                   {u"least", HalfDayMinutes}};
    for (const auto& [name, number] : numbers)
        if (place == name)
            return QString::number(number);
    if (place == u"position")
        return positionName(step.position);
    if (place == u"kind")
        return isWayIn(step.position) ? u"上班"_s : u"下班"_s;
    if (place == u"covers")
        return coversText(step.positions);
    if (place == u"elasticity")
        return elasticityName(step.count);
    if (place == u"range")
        return rangeText(step.from, step.to);
    if (place == u"allowed")
        return allowedText(step);
    if (place == u"cards")
        return cardsText(step.count);
    if (place == u"asked")
        return cardsText(step.number);
    if (place == u"span")
        return spanText(step);
    if (place == u"empty")
        return reachText(step.from, step.to);
    if (place == u"wrong")
        return isWayIn(step.position) ? u"遲到"_s : u"早退"_s;
    if (place == u"ends")
        return step.count == 1 ? u"只有一端落在時段之內"_s : u"起訖同在一段"_s;
    if (place == u"carried")
        return step.count != 0 ? u"（沿用前一筆）"_s : QString();
    if (place == u"class")
        return classText(step.code);
    if (place == u"kept")
        return step.minutes != 0 ? u"，先前的逾時 %1 分照舊"_s.arg(step.minutes) : QString();
    if (place == u"half")
        return halfText(step.half);
    return step.code;
}

template<typename FigureOf>
QString filled(Pattern pattern, FigureOf&& figure) {
    QString text;
    QStringView rest(pattern);
    for (;;) {
        const qsizetype open = rest.indexOf(u'{');
        if (open < 0)
            return text.append(rest);
        const qsizetype close = rest.indexOf(u'}', open);
        text.append(rest.first(open)).append(figure(rest.mid(open + 1, close - open - 1)));
        rest = rest.mid(close + 1);
    }
}

QString withText(Pattern pattern, const QString& text) {
    return filled(pattern, [&](QStringView) { return text; });
}

QString yesOrNo(std::int64_t flag) {
    return flag != 0 ? u"是"_s : u"否"_s;
}

QString timeCell(std::int64_t second) {
    return second == DayRow::NoTime ? u"無"_s : minuteText(static_cast<int>(second / 60));
}

/// Columns of one kind: the caption of each, with its position or number in it.
struct Family {
    std::size_t first;
    Pattern caption;
    int firstNumber = 1;
    int step = 1; ///< From the number of one to that of the next.
};
constexpr Family Families[] = {{DayRow::TimePlace, u"{position}"},
                               {DayRow::FTPlace, u"{position}打卡"},
                               {DayRow::FHPlace, u"{position}請假"},
                               {DayRow::FCPlace, u"{position}註銷"},
                               {DayRow::TPlace, u"未列入的打卡{number}"},
                               {DayRow::FPlace, u"{position}異常"},
                               {DayRow::ExptPlace, u"異常"},
                               {DayRow::DelayFPlace, u"遲到.早退"},
                               {DayRow::Cushion1Place, u"{position}逾時(分)", 1, 2},
                               {DayRow::Delay1Place, u"{position}遲到(分)", 1, 2},
                               {DayRow::Earlier2Place, u"{position}早退(分)", 2, 2}};

QString halfLine(const QString& half, int from, int to, int cushion, int delay, int earlier) {
    return u"%1 %2 至 %3，緩衝 %4 分、遲到 %5 分、早退 %6 分"_s.arg(half, minuteText(from), minuteText(to))
        .arg(cushion)
        .arg(delay)
        .arg(earlier);
}

QStringList slotLines(const DayAccount& account, const SlotTimes& slot) {
    const QString name =
        account.TimeName.isEmpty() ? account.TimeNo : account.TimeNo + u' ' + account.TimeName;
    QString first = u"時段 %1，%2，%3"_s.arg(name, cardsText(slot.CardType), elasticityName(slot.ElstType));
    if (slot.ElstMin != 0)
        first += u"，彈性 %1 分"_s.arg(slot.ElstMin);
    return {first, halfLine(u"上午"_s, slot.StdT1, slot.StdT2, slot.Cushion, slot.Delay, slot.Earlier),
            halfLine(u"下午"_s, slot.StdT3, slot.StdT4, slot.Cushion1, slot.Delay1, slot.Earlier1)};
}

DaySection daySection(const DayAccount& account) {
    DaySection section{u"當日"_s, {}};
    if (account.slot)
        section.lines += slotLines(account, *account.slot);
    for (const DayRemark& remark : account.remarks)
        section.lines += sentenceOf(remark);
    return section;
}

} // namespace

QString positionText(DayRow row, int position) {
    QStringList parts{timeCell(row.Time(position))};
    const bool arrives = isWayIn(position);
    const std::int64_t minutes = row.minutes(position);
    if (arrives && row.Cushion(position) != 0)
        parts += u"逾時 %1 分"_s.arg(row.Cushion(position));
    if (minutes != 0)
        parts += (arrives ? u"遲到 %1 分"_s : u"早退 %1 分"_s).arg(minutes);
    if (row.FT(position) != 0 && row.Time(position) == DayRow::NoTime)
        parts += u"有打卡"_s;
    if (row.FH(position) != 0)
        parts += u"請假"_s;
    if (row.FC(position) != 0)
        parts += u"註銷"_s;
    if (row.F(position) != 0)
        parts += u"異常"_s;
    return parts.join(u'，');
}

namespace {

DaySection storedSection(const DayAccount& account) {
    DaySection section{u"記錄所載"_s, {}};
    if (!account.hasRow)
        return section;
    DayRow row = account.stored;
    for (int position = 1; position <= Positions; ++position)
        section.lines += positionName(position) + u' ' + positionText(row, position);
    QStringList left;
    for (int punch = 1; punch <= 12; ++punch)
        if (row.T(punch) != DayRow::NoTime)
            left += timeCell(row.T(punch));
    if (!left.isEmpty())
        section.lines += u"未列入的打卡 "_s + left.join(u'、');
    section.lines +=
        u"遲到.早退 %1，異常 %2"_s.arg(cellText(DayRow::DelayFPlace, row), cellText(DayRow::ExptPlace, row));
    return section;
}

DaySection recalculationSection(const DayAccount& account) {
    DaySection section{u"重新計算"_s, {}};
    if (!account.hasRow)
        return section;
    const Recalculation& would = account.recalculation;
    section.lines +=
        withText(RecalculationPatterns.at(static_cast<std::size_t>(would.outcome)), would.failure);
    for (const std::size_t place : would.changed)
        section.lines += u"%1：%2 → %3"_s.arg(columnCaption(place), cellText(place, account.stored),
                                              cellText(place, would.after));
    if (would.outcome != Recalculation::Outcome::Fails && !would.failure.isEmpty())
        section.lines += u"重新計算在這一天之後會中途停止：%1"_s.arg(would.failure);
    return section;
}

} // namespace

QString minuteText(int minute) {
    const int wrapped = (minute % MinutesOfDay + MinutesOfDay) % MinutesOfDay;
    const QString day = minute < 0 ? u"前日 "_s : minute >= MinutesOfDay ? u"次日 "_s : QString();
    return day + shortTime(QTime(wrapped / 60, wrapped % 60));
}

QString sentenceOf(const DayStep& step) {
    return filled(StepPatterns.at(static_cast<std::size_t>(step.decision)),
                  [&](QStringView place) { return figureOf(step, place); });
}

QString sentenceOf(const DayRemark& remark) {
    return withText(RemarkPatterns.at(static_cast<std::size_t>(remark.remark)), remark.text);
}

QString columnCaption(std::size_t place) {
    const auto* family = std::prev(std::find_if(std::begin(Families) + 1, std::end(Families),
                                                [place](const Family& each) { return each.first > place; }));
    const int number = family->firstNumber + static_cast<int>(place - family->first) * family->step;
    return filled(family->caption, [number](QStringView name) {
        return name == u"position" ? positionName(number) : QString::number(number);
    });
}

QString cellText(std::size_t place, const DayRow& row) {
    const std::int64_t cell = row.cells().at(place);
    if (place < DayRow::FTPlace || (place >= DayRow::TPlace && place < DayRow::FPlace))
        return timeCell(cell);
    if (place <= DayRow::ExptPlace)
        return yesOrNo(cell);
    if (place == DayRow::DelayFPlace && cell != 0)
        return u"%1 %2"_s.arg(cell).arg(positionName(static_cast<int>(cell)));
    return QString::number(cell);
}

std::vector<DaySection> sectionsOf(const DayAccount& account) {
    DaySection judged{u"判讀經過"_s, {}};
    for (const DayStep& step : account.steps)
        judged.lines += sentenceOf(step);
    std::vector<DaySection> sections{daySection(account), judged, storedSection(account),
                                     recalculationSection(account)};
    std::erase_if(sections, [](const DaySection& section) { return section.lines.isEmpty(); });
    return sections;
}

QString titleOf(const DayAccount& account) {
    return u"%1 %2 %3"_s.arg(shortDate(account.date), account.EmpNo, account.EmpName).trimmed();
}

QString bodyText(const DayAccount& account) {
    QStringList sections;
    for (const DaySection& section : sectionsOf(account))
        sections += u"【"_s + section.heading + u"】\n"_s + section.lines.join(u'\n') + u'\n';
    return sections.join(u'\n');
}

QString plainText(const DayAccount& account) {
    return u"當日判讀　"_s + titleOf(account) + u"\n\n"_s + bodyText(account);
}

} // namespace pontrel
