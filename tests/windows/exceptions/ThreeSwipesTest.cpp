#include "windows/exceptions/ExceptionFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const Fields ThreeSwipes = swipes(3, u"134"_s);

} // namespace

/// The exceptions of a slot with three swipes, each answered until it is gone from the list.
class ThreeSwipesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theFirstIsMissing() {
        ExceptionFixture().drive({.slot = ThreeSwipes,
                                  .punches = u"12:50 17:03"_s,
                                  .before = u"Time3=12:50 FT3 Time4=17:03 FT4 F1 Expt"_s,
                                  .answer = ByWriteOff{{u"01"_s}},
                                  .after = u"Time3=12:50 FT3 Time4=17:03 FT4 FC1"_s});
    }
    void theSecondIsMissing() {
        ExceptionFixture().drive({.slot = ThreeSwipes,
                                  .punches = u"07:55 17:03"_s,
                                  .before = u"Time1=07:55 FT1 Time4=17:03 FT4 F3 Expt"_s,
                                  .answer = ByLatePunches{u"07:55 12:50 17:03"_s},
                                  .after = u"Time1=07:55 FT1 Time3=12:50 FT3 Time4=17:03 FT4"_s});
    }
    void theLastIsMissing() {
        ExceptionFixture().drive({.slot = ThreeSwipes,
                                  .punches = u"07:55 12:50"_s,
                                  .before = u"Time1=07:55 FT1 Time3=12:50 FT3 F4 Expt"_s,
                                  .answer = ByLeave{u"1300"_s, u"1700"_s},
                                  .after = u"Time1=07:55 FT1 Time3=12:50 FT3 FH3 FH4"_s});
    }
    void theFirstIsLate() {
        ExceptionFixture().drive(
            {.slot = ThreeSwipes,
             .punches = u"08:10 12:50 17:03"_s,
             .before = u"Time1=08:10 FT1 Time3=12:50 FT3 Time4=17:03 FT4 Delay1=5 DelayF=1 F1 Expt"_s,
             .answer = ByRoster{u"B"_s},
             .after = u"Time1=08:10 FT1 Time3=12:50 FT3 Time4=17:03 FT4"_s,
             .slotAfter = u"B"_s,
             .otherSlot = ThreeSwipes + Fields{{u"StdT1", QTime(8, 30)}}});
    }
    void theSecondIsLate() {
        ExceptionFixture().drive(
            {.slot = ThreeSwipes,
             .punches = u"07:55 13:10 17:03"_s,
             .before = u"Time1=07:55 FT1 Time3=13:10 FT3 Time4=17:03 FT4 Delay3=5 DelayF=3 F3 Expt"_s,
             .answer = ByWriteOff{{{}, {}, u"01"_s}, true},
             .after = u"Time1=07:55 FT1 Time3=13:10 FT3 Time4=17:03 FT4 FC3"_s});
    }
    void theLastIsEarly() {
        ExceptionFixture().drive(
            {.slot = ThreeSwipes,
             .punches = u"07:55 12:50 16:50"_s,
             .before = u"Time1=07:55 FT1 Time3=12:50 FT3 Time4=16:50 FT4 Earlier4=10 DelayF=4 F4 Expt"_s,
             .answer = ByWriteOff{{{}, {}, {}, u"01"_s}},
             .after = u"Time1=07:55 FT1 Time3=12:50 FT3 Time4=16:50 FT4 FC4"_s});
    }
    void allAreMissing() {
        ExceptionFixture().drive({.slot = ThreeSwipes,
                                  .punches = {},
                                  .before = u"F1 F3 F4 Expt"_s,
                                  .answer = ByWriteOff{{u"01"_s, {}, u"01"_s, u"01"_s}, true},
                                  .after = u"FC1 FC3 FC4"_s});
    }
};

int main(int argc, char** argv) {
    return runTests<ThreeSwipesTest>(argc, argv);
}

#include "ThreeSwipesTest.moc"
