#include "rules/attendance/DaySentences.h"

#include <QSet>
#include <QTest>

using namespace pontrel;
using namespace Qt::StringLiterals;

/// What is told of each decision, to the character.
class DaySentencesTest : public QObject {
    Q_OBJECT

    static QList<std::pair<DayStep, QString>> steps() {
        using enum Decision;
        return {
            {{.decision = Window, .position = 1, .from = 420, .to = 510},
             u"上午上班：收 07:00 至 08:30 的打卡"_s},
            {{.decision = Window, .position = 1, .from = 1380, .to = 10},
             u"上午上班：收 23:00 至 00:10 的打卡（沒有時間落在其中）"_s},
            {{.decision = Window, .position = 4, .from = -15, .to = 1455},
             u"下午下班：收 前日 23:45 至 次日 00:15 的打卡（只看當日的打卡）"_s},
            {{.decision = Window, .position = 3, .from = 1351, .to = 1465},
             u"下午上班：收 22:31 至 次日 00:25 的打卡（只看當日的打卡）"_s},
            {{.decision = Window, .position = 3, .from = 1440, .to = 1465},
             u"下午上班：收 次日 00:00 至 次日 00:25 的打卡（沒有時間落在其中）"_s},
            {{.decision = Window, .position = 4, .from = 0, .to = 1439},
             u"下午下班：收 00:00 至 23:59 的打卡"_s},
            {{.decision = NoWindows}, u"依卡數與彈性類別，這個時段不收任何打卡"_s},
            {{.decision = NoPunches}, u"當日沒有打卡"_s},
            {{.decision = PunchTaken, .position = 1, .time = 475}, u"07:55 打卡，列為上午上班"_s},
            {{.decision = MidnightTaken, .position = 4}, u"00:00 打卡，列為下午下班，但 00:00 不留時間"_s},
            {{.decision = PositionTaken, .position = 1, .time = 483, .earlier = 475},
             u"08:03 打卡，上午上班已有 07:55，不再列入"_s},
            {{.decision = PunchOutside, .time = 390}, u"06:30 打卡，不在任何收卡時間內，不列入"_s},
            {{.decision = PunchBeyondList, .time = 1335}, u"22:15 是當日第十三次起的打卡，打卡核對表不留"_s},
            {{.decision = PunchOfClass, .time = 1058, .code = u"081"_s},
             u"17:38 是加班卡（班別 081），不列入出勤"_s},
            {{.decision = PunchOfClass, .time = 1058, .code = u"082"_s},
             u"17:38 是其他班別的打卡（班別 082），不列入出勤"_s},
            {{.decision = PunchOfClass, .time = 1058}, u"17:38 是沒有班別的打卡，不列入出勤"_s},
            {{.decision = NoLeave}, u"計算時沒有請假"_s},
            {{.decision = LeaveStands, .position = 2}, u"上午下班已有請假"_s},
            {{.decision = LeaveRow, .from = 480, .to = 720, .positions = 3, .code = u"03 事假"_s},
             u"請假 03 事假，08:00 至 12:00，涵蓋上午上班、上午下班"_s},
            {{.decision = LeaveRow, .from = 360, .to = 420, .code = u"03"_s},
             u"請假 03，06:00 至 07:00，沒有涵蓋任何一次打卡"_s},
            {{.decision = LeaveRunsOn,
              .from = 1020,
              .to = 1439,
              .count = 1,
              .positions = 15,
              .code = u"03"_s},
             u"請假 03，17:00 至 23:59，只有一端落在時段之內，其後一併視為請假，涵蓋上午上班、上午下班、下午上班、下午下班"_s},
            {{.decision = LeaveRunsOn, .from = 540, .to = 660, .count = 2, .positions = 15, .code = u"03"_s},
             u"請假 03，09:00 至 11:00，起訖同在一段，其後一併視為請假，涵蓋上午上班、上午下班、下午上班、下午下班"_s},
            {{.decision = LeaveEndsUncovered, .position = 4, .code = u"14"_s},
             u"假別 14 起訖所在的下午下班不算請假"_s},
            {{.decision = LeaveEndsUncovered, .position = 1, .count = 1, .code = u"14"_s},
             u"假別 14 起訖所在的上午上班（沿用前一筆）不算請假"_s},
            {{.decision = NoWriteOff}, u"計算時沒有註銷"_s},
            {{.decision = WriteOffStands, .position = 3}, u"下午上班已有註銷"_s},
            {{.decision = WriteOff, .position = 3, .code = u"01 忘記打卡"_s},
             u"下午上班註銷，原因 01 忘記打卡"_s},
            {{.decision = PositionsJudged, .from = 3, .to = 4, .count = 2},
             u"彈性類別「上午4小時」：判斷下午上班、下午下班的遲到早退"_s},
            {{.decision = NoMinutes, .count = 1}, u"彈性類別「至少8小時」：不計遲到早退"_s},
            {{.decision = CannotJudge, .count = 9, .number = 3}, u"彈性類別「9」不能配 3 卡，計算到此中止"_s},
            {{.decision = CannotJudge, .count = 2, .number = 0},
             u"彈性類別「上午4小時」不能配 免刷卡，計算到此中止"_s},
            {{.decision = NoTime, .position = 2}, u"上午下班沒有打卡時間，不計分鐘"_s},
            {{.decision = NotRequired, .position = 2, .time = 715},
             u"上午下班 11:55，此時段不要求這次打卡，不計分鐘"_s},
            {{.decision = LeaveExcuses, .position = 1, .time = 500}, u"上午上班 08:20，已請假，不計分鐘"_s},
            {{.decision = LeaveExcuses, .position = 1, .time = 483, .minutes = 3},
             u"上午上班 08:03，已請假，不計分鐘，先前的逾時 3 分照舊"_s},
            {{.decision = WriteOffExcuses, .position = 3, .time = 783, .minutes = 3},
             u"下午上班 13:03，已註銷，不計分鐘，先前的逾時 3 分照舊"_s},
            {{.decision = WriteOffExcuses, .position = 1, .time = 500},
             u"上午上班 08:20，已註銷，不計分鐘"_s},
            {{.decision = TimeWithoutPunch, .position = 1, .time = 500},
             u"上午上班 08:20，記錄上沒有這次打卡，不計分鐘"_s},
            {{.decision = OnTime, .position = 1, .time = 475, .standard = 480},
             u"07:55 上班，不晚於 08:00，準時"_s},
            {{.decision = WithinCushion,
              .position = 1,
              .time = 483,
              .standard = 480,
              .cushion = 5,
              .minutes = 3},
             u"08:03 上班，未超過 08:00＋緩衝 5 分，逾時 3 分，不算遲到"_s},
            {{.decision = WithinCushion,
              .position = 1,
              .time = 483,
              .standard = 480,
              .cushion = 5,
              .half = 2,
              .minutes = 3},
             u"08:03 上班，未超過 08:00＋緩衝 5 分，逾時 3 分，不算遲到（依下午的設定）"_s},
            {{.decision = Late,
              .position = 3,
              .time = 793,
              .standard = 780,
              .cushion = 5,
              .half = 1,
              .minutes = 8},
             u"13:13 上班，超過 13:00＋緩衝 5 分，遲到 8 分（依上午的設定）"_s},
            {{.decision = LateUncounted,
              .position = 3,
              .time = 810,
              .standard = 780,
              .cushion = 5,
              .allowance = 10,
              .half = 1},
             u"13:30 上班，晚於 13:00，但不在緩衝 5 分之後的遲到 10 分之內，不記分鐘（依上午的設定）"_s},
            {{.decision = Late, .position = 1, .time = 493, .standard = 480, .cushion = 5, .minutes = 8},
             u"08:13 上班，超過 08:00＋緩衝 5 分，遲到 8 分"_s},
            {{.decision = LateUncounted,
              .position = 3,
              .time = 810,
              .standard = 780,
              .cushion = 5,
              .allowance = 10},
             u"13:30 上班，晚於 13:00，但不在緩衝 5 分之後的遲到 10 分之內，不記分鐘"_s},
            {{.decision = LateUncounted, .position = 3, .time = 810, .standard = 780},
             u"13:30 上班，晚於 13:00，但未設遲到分鐘，不記分鐘"_s},
            {{.decision = NotEarly, .position = 2, .time = 720, .standard = 720},
             u"12:00 下班，不早於 12:00，準時"_s},
            {{.decision = LeftEarly, .position = 4, .time = 1010, .standard = 1020, .minutes = 10},
             u"16:50 下班，早於 17:00，早退 10 分"_s},
            {{.decision = LeftEarly, .position = 2, .time = 716, .standard = 720, .half = 2, .minutes = 4},
             u"11:56 下班，早於 12:00，早退 4 分（依下午的設定）"_s},
            {{.decision = EarlyUncounted, .position = 4, .time = 1010, .standard = 1020},
             u"16:50 下班，早於 17:00，但未設早退分鐘，不記分鐘"_s},
            {{.decision = NoDelay}, u"沒有記下遲到或早退分鐘"_s},
            {{.decision = DelayMarked, .position = 4}, u"遲到早退記在下午下班"_s},
            {{.decision = DelayPassedOver, .position = 1, .minutes = 8},
             u"上午上班雖遲到 8 分，但只記當日最後一次"_s},
            {{.decision = NotAsked, .position = 2, .count = 2}, u"2 卡不看上午下班"_s},
            {{.decision = FaultByMinutes, .position = 1, .minutes = 8}, u"上午上班遲到 8 分，列為異常"_s},
            {{.decision = FaultByMinutes, .position = 4, .minutes = 8}, u"下午下班早退 8 分，列為異常"_s},
            {{.decision = FaultMissing, .position = 2}, u"上午下班沒有打卡、請假或註銷，列為異常"_s},
            {{.decision = FaultStands, .position = 2}, u"上午下班先前已列為異常"_s},
            {{.decision = FineByPunch, .position = 3}, u"下午上班有打卡，不列異常"_s},
            {{.decision = FineByLeave, .position = 3}, u"下午上班已請假，不列異常"_s},
            {{.decision = FineByWriteOff, .position = 3}, u"下午上班已註銷，不列異常"_s},
            {{.decision = ShortMorning, .from = 480, .to = 719, .minutes = 239},
             u"上午 08:00 至 11:59 共 239 分，不足 240 分，當日列為異常"_s},
            {{.decision = FullMorning, .from = 480, .to = 720, .minutes = 240},
             u"上午 08:00 至 12:00 共 240 分，滿 240 分"_s},
            {{.decision = FullMorning, .from = 1325, .to = 120, .minutes = 1205},
             u"上午 22:05 至 02:00，兩個時刻相差 1205 分（不跨日計算），滿 240 分"_s},
            {{.decision = ShortMorning, .from = 240, .to = 120, .minutes = 120},
             u"上午 04:00 至 02:00，兩個時刻相差 120 分（不跨日計算），不足 240 分，當日列為異常"_s},
            {{.decision = NoExceptionsKept, .count = 0}, u"免刷卡的日子不列異常"_s},
            {{.decision = NoExceptionsKept, .count = 5}, u"5 卡的日子不列異常"_s},
            {{.decision = DayException}, u"當日列為異常"_s},
            {{.decision = DayInOrder}, u"當日不列異常"_s}};
    }

