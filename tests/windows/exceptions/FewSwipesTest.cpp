#include "windows/exceptions/ExceptionFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const Fields OneSwipe = swipes(1, u"1"_s);
const Fields TwoSwipes = swipes(2, u"14"_s);

} // namespace

/// The exceptions of slots with one swipe or two, each answered until it is gone from the list.
class FewSwipesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void oneSwipeAndItIsMissing() {
        ExceptionFixture().drive({.slot = OneSwipe,
                                  .punches = u"17:03"_s,
                                  .before = u"Time4=17:03 FT4 F1 Expt"_s,
                                  .answer = ByLatePunches{u"07:55 17:03"_s},
                                  .after = u"Time1=07:55 FT1 Time4=17:03 FT4"_s});
    }
    void oneSwipeAndItIsLate() {
        ExceptionFixture().drive({.slot = OneSwipe,
                                  .punches = u"08:10 17:03"_s,
                                  .before = u"Time1=08:10 FT1 Time4=17:03 FT4 Delay1=5 DelayF=1 F1 Expt"_s,
                                  .answer = ByWriteOff{{u"01"_s}, true},
                                  .after = u"Time1=08:10 FT1 Time4=17:03 FT4 FC1"_s});
    }
    void twoSwipesAndTheFirstIsMissing() {
        ExceptionFixture().drive({.slot = TwoSwipes,
                                  .punches = u"17:03"_s,
                                  .before = u"Time4=17:03 FT4 F1 Expt"_s,
                                  .answer = ByLeave{u"0800"_s, u"1200"_s},
                                  .after = u"Time4=17:03 FT4 FH1 FH2"_s});
    }
    void twoSwipesAndTheLastIsMissing() {
        ExceptionFixture().drive({.slot = TwoSwipes,
                                  .punches = u"07:55"_s,
                                  .before = u"Time1=07:55 FT1 F4 Expt"_s,
                                  .answer = ByWriteOff{{{}, {}, {}, u"01"_s}},
                                  .after = u"Time1=07:55 FT1 FC4"_s});
    }
    void twoSwipesAndBothAreMissing() {
        ExceptionFixture().drive({.slot = TwoSwipes,
                                  .punches = {},
                                  .before = u"F1 F4 Expt"_s,
                                  .answer = ByLeave{u"0800"_s, u"1700"_s},
                                  .after = u"FH1 FH2 FH3 FH4"_s});
    }
    void twoSwipesAndTheFirstIsLate() {
        ExceptionFixture().drive({.slot = TwoSwipes,
                                  .punches = u"08:10 17:03"_s,
                                  .before = u"Time1=08:10 FT1 Time4=17:03 FT4 Delay1=5 DelayF=1 F1 Expt"_s,
                                  .answer = ByLeave{u"0800"_s, u"1200"_s},
                                  .after = u"Time1=08:10 FT1 Time4=17:03 FT4 FH1 FH2"_s});
    }
    void twoSwipesAndTheLastIsEarly() {
        ExceptionFixture().drive({.slot = TwoSwipes,
                                  .punches = u"07:55 16:50"_s,
                                  .before = u"Time1=07:55 FT1 Time4=16:50 FT4 Earlier4=10 DelayF=4 F4 Expt"_s,
                                  .answer = ByLeave{u"1600"_s, u"1700"_s},
                                  .after = u"Time1=07:55 FT1 Time4=16:50 FT4 FH3 FH4"_s});
    }
};

int main(int argc, char** argv) {
    return runTests<FewSwipesTest>(argc, argv);
}

#include "FewSwipesTest.moc"
