#include "rules/schedule/RosterDesk.h"
#include "store/Format.h"

#include <QRandomGenerator>
#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int Organisations = 60;
const QDate Start(2001, 3, 1);

struct Step {
    QString slot;
    int days = 0;
    int rests = 0;
};

/// The run as its statements tell it, one employee and day after the other.
class Reference {
  public:
    explicit Reference(RosterDesk& desk) : desk_(desk), database_(desk.database()) {}

    void run(const RosterRange& range) {
        QDate current = range.start;
        std::array<Step, 6> steps;
        bool restOnHolidays = false;
        for (
            const auto& row : database_.select(
                u"select Distinct ClsNo From Base06 Where ClsNo Between '%1' and '%2' and EmpNo Between '%3' and '%4'"_s
                    .arg(range.firstClsNo, range.lastClsNo, range.firstEmpNo, range.lastEmpNo))) {
            class_ = row.at(0).joined();
            for (int n = 1; n <= 6; ++n) {
                for (
                    const auto& step : database_.select(
                        u"SELECT TimeNo%1, TimeDay%1, TimeRest%1,ChkHoli From Base05 Where ClsNo ='%2' and TimeNo%1 <> null"_s
                            .arg(n)
                            .arg(class_))) {
                    steps.at(static_cast<std::size_t>(n - 1)) = {step.at(0).toText(), step.at(1).toInt16(),
                                                                 step.at(2).toInt16()};
                    restOnHolidays = step.at(3).toBoolean();
                }
            }
            while (range.end >= current) {
                for (const Step& step : steps) {
                    for (int day = 0; day < step.days; ++day, current = current.addDays(1))
                        work(step.slot, current, range);
                    for (int day = 0; day < step.rests; ++day, current = current.addDays(1))
                        set({}, current, employee_);
                }
            }
            if (restOnHolidays)
                blank();
        }
    }

  private:
    void work(const QString& slot, QDate day, const RosterRange& range) {
        for (const auto& row : database_.select(
                 u"select EmpNo From Base06 Where EmpNo Between '%1' and '%2' and ClsNo = '%3'"_s.arg(
                     range.firstEmpNo, range.lastEmpNo, class_))) {
            employee_ = row.at(0).joined();
            set(slot, day, employee_);
        }
    }
    void set(const QString& slot, QDate day, const QString& EmpNo) {
        const Rows counted = database_.select(
            u"select count(*) as cnt From Rule03,Base06 where Base06.ClsNo ='%1' and Rule03.ymd = #%2# and Base06.EmpNo = Rule03.EmpNo and Rule03.EmpNo = '%3'"_s
                .arg(class_, shortDate(day), EmpNo));
        if (counted.at(0, 0).toInteger() > 0)
            update(slot, shortDate(day), EmpNo);
        else
            database_.execute(
                u"Insert into Rule03( [EmpNo],[YMD],[TimeNo]) Select Base06.EmpNo, #%1#, '%2' From Base06 where Base06.ClsNo = '%3' and Base06.EmpNo = '%4' and isnull(Base06.LeaveDate) = True"_s
                    .arg(shortDate(day), slot, class_, EmpNo));
    }
    void update(const QString& slot, const QString& day, const QString& EmpNo) {
        database_.execute(
            u"update Rule03,Base06 set Rule03.[TimeNo] ='%1' where Rule03.EmpNo =Base06.EmpNo and Base06.ClsNo = '%2' and Rule03.ymd = #%3# and Rule03.EmpNo = '%4'"_s
                .arg(slot, class_, day, EmpNo));
    }
    void blank() {
        for (const auto& row :
             database_.select(u"SELECT hymd from Rule01 where hymd between #%1# and #%2#"_s.arg(
                 shortDate(desk_.gDate1), shortDate(desk_.gDate2))))
            update({}, row.at(0).joined(), employee_);
    }

    RosterDesk& desk_;
    Database& database_;
    QString class_;
    QString employee_;
};

/// An organisation of that seed: some classes and employees, rows of an earlier roster, days off.
void build(RosterDesk& desk, quint32 seed) {
    QRandomGenerator random(seed);
    const auto below = [&random](int limit) { return static_cast<int>(random.bounded(limit)); };
    desk.store.holdOpen();
    for (const QString& ClsNo : {u"001"_s, u"002"_s, u"003"_s}) {
        std::vector<ClassStep> steps;
        for (int step = 0; step < 6; ++step) {
            if (below(2) == 0)
                steps.push_back({{}, below(3), below(3)});
            else
                steps.push_back({QString(QChar(u'A' + step)), below(4), below(3)});
        }
        // One day at least, or the run would not end.
        steps.front() = {u"S", 1 + below(3), below(3)};
        desk.addClass(ClsNo, steps, below(2) == 0);
    }
    const int employees = below(8);
    for (int number = 0; number < employees; ++number) {
        const QString EmpNo = u"E%1"_s.arg(below(50), 2, 10, QLatin1Char('0'));
        if (!desk.database().select(u"select EmpNo from Base06 where EmpNo = '%1'"_s.arg(EmpNo)).isEmpty())
            continue;
        desk.addMember(EmpNo, u"00%1"_s.arg(1 + below(3)), below(4) == 0 ? QDate(2001, 3, 4) : QDate());
        for (int day = 0; day < 20; ++day) {
            if (below(3) == 0)
                addRoster(desk.database(), EmpNo, Start.addDays(day), u"Z"_s);
        }
    }
    for (int day = 0; day < 10; ++day) {
        if (below(2) == 0)
            desk.addDayOff(Start.addDays(day));
    }
    desk.gDate1 = Start.addDays(below(5));
    desk.gDate2 = Start.addDays(5 + below(5));
    desk.store.commit();
}

} // namespace

/// The generator against its statements run one by one, on organisations of every kind.
class RosterDifferentialTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void bothWaysLeaveTheSameRoster() {
        int rows = 0;
        for (quint32 seed = 1; seed <= Organisations; ++seed) {
            RosterDesk desk;
            RosterDesk reference;
            build(desk, seed);
            build(reference, seed);
            const RosterRange range = RosterDesk::range(Start, Start.addDays(static_cast<int>(seed % 15)),
                                                        u"00%1"_s.arg(1 + seed % 3), u"003"_s);
            desk.generate(range);
            reference.store.holdOpen();
            Reference(reference).run(range);
            reference.store.commit();
            QVERIFY2(desk.roster() == reference.roster(),
                     qPrintable(u"organisation %1:\n%2\nin place of\n%3"_s.arg(seed)
                                    .arg(desk.roster().join(u'\n'))
                                    .arg(reference.roster().join(u'\n'))));
            rows += static_cast<int>(desk.roster().size());
        }
        QVERIFY(rows > Organisations * 20);
    }
};

QTEST_GUILESS_MAIN(RosterDifferentialTest)
#include "RosterDifferentialTest.moc"