  private Q_SLOTS:
    void eachDecisionHasItsSentence_data() {
        QTest::addColumn<int>("row");
        const auto all = steps();
        for (int row = 0; row < all.size(); ++row)
            QTest::addRow("%d: decision %d", row, static_cast<int>(all.at(row).first.decision)) << row;
    }
    void eachDecisionHasItsSentence() {
        QFETCH(int, row);
        const auto [step, sentence] = steps().at(row);
        QCOMPARE(sentenceOf(step), sentence);
    }

    void noDecisionIsLeftOut() {
        QSet<int> seen;
        for (const auto& [step, sentence] : steps())
            seen.insert(static_cast<int>(step.decision));
        QCOMPARE(seen.size(), DecisionCount);
    }

    void eachRemarkHasItsSentence() {
        using enum Remark;
        const QList<std::pair<DayRemark, QString>> remarks{
            {{NotCalculated}, u"當日沒有計算結果"_s},
            {{SlotUnknown, u"Z"_s}, u"時段 Z 已不存在，無法判讀"_s},
            {{RosterOther, u"B"_s}, u"班表現在排的是時段 B"_s},
            {{RosterNone}, u"班表現在沒有排這一天"_s},
            {{RosterRest}, u"班表現在這一天是休息"_s},
            {{OtherRow, u"B"_s}, u"當日另有時段 B 的記錄"_s},
            {{PunchesGone}, u"找不到當日的打卡記錄，打卡時間以結果所載為準"_s},
            {{PunchesChanged}, u"打卡記錄在計算之後有變動，以打卡核對表為準"_s},
            {{SlotChanged}, u"時段設定在計算之後有變動，以下依現在的設定"_s},
            {{CoverChanged}, u"請假、註銷或時段的標準時間在計算之後有變動"_s},
            {{CalculationFails, u"陣列索引超出範圍"_s}, u"計算在這一天中止：陣列索引超出範圍"_s},
            {{NotEmployed, u"到職日 2001/3/6"_s}, u"這一天不在職，不計算：到職日 2001/3/6"_s},
            {{TimesCarried, u"上午下班標準 12:00"_s},
             u"這個時段沒有設的時間，計算時沿用前面的時段，都沒有設的算 00:00：上午下班標準 12:00"_s},
            {{ViewChanged}, u"打卡核對表在計算之後有變動，以打卡記錄為準"_s},
            {{PunchesUnlike}, u"打卡記錄與結果所載的不同，打卡時間以結果所載為準"_s},
            {{ListsDiffer, u"勤惰查詢"_s},
             u"「異常處理」與「勤惰查詢」所載的這一天不同，以下判讀「勤惰查詢」的記錄"_s},
            {{PunchesThere, u"08:13、17:02"_s}, u"當日的打卡：08:13、17:02"_s}};
        QCOMPARE(remarks.size(), RemarkCount);
        for (const auto& [remark, sentence] : remarks)
            QCOMPARE(sentenceOf(remark), sentence);
    }

