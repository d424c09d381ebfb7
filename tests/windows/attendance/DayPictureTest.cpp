#include "windows/attendance/DayPicture.h"
#include "support/AppSupport.h"

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

/// Where the picture of a day has its parts.
class DayPictureTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theOutcomesHaveRoom();
};

void DayPictureTest::theOutcomesHaveRoom() {
    DayAccount account;
    account.hasRow = true;
    const QFontMetricsF font((QFont()));
    const QRectF area(0, 0, 560, DayScale::heightFor(font));
    const double usual = DayScale(area, font, {}, account).outcome(0).width();
    const auto expectRoom = [&](const QString& longest) {
        const DayScale scale(area, font, {}, account);
        QCOMPARE(laneOutcome(account, 1), longest);
        for (int lane = 0; lane < DayLanes; ++lane) {
            const QRectF room = scale.outcome(lane);
            QVERIFY(room.width() >= font.horizontalAdvance(laneOutcome(account, lane)));
            QVERIFY(area.contains(room) && !room.intersects(scale.lane(lane)));
            QVERIFY(!scale.lane(lane).intersects(scale.laneName(lane)));
        }
        // The hours still have their numbers.
        QVERIFY(scale.lane(0).width() / 24 * scale.hourStep() >= font.horizontalAdvance(u"00"_s));
    };
    account.stored.Time(2) = (15 * 60 + 10) * 60;
    account.stored.Earlier(2) = 110;
    account.stored.F(2) = 1;
    expectRoom(u"15:10，早退 110 分，異常"_s);
    account.stored.Earlier(2) = 1439;
    account.stored.FH(2) = account.stored.FC(2) = 1;
    expectRoom(u"15:10，早退 1439 分，請假，註銷，異常"_s);
    account.stored = {};
    account.stored.Time(1) = (12 * 60 + 52) * 60;
    account.stored.Cushion(1) = 59;
    account.stored.Delay(1) = 59;
    account.stored.F(1) = 1;
    expectRoom(u"無"_s);
    QVERIFY(DayScale(area, font, {}, account).outcome(0).width() > usual);
}

int main(int argc, char** argv) {
    return runTests<DayPictureTest>(argc, argv);
}

#include "DayPictureTest.moc"
