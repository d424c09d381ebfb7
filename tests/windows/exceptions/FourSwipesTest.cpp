#include "windows/exceptions/ExceptionFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Came = u"Time1=07:55 FT1 "_s;
const QString LeftForLunch = u"Time2=12:05 FT2 "_s;
const QString CameBack = u"Time3=12:50 FT3 "_s;
const QString Left = u"Time4=17:03 FT4 "_s;

} // namespace

/// The exceptions of a slot with four swipes, each answered until it is gone from the list.
class FourSwipesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theFirstIsMissing() {
        ExceptionFixture().drive({.slot = {},
                                  .punches = u"12:05 12:50 17:03"_s,
                                  .before = LeftForLunch + CameBack + Left + u"F1 Expt"_s,
                                  .answer = ByLeave{u"0800"_s, u"1200"_s},
                                  .after = LeftForLunch + CameBack + Left + u"FH1 FH2"_s});
    }
    void theSecondIsMissing() {
        ExceptionFixture().drive({.slot = {},
                                  .punches = u"07:55 12:50 17:03"_s,
                                  .before = Came + CameBack + Left + u"F2 Expt"_s,
                                  .answer = ByWriteOff{{{}, u"01"_s}, true},
                                  .after = Came + CameBack + Left + u"FC2"_s});
    }
    void theThirdIsMissing() {
        ExceptionFixture().drive({.slot = {},
                                  .punches = u"07:55 12:05 17:03"_s,
                                  .before = Came + LeftForLunch + Left + u"F3 Expt"_s,
                                  .answer = ByLatePunches{u"07:55 12:05 12:50 17:03"_s},
                                  .after = Came + LeftForLunch + CameBack + Left});
    }
    void theLastIsMissing() {
        ExceptionFixture().drive({.slot = {},
                                  .punches = u"07:55 12:05 12:50"_s,
                                  .before = Came + LeftForLunch + CameBack + u"F4 Expt"_s,
                                  .answer = ByLeave{u"1300"_s, u"1700"_s},
                                  .after = Came + LeftForLunch + CameBack + u"FH3 FH4"_s});
    }
    void allAreMissing() {
        ExceptionFixture().drive(
            {.slot = {}, .punches = {}, .before = u"F1 F2 F3 F4 Expt"_s, .answer = ByRoster{}});
    }
    void theFirstIsLate() {
        const QString swipes = u"Time1=08:10 FT1 Time2=12:12 FT2 "_s + CameBack + Left;
        ExceptionFixture().drive({.slot = {},
                                  .punches = u"08:10 12:12 12:50 17:03"_s,
                                  .before = swipes + u"Delay1=5 DelayF=1 F1 Expt"_s,
                                  .answer = ByWriteOff{{u"01"_s}},
                                  .after = swipes + u"FC1"_s});
    }
    void theSecondIsEarly() {
        const QString swipes = u"Time1=07:45 FT1 Time2=11:50 FT2 "_s + CameBack + Left;
        ExceptionFixture().drive({.slot = {},
                                  .punches = u"07:45 11:50 12:50 17:03"_s,
                                  .before = swipes + u"Earlier2=10 DelayF=2 F2 Expt"_s,
                                  .answer = ByLeave{u"1100"_s, u"1200"_s},
                                  .after = swipes + u"FH1 FH2"_s});
    }
    void theThirdIsLate() {
        const QString swipes = Came + LeftForLunch + u"Time3=13:10 FT3 "_s + Left;
        ExceptionFixture().drive({.slot = {},
                                  .punches = u"07:55 12:05 13:10 17:03"_s,
                                  .before = swipes + u"Delay3=5 DelayF=3 F3 Expt"_s,
                                  .answer = ByWriteOff{{{}, {}, u"01"_s}, true},
                                  .after = swipes + u"FC3"_s});
    }
    void theLastIsEarly() {
        const QString swipes = Came + LeftForLunch + CameBack + u"Time4=16:50 FT4 "_s;
        ExceptionFixture().drive({.slot = {},
                                  .punches = u"07:55 12:05 12:50 16:50"_s,
                                  .before = swipes + u"Earlier4=10 DelayF=4 F4 Expt"_s,
                                  .answer = ByRoster{u"B"_s},
                                  .after = swipes,
                                  .slotAfter = u"B"_s,
                                  .otherSlot = {{u"StdT4", QTime(16, 30)}}});
    }
    void theMorningIsTooShortWithoutAFault() {
        const QString swipes = u"Time1=08:05 FT1 Cushion1=5 Time2=12:00 FT2 "_s + CameBack + Left;
        ExceptionFixture().drive({.slot = {},
                                  .punches = u"08:05 12:00 12:50 17:03"_s,
                                  .before = swipes + u"Expt"_s,
                                  .answer = ByWriteOff{{{}, u"01"_s}},
                                  .after = swipes + u"FC2"_s});
    }
    void theFirstIsLateAndTheLastIsEarly() {
        const QString swipes = u"Time1=08:10 FT1 Time2=12:12 FT2 "_s + CameBack + u"Time4=16:50 FT4 "_s;
        ExceptionFixture().drive({.slot = {},
                                  .punches = u"08:10 12:12 12:50 16:50"_s,
                                  // The last one alone is marked, and both are to be answered.
                                  .before = swipes + u"Delay1=5 Earlier4=10 DelayF=4 F4 Expt"_s,
                                  .answer = ByWriteOff{{u"01"_s, {}, {}, u"01"_s}, true},
                                  .after = swipes + u"FC1 FC4"_s});
    }
    void theFirstAndTheThirdAreLate() {
        const QString swipes = u"Time1=08:10 FT1 Time2=12:12 FT2 Time3=13:10 FT3 "_s + Left;
        ExceptionFixture().drive({.slot = {},
                                  .punches = u"08:10 12:12 13:10 17:03"_s,
                                  .before = swipes + u"Delay1=5 Delay3=5 DelayF=3 F3 Expt"_s,
                                  .answer = ByLeave{u"0800"_s, u"1700"_s},
                                  .after = swipes + u"FH1 FH2 FH3 FH4"_s});
    }
};

int main(int argc, char** argv) {
    return runTests<FourSwipesTest>(argc, argv);
}

#include "FourSwipesTest.moc"