    void columnsHaveCaptionsOfTheirOwn() {
        QSet<QString> captions;
        for (std::size_t place = 0; place < DayRow::Places; ++place)
            captions.insert(columnCaption(place));
        QCOMPARE(captions.size(), static_cast<qsizetype>(DayRow::Places));
        QCOMPARE(columnCaption(DayRow::FPlace + 3), u"下午下班異常"_s);
        QCOMPARE(columnCaption(DayRow::TPlace + 11), u"未列入的打卡12"_s);
        QStringList single;
        for (std::size_t place = DayRow::ExptPlace; place < DayRow::Places; ++place)
            single += columnCaption(place);
        QCOMPARE(single, QStringList({u"異常"_s, u"遲到.早退"_s, u"上午上班逾時(分)"_s, u"下午上班逾時(分)"_s,
                                      u"上午上班遲到(分)"_s, u"下午上班遲到(分)"_s, u"上午下班早退(分)"_s,
                                      u"下午下班早退(分)"_s}));
    }

    void cellsShowWhatTheColumnHolds() {
        DayRow row;
        row.Time(1) = 8 * 3600 + 60;
        row.FT(1) = 1;
        row.DelayF() = 3;
        row.Delay(3) = 12;
        QCOMPARE(cellText(DayRow::TimePlace, row), u"08:01"_s);
        QCOMPARE(cellText(DayRow::TimePlace + 1, row), u"無"_s);
        QCOMPARE(cellText(DayRow::FTPlace, row), u"是"_s);
        QCOMPARE(cellText(DayRow::ExptPlace, row), u"否"_s);
        QCOMPARE(cellText(DayRow::DelayFPlace, row), u"3 下午上班"_s);
        QCOMPARE(cellText(DayRow::Delay3Place, row), u"12"_s);
        QCOMPARE(cellText(DayRow::Delay1Place, row), u"0"_s);
    }
};

QTEST_GUILESS_MAIN(DaySentencesTest)
#include "DaySentencesTest.moc"
